#include <ports/GlobalHotkeys.h>
#include <ports/IndicatorPanel.h>
#include <ports/KeyModifiers.h>
#include <ports/ModifierEvents.h>
#include <ports/OpenDesktop.h>
#include <ports/Pasteboard.h>
#include <ports/UserDefaults.h>
#include <support/Await.h>
#include <support/windows/RealDesktop.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::UnorderedElementsAre;

namespace tulvane::test {

namespace {

class SessionsOnDisplay : public testing::Test {
protected:
    /// The real display, as a session of this type has it.
    [[nodiscard]] static QProcessEnvironment session(const QString& type)
    {
        QProcessEnvironment environment = realDesktop().environment();
        environment.remove(u"WAYLAND_DISPLAY"_qs);
        environment.insert(u"XDG_SESSION_TYPE"_qs, type);
        return environment;
    }
    [[nodiscard]] std::unique_ptr<Desktop> open(const QString& type)
    {
        auto desktop = openDesktop({.environment = session(type)}, m_scheduler);
        return desktop ? std::move(*desktop) : nullptr;
    }
    EventLoopScheduler m_scheduler;
};

} // namespace

TEST_F(SessionsOnDisplay, AnX11SessionLacksNothing)
{
    const auto desktop = open(u"x11"_qs);
    ASSERT_TRUE(desktop);
    EXPECT_TRUE(desktop->lacking.isEmpty());
    EXPECT_TRUE(desktop->hotkeys->support());
    EXPECT_TRUE(desktop->modifierEvents->createTap(61, [](const ModifierEvent&) {}));
    EXPECT_TRUE(desktop->pasteboards->general().replace({PasteboardItem::text(u"text"_qs)}));
    EXPECT_EQ(windowSystem(session(u"x11"_qs)), QByteArray("xcb"));
}

TEST_F(SessionsOnDisplay, AWaylandSessionHasTheClipboardAndSaysWhyItHasNoKeys)
{
    const QString reason =
        u"Hotkeys are not supported in a Wayland session yet. Bind the command “tulvane toggle” "
        u"to a key in the desktop's own keyboard settings."_qs;
    const auto desktop = open(u"wayland"_qs);
    ASSERT_TRUE(desktop);
    EXPECT_EQ(desktop->hotkeys->support().error(), HotkeyError::unsupported(reason));
    EXPECT_EQ(desktop->hotkeys->registerHotkey({1, 1}, {49, carbon::option}).error(),
              HotkeyError::unsupported(reason));
    EXPECT_TRUE(desktop->modifierEvents->readsEveryKey()) << "only the keyboards themselves tell";
    EXPECT_TRUE(desktop->pasteboards->general().replace({PasteboardItem::text(u"text"_qs)}));
    QStringList names;
    for (const LackingPort& port : desktop->lacking) {
        names.append(port.name);
        EXPECT_EQ(port.obstacle.reason, u"Hotkeys are not supported in a Wayland session yet."_qs);
        EXPECT_FALSE(port.obstacle.remedy.isEmpty());
    }
    EXPECT_THAT(names, UnorderedElementsAre(u"hot keys"_qs));
    EXPECT_EQ(windowSystem(session(u"wayland"_qs)), QByteArray("xcb"));
}

TEST_F(SessionsOnDisplay, TheDesktopGoesInAnyOrderOfItsParts)
{
    auto desktop = open(u"x11"_qs);
    ASSERT_TRUE(desktop);
    const auto panel = desktop->makeIndicatorPanel();
    desktop->beep();
    desktop.reset();
    EXPECT_TRUE(panel);
}

} // namespace tulvane::test
