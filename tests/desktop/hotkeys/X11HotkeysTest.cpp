#include <platform/linux/x11/keyboard/X11Hotkeys.h>
#include <ports/KeyModifiers.h>
#include <support/Await.h>
#include <support/VirtualDesktop.h>
#include <support/XTestKeys.h>

#include <QDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

namespace tulvane {

namespace {

using test::DeviceKey;
using test::waitUntil;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr KeyCombination altSpace{49, carbon::option};
constexpr HotkeyId id{1, 1};

/// A desktop with our hot keys on it, and a keyboard.
class X11HotkeysTest : public testing::Test {
protected:
    void listen(X11Hotkeys& hotkeys)
    {
        hotkeys.setEventHandler([this](const HotkeyEvent& event) {
            m_presses += event.kind == HotkeyEventKind::pressed ? 1 : 0;
            m_releases += event.kind == HotkeyEventKind::released ? 1 : 0;
            return HotkeyDelivery::handled;
        });
    }
    [[nodiscard]] static std::unique_ptr<GlobalHotkeys::Registration> take(X11Hotkeys& hotkeys,
                                                                           const KeyCombination& combination)
    {
        auto registration = hotkeys.registerHotkey(id, combination);
        EXPECT_TRUE(registration);
        return registration ? std::move(*registration) : nullptr;
    }
    /// Presses and releases, and waits until both edges have been told.
    [[nodiscard]] bool isHeard(test::XTestKeys& keys, DeviceKey modifier, DeviceKey key)
    {
        const int presses = m_presses;
        const int releases = m_releases;
        keys.press(modifier);
        keys.tap(key);
        keys.release(modifier);
        return waitUntil([&] { return m_presses == presses + 1 && m_releases == releases + 1; },
                         std::chrono::seconds(5));
    }

