#include "X11Peers.h"

#include <platform/linux/session/X11Text.h>
#include <support/VirtualDesktop.h>

#include <QElapsedTimer>
#include <QThread>

#include <gtest/gtest.h>

#include <atomic>

namespace tulvane {

namespace {

/// A clipboard manager with a thread of its own, since the test's own waits for it.
class Manager final {
public:
    enum class Manner { saves, refuses, hangs };

    Manager(const QString& display, Manner manner) : m_manner(manner)
    {
        m_context.moveToThread(&m_thread);
        m_thread.start();
        there([this, display] {
            m_scheduler = std::make_unique<EventLoopScheduler>();
            m_link = X11Connection::open(display.toLocal8Bit());
            m_listening = m_link->listen([this](const xcb_generic_event_t& event) { handle(event); });
            xcb_set_selection_owner(m_link->connection(), m_link->makeHiddenWindow(),
                                    m_link->atom(u"CLIPBOARD_MANAGER"_qs), XCB_CURRENT_TIME);
            m_link->catchUp();
        });
    }
    ~Manager()
    {
        there([this] {
            m_read = nullptr;
            m_listening = nullptr;
            m_link = nullptr;
            m_scheduler = nullptr;
        });
        m_thread.quit();
        m_thread.wait();
    }

    /// What it has saved. Not while it saves.
    [[nodiscard]] QList<PasteboardItem> saved() const { return m_saved; }
    [[nodiscard]] bool wasAsked() const { return m_asked; }

    void handle(const xcb_generic_event_t& event)
    {
        if (event.response_type != XCB_SELECTION_REQUEST)
            return;
        m_asked = true;
        m_request = reinterpret_cast<const xcb_selection_request_event_t&>(event);
        if (m_manner == Manner::refuses)
            answer(noAtom);
        if (m_manner != Manner::saves)
            return;
        m_read = std::make_unique<SelectionReader>(*m_link, *m_scheduler, m_link->makeHiddenWindow(),
                                                   m_link->atom(u"CLIPBOARD"_qs),
                                                   [this](const SelectionReader::Outcome& outcome) {
                                                       m_saved = outcome.contents.items;
                                                       answer(m_request.property);
                                                   });
        m_read->begin();
    }

private:
    void there(const std::function<void()>& work)
    {
        QMetaObject::invokeMethod(&m_context, work, Qt::BlockingQueuedConnection);
    }
    void answer(xcb_atom_t property)
    {
        // An event on the wire is this long, whatever it holds.
        union {
            xcb_selection_notify_event_t notice;
            char bytes[32];
        } event{};
        event.notice.response_type = XCB_SELECTION_NOTIFY;
        event.notice.requestor = m_request.requestor;
        event.notice.selection = m_request.selection;
        event.notice.target = m_request.target;
        event.notice.property = property;
        xcb_send_event(m_link->connection(), 0, m_request.requestor, XCB_EVENT_MASK_NO_EVENT, event.bytes);
        m_link->flush();
    }

    Manner m_manner;
    QThread m_thread;
    QObject m_context;
    std::unique_ptr<EventLoopScheduler> m_scheduler;
    std::unique_ptr<X11Connection> m_link;
    std::unique_ptr<X11Connection::Token> m_listening;
    std::unique_ptr<SelectionReader> m_read;
    xcb_selection_request_event_t m_request{};
    QList<PasteboardItem> m_saved;
    std::atomic<bool> m_asked = false;
};

class ClipboardHandoverTest : public testing::Test {
protected:
    [[nodiscard]] std::unique_ptr<X11Text> open()
    {
        return X11Text::open(m_desktop.display().toLocal8Bit(), {}, m_scheduler);
    }

    test::VirtualDesktop m_desktop;
    EventLoopScheduler m_scheduler;
};

} // namespace

TEST_F(ClipboardHandoverTest, WhatWeHoldIsLeftWithTheClipboardManager)
{
    Manager manager(m_desktop.display(), Manager::Manner::saves);
    auto text = open();
    const PasteboardItem item{{{u"UTF8_STRING"_qs, "copied"}, {u"image/png"_qs, QByteArray(700'000, 'x')}}};
    text->pasteboards().general().replace({item});
    text = nullptr;
    EXPECT_EQ(manager.saved(), QList{item});
}

TEST_F(ClipboardHandoverTest, WhatAnotherProgramHoldsIsNot)
{
    Manager manager(m_desktop.display(), Manager::Manner::saves);
    auto text = open();
    text->pasteboards().general().replace({PasteboardItem::text(u"ours"_qs)});
    test::ScriptedOwner other(m_desktop.display());
    other.own();
    text = nullptr;
    EXPECT_FALSE(manager.wasAsked());
}

TEST_F(ClipboardHandoverTest, AManagerThatRefusesOrHangsDelaysTheEndByHalfASecondAtMost)
{
    for (const auto manner : {Manager::Manner::refuses, Manager::Manner::hangs}) {
        Manager manager(m_desktop.display(), manner);
        auto text = open();
        text->pasteboards().general().replace({PasteboardItem::text(u"ours"_qs)});
        QElapsedTimer clock;
        clock.start();
        text = nullptr;
        EXPECT_TRUE(manager.wasAsked());
        EXPECT_LT(clock.elapsed(), 900);
    }
}

TEST_F(ClipboardHandoverTest, WithoutAManagerNothingIsWaitedFor)
{
    auto text = open();
    text->pasteboards().general().replace({PasteboardItem::text(u"ours"_qs)});
    QElapsedTimer clock;
    clock.start();
    text = nullptr;
    EXPECT_LT(clock.elapsed(), 400);
}

} // namespace tulvane
