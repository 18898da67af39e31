#pragma once

#include "X11Peers.h"

#include <platform/linux/x11/clipboard/X11Pasteboard.h>
#include <support/Await.h>
#include <support/VirtualDesktop.h>

#include <QElapsedTimer>

#include <gtest/gtest.h>

namespace tulvane::test {

/// A clipboard of ours on an X server of the test's own, a program in front that reads it, and another one
/// that takes it over.
class X11PasteboardFixture : public testing::Test {
protected:
    X11PasteboardFixture() { m_front.takeFocus(); }

    std::unique_ptr<SelectionOwner> startKeeper()
    {
        return SelectionOwner::start(m_desktop.display().toLocal8Bit());
    }
    [[nodiscard]] PasteTarget frontTarget() const { return {m_front.window()}; }
    PasteboardContents contents() { return await(m_board.contents()); }
    /// What a peer that is not in front reads now.
    SelectionReader::Outcome seen() { return X11Peer(m_desktop.display()).read(); }
    static QByteArray pattern(qsizetype size)
    {
        QByteArray bytes(size, Qt::Uninitialized);
        for (qsizetype index = 0; index < size; ++index)
            bytes[index] = static_cast<char>(index * 31 + index / 251);
        return bytes;
    }
    bool waitForRead()
    {
        return waitUntil([&] { return m_board.reading() == Pasteboard::Reading::read; });
    }

    /// The owner takes the selection between the moment that our next write is of and the write itself.
    class Overtaking final {
    public:
        Overtaking(X11Connection& link, ScriptedOwner& owner)
            : m_owner(owner),
              m_listening(link.listen([this](const xcb_generic_event_t& event) { handle(event); }))
        {
        }

    private:
        void handle(const xcb_generic_event_t& event)
        {
            if (event.response_type != XCB_PROPERTY_NOTIFY || std::exchange(m_done, true))
                return;
            const auto& notice = reinterpret_cast<const xcb_property_notify_event_t&>(event);
            m_owner.ownAfter(notice.time);
        }

        ScriptedOwner& m_owner;
        bool m_done = false;
        std::unique_ptr<X11Connection::Token> m_listening;
    };

    VirtualDesktop m_desktop;
    EventLoopScheduler m_scheduler;
    X11Peer m_front{m_desktop.display()};
    std::unique_ptr<X11Connection> m_link = X11Connection::open(m_desktop.display().toLocal8Bit());
    std::unique_ptr<SelectionOwner> m_keeper = startKeeper();
    X11Pasteboard m_board{*m_link, *m_keeper, m_scheduler, u"CLIPBOARD"_qs};
    ScriptedOwner m_owner{m_desktop.display()};
};

} // namespace tulvane::test