    int m_presses = 0;
    int m_releases = 0;
};

TEST_F(X11HotkeysTest, WorkWhateverTheLocksAreAt)
{
    const test::VirtualDesktop desktop;
    test::XTestKeys keys(desktop.display());
    X11Hotkeys hotkeys(desktop.display());
    listen(hotkeys);
    const auto token = take(hotkeys, altSpace);
    EXPECT_TRUE(isHeard(keys, DeviceKey::leftAlt, DeviceKey::space));
    keys.tap(DeviceKey::capsLock);
    EXPECT_TRUE(isHeard(keys, DeviceKey::leftAlt, DeviceKey::space)) << "Caps Lock";
    keys.tap(DeviceKey::numLock);
    EXPECT_TRUE(isHeard(keys, DeviceKey::leftAlt, DeviceKey::space)) << "Caps Lock and Num Lock";
    keys.tap(DeviceKey::capsLock);
    EXPECT_TRUE(isHeard(keys, DeviceKey::leftAlt, DeviceKey::space)) << "Num Lock";
}

TEST_F(X11HotkeysTest, WorkWithEveryLockAndLevelOnWhateverModifierItIs)
{
    const test::VirtualDesktop desktop;
    test::XTestKeys keys(desktop.display());
    X11Hotkeys hotkeys(desktop.display());
    listen(hotkeys);
    auto token = take(hotkeys, altSpace);
    hotkeys.setChangeHandler([&] {
        token.reset();
        token = take(hotkeys, altSpace);
    });
    const auto xmodmap = [&](const QString& change) {
        desktop.run(QStringLiteral("xmodmap"), {QStringLiteral("-e"), change});
    };
    xmodmap(QStringLiteral("add mod3 = Scroll_Lock"));
    keys.tap(DeviceKey::scrollLock);
    EXPECT_TRUE(isHeard(keys, DeviceKey::leftAlt, DeviceKey::space)) << "Scroll Lock";
    keys.tap(DeviceKey::scrollLock);
    xmodmap(QStringLiteral("remove mod2 = Num_Lock"));
    xmodmap(QStringLiteral("add mod5 = Num_Lock"));
    keys.tap(DeviceKey::numLock);
    EXPECT_TRUE(isHeard(keys, DeviceKey::leftAlt, DeviceKey::space)) << "Num Lock, moved";
}

TEST_F(X11HotkeysTest, AModifierThatIsNoneIsNeverABareKey)
{
    const test::VirtualDesktop desktop;
    X11Hotkeys hotkeys(desktop.display());
    const auto refused = hotkeys.registerHotkey(id, {49, 16384});
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error(), HotkeyError::noSuchKey());
}

TEST_F(X11HotkeysTest, AReleaseThatIsHandledLateTellsWhenItWas)
{
    const test::VirtualDesktop desktop;
    test::XTestKeys keys(desktop.display());
    X11Hotkeys hotkeys(desktop.display());
    std::vector<std::chrono::milliseconds> ages;
    hotkeys.setEventHandler([&](const HotkeyEvent& event) {
        ages.push_back(event.age);
        return HotkeyDelivery::handled;
    });
    const auto token = take(hotkeys, {96, 0});
    keys.press(DeviceKey::f5);
    ASSERT_TRUE(waitUntil([&] { return ages.size() == 1; }));
    keys.release(DeviceKey::f5);
    std::this_thread::sleep_for(std::chrono::milliseconds(400)); // a program that is busy
    ASSERT_TRUE(waitUntil([&] { return ages.size() == 2; }));
    EXPECT_LT(ages[0].count(), 200);
    EXPECT_GE(ages[1].count(), 350);
}

TEST_F(X11HotkeysTest, StayOnTheirKeysInEveryLayout)
{
    const test::VirtualDesktop desktop;
    test::XTestKeys keys(desktop.display());
    X11Hotkeys hotkeys(desktop.display());
    listen(hotkeys);
    constexpr KeyCombination altV{9, carbon::option};
    auto token = take(hotkeys, altV);
    hotkeys.setChangeHandler([&] {
        token.reset();
        token = take(hotkeys, altV);
    });
    struct Row {
        const char* layout;
        QString text;
    };
    for (const Row& row : {Row{"no", QStringLiteral("Alt+V")}, Row{"ru", QStringLiteral("Alt+М")},
                           Row{"dvorak", QStringLiteral("Alt+K")}, Row{"de", QStringLiteral("Alt+V")},
                           Row{"us", QStringLiteral("Alt+V")}}) {
        desktop.setKeyboardLayout(QString::fromUtf8(row.layout));
        EXPECT_TRUE(waitUntil([&] { return hotkeys.display(altV).text() == row.text; })) << row.layout;
        EXPECT_TRUE(isHeard(keys, DeviceKey::leftAlt, DeviceKey::v)) << row.layout;
    }
}

TEST_F(X11HotkeysTest, WorkInTheSecondLayoutOfTwo)
{
    const test::VirtualDesktop desktop;
    desktop.setKeyboardLayout(QStringLiteral("us,ru"));
    test::XTestKeys keys(desktop.display());
    X11Hotkeys hotkeys(desktop.display());
    listen(hotkeys);
    const auto token = take(hotkeys, altSpace);
    keys.lockGroup(1);
    EXPECT_TRUE(isHeard(keys, DeviceKey::leftAlt, DeviceKey::space));
}

TEST_F(X11HotkeysTest, AreWrittenWithTheLettersOfTheLayout)
{
    const test::VirtualDesktop desktop;
    desktop.setKeyboardLayout(QStringLiteral("no"));
    const X11Hotkeys hotkeys(desktop.display());
    const auto text = [&](quint32 keyCode) { return hotkeys.display({keyCode, carbon::option}).text(); };
    EXPECT_EQ(text(49), QStringLiteral("Alt+Space"));
    EXPECT_EQ(text(41), QStringLiteral("Alt+Ø"));
    EXPECT_EQ(text(39), QStringLiteral("Alt+Æ"));
    EXPECT_EQ(text(33), QStringLiteral("Alt+Å"));
    EXPECT_EQ(text(30), QStringLiteral("Alt+¨")) << "a dead key shows its accent";
    EXPECT_EQ(text(96), QStringLiteral("Alt+F5"));
}

TEST_F(X11HotkeysTest, FollowModifiersThatMoveToOtherKeys)
{
    const test::VirtualDesktop desktop;
    test::XTestKeys keys(desktop.display());
    X11Hotkeys hotkeys(desktop.display());
    listen(hotkeys);
    auto token = take(hotkeys, altSpace);
    int changes = 0;
    hotkeys.setChangeHandler([&] {
        ++changes;
        token.reset();
        token = take(hotkeys, altSpace);
    });
    ASSERT_TRUE(isHeard(keys, DeviceKey::leftAlt, DeviceKey::space));
    desktop.run(QStringLiteral("setxkbmap"),
                {QStringLiteral("us"), QStringLiteral("-option"), QStringLiteral("altwin:swap_alt_win")});
    // The layout's own keys have not changed, so whether the change has arrived shows at the keys alone.
    EXPECT_TRUE(isHeard(keys, DeviceKey::leftSuper, DeviceKey::space));
    desktop.run(QStringLiteral("setxkbmap"), {QStringLiteral("us"), QStringLiteral("-option")});
    EXPECT_TRUE(isHeard(keys, DeviceKey::leftAlt, DeviceKey::space));
}

TEST_F(X11HotkeysTest, AChangeThatChangesNothingIsNotTold)
{
    const test::VirtualDesktop desktop;
    desktop.setKeyboardLayout(QStringLiteral("us"));
    X11Hotkeys hotkeys(desktop.display());
    int changes = 0;
    hotkeys.setChangeHandler([&] { ++changes; });
    desktop.setKeyboardLayout(QStringLiteral("us"));
    EXPECT_EQ(changes, 0);
    desktop.setKeyboardLayout(QStringLiteral("no"));
    EXPECT_TRUE(waitUntil([&] { return hotkeys.display({41, 0}).text() == QStringLiteral("Ø"); }));
    EXPECT_TRUE(waitUntil([&] { return changes == 1; }));
}

TEST_F(X11HotkeysTest, WhatTheWindowManagerUsesIsTakenAndListed)
{
    const QByteArray binding = R"(<keybind key="A-space"><action name="ToggleShade"/></keybind>)";
    const test::VirtualDesktop desktop({.windowManager = test::VirtualDesktop::WindowManager::openbox,
                                        .sessionBus = test::VirtualDesktop::SessionBus::none,
                                        .openboxKeys = binding});
    QDir().mkpath(desktop.home() + QStringLiteral("/.config/openbox"));
    QFile settings(desktop.home() + QStringLiteral("/.config/openbox/rc.xml"));
    ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
    settings.write("<openbox_config><keyboard>" + binding + "</keyboard></openbox_config>");
    settings.close();

    X11Hotkeys hotkeys(desktop.display(), DesktopFolders::fromEnvironment(desktop.environment()));
    const auto refused = hotkeys.registerHotkey(id, altSpace);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error(), HotkeyError::taken(10));
    EXPECT_THAT(hotkeys.symbolicHotkeys({49, carbon::control}),
                ElementsAre(SymbolicHotkey{true, altSpace, QStringLiteral("ToggleShade")}));
}

