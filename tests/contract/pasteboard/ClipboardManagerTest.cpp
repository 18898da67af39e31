// A real clipboard manager. Skipped, aloud, where it is not installed.
#include "X11Peers.h"

#include <platform/linux/session/X11Text.h>
#include <support/Await.h>
#include <support/VirtualDesktop.h>

#include <QStandardPaths>

#include <gtest/gtest.h>

namespace tulvane {

namespace {

class ClipboardManagerTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (QStandardPaths::findExecutable(u"xfce4-clipman"_qs).isEmpty())
            GTEST_SKIP() << "Debian's xfce4-clipman is not installed";
        m_desktop.start(u"xfce4-clipman"_qs);
        ASSERT_TRUE(test::waitUntil([&] { return ownerOf(u"CLIPBOARD_MANAGER"_qs) != noWindow; }));
    }

    [[nodiscard]] xcb_window_t ownerOf(const QString& selection)
    {
        xcb_connection_t* const connection = m_peer.link().connection();
        const auto owner = xcbReply(connection, xcb_get_selection_owner_reply,
                                    xcb_get_selection_owner(connection, m_peer.link().atom(selection)));
        return owner ? owner->owner : noWindow;
    }

    test::VirtualDesktop m_desktop{{.windowManager = test::VirtualDesktop::WindowManager::openbox,
                                    .sessionBus = test::VirtualDesktop::SessionBus::own,
                                    .openboxKeys = {}}};
    EventLoopScheduler m_scheduler;
    test::X11Peer m_peer{m_desktop.display()};
};

} // namespace

TEST_F(ClipboardManagerTest, KeepsWhatWeHeldWhenWeAreGone)
{
    auto text = X11Text::open(m_desktop.display().toLocal8Bit(), {}, m_scheduler);
    text->pasteboards().general().replace({PasteboardItem::text(u"Blåbær på brød"_qs)});
    text = nullptr;
    ASSERT_TRUE(test::waitUntil([&] { return ownerOf(u"CLIPBOARD"_qs) != noWindow; }));
    EXPECT_EQ(m_peer.readTarget(u"UTF8_STRING"_qs), QStringLiteral("Blåbær på brød").toUtf8());
}

} // namespace tulvane