TEST_F(X11HotkeysTest, NothingOfARefusedCombinationStaysTaken)
{
    const test::VirtualDesktop desktop;
    test::XTestKeys other(desktop.display());
    constexpr std::uint16_t altWithNumLock = 8 | 16;
    constexpr std::uint16_t alt = 8;
    ASSERT_TRUE(other.grab(DeviceKey::space, altWithNumLock));
    X11Hotkeys hotkeys(desktop.display());
    ASSERT_FALSE(hotkeys.registerHotkey(id, altSpace)) << "one of the four states is another program's";
    EXPECT_TRUE(other.grab(DeviceKey::space, alt));
}

TEST_F(X11HotkeysTest, AKeyEventOfAWindowIsTranslated)
{
    const test::VirtualDesktop desktop;
    desktop.setKeyboardLayout(QStringLiteral("us"));
    const X11Hotkeys hotkeys(desktop.display());
    constexpr quint32 space = 65;
    EXPECT_EQ(hotkeys.combination({space, 0, 8}), altSpace);
    EXPECT_EQ(hotkeys.combination({space, 0, 1 | 4 | 64}),
              (KeyCombination{49, carbon::shift | carbon::control | carbon::command}));
    EXPECT_EQ(hotkeys.combination({space, 0, 2 | 16 | 8 | 0x2000}), altSpace) << "locks and groups fall away";
    EXPECT_EQ(hotkeys.combination({108, 0, 0}), (KeyCombination{61, 0}));
    EXPECT_EQ(hotkeys.combination({255, 0, 0}), std::nullopt);
    EXPECT_EQ(hotkeys.combination({70000, 0, 0}), std::nullopt);
}

TEST_F(X11HotkeysTest, OutliveTheServer)
{
    test::VirtualDesktop desktop;
    X11Hotkeys hotkeys(desktop.display());
    auto token = take(hotkeys, altSpace);
    int changes = 0;
    hotkeys.setChangeHandler([&] { ++changes; });
    desktop.killServer();
    EXPECT_TRUE(waitUntil([&] { return changes == 1; }));
    EXPECT_EQ(hotkeys.support().error(), HotkeyError::unreachable());
    EXPECT_EQ(hotkeys.registerHotkey(id, {96, 0}).error(), HotkeyError::unreachable());
    EXPECT_THAT(hotkeys.symbolicHotkeys(altSpace), IsEmpty());
    EXPECT_EQ(hotkeys.display(altSpace).text(), QStringLiteral("Alt+Space"));
    token.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(changes, 1);
}

TEST_F(X11HotkeysTest, AServerThatDiesUnnoticedIsNoHarm)
{
    test::VirtualDesktop desktop;
    X11Hotkeys hotkeys(desktop.display());
    desktop.killServer();
    EXPECT_EQ(hotkeys.registerHotkey(id, altSpace).error(), HotkeyError::unreachable());
    EXPECT_THAT(hotkeys.symbolicHotkeys(altSpace), IsEmpty());
}

TEST_F(X11HotkeysTest, WithoutAServerTheReasonIsSaid)
{
    X11Hotkeys hotkeys(QStringLiteral(":64999"));
    EXPECT_EQ(hotkeys.support().error(), HotkeyError::unreachable());
    EXPECT_EQ(hotkeys.registerHotkey(id, altSpace).error(), HotkeyError::unreachable());
    EXPECT_THAT(hotkeys.symbolicHotkeys(altSpace), IsEmpty());
    EXPECT_EQ(hotkeys.display(altSpace).text(), QStringLiteral("Alt+Space"));
    EXPECT_EQ(hotkeys.combination({65, 0, 8}), std::nullopt);
}

} // namespace

} // namespace tulvane
