#include <platform/KeyModifiers.h>
#include <platform/linux/x11/X11HotKeys.h>
#include <support/Await.h>
#include <support/VirtualDesktop.h>
#include <support/XTestKeys.h>

#include <QDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tulvane {

namespace {

using test::DeviceKey;
using test::waitUntil;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr KeyCombination altSpace{49, carbon::option};
constexpr HotKeyId id{1, 1};

/// A desktop with our hot keys on it, and a keyboard.
class X11HotKeysTest : public testing::Test {
protected:
    void listen(X11HotKeys& hotKeys)
    {
        hotKeys.setEventHandler([this](const HotKeyEvent& event) {
            m_presses += event.kind == HotKeyEventKind::pressed ? 1 : 0;
            m_releases += event.kind == HotKeyEventKind::released ? 1 : 0;
            return HotKeyDelivery::handled;
        });
    }
    [[nodiscard]] static std::unique_ptr<GlobalHotKeys::Registration> take(X11HotKeys& hotKeys,
                                                                           const KeyCombination& combination)
    {
        auto registration = hotKeys.registerHotKey(id, combination);
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

TEST_F(X11HotKeysTest, WorkWhateverTheLocksAreAt)
{
    const test::VirtualDesktop desktop;
    test::XTestKeys keys(desktop.display());
    X11HotKeys hotKeys(desktop.display());
    listen(hotKeys);
    const auto token = take(hotKeys, altSpace);
    EXPECT_TRUE(isHeard(keys, DeviceKey::leftAlt, DeviceKey::space));
    keys.tap(DeviceKey::capsLock);
    EXPECT_TRUE(isHeard(keys, DeviceKey::leftAlt, DeviceKey::space)) << "Caps Lock";
    keys.tap(DeviceKey::numLock);
    EXPECT_TRUE(isHeard(keys, DeviceKey::leftAlt, DeviceKey::space)) << "Caps Lock and Num Lock";
    keys.tap(DeviceKey::capsLock);
    EXPECT_TRUE(isHeard(keys, DeviceKey::leftAlt, DeviceKey::space)) << "Num Lock";
}

TEST_F(X11HotKeysTest, StayOnTheirKeysInEveryLayout)
{
    const test::VirtualDesktop desktop;
    test::XTestKeys keys(desktop.display());
    X11HotKeys hotKeys(desktop.display());
    listen(hotKeys);
    constexpr KeyCombination altV{9, carbon::option};
    auto token = take(hotKeys, altV);
    hotKeys.setChangeHandler([&] {
        token.reset();
        token = take(hotKeys, altV);
    });
    struct Row {
        const char* layout;
        QString text;
    };
    for (const Row& row : {Row{"no", QStringLiteral("Alt+V")}, Row{"ru", QStringLiteral("Alt+М")},
                           Row{"dvorak", QStringLiteral("Alt+K")}, Row{"de", QStringLiteral("Alt+V")},
                           Row{"us", QStringLiteral("Alt+V")}}) {
        desktop.setKeyboardLayout(QString::fromUtf8(row.layout));
        EXPECT_TRUE(waitUntil([&] { return hotKeys.display(altV).text() == row.text; })) << row.layout;
        EXPECT_TRUE(isHeard(keys, DeviceKey::leftAlt, DeviceKey::v)) << row.layout;
    }
}

TEST_F(X11HotKeysTest, WorkInTheSecondLayoutOfTwo)
{
    const test::VirtualDesktop desktop;
    desktop.setKeyboardLayout(QStringLiteral("us,ru"));
    test::XTestKeys keys(desktop.display());
    X11HotKeys hotKeys(desktop.display());
    listen(hotKeys);
    const auto token = take(hotKeys, altSpace);
    keys.lockGroup(1);
    EXPECT_TRUE(isHeard(keys, DeviceKey::leftAlt, DeviceKey::space));
}

TEST_F(X11HotKeysTest, AreWrittenWithTheLettersOfTheLayout)
{
    const test::VirtualDesktop desktop;
    desktop.setKeyboardLayout(QStringLiteral("no"));
    const X11HotKeys hotKeys(desktop.display());
    const auto text = [&](quint32 keyCode) { return hotKeys.display({keyCode, carbon::option}).text(); };
    EXPECT_EQ(text(49), QStringLiteral("Alt+Space"));
    EXPECT_EQ(text(41), QStringLiteral("Alt+Ø"));
    EXPECT_EQ(text(39), QStringLiteral("Alt+Æ"));
    EXPECT_EQ(text(33), QStringLiteral("Alt+Å"));
    EXPECT_EQ(text(30), QStringLiteral("Alt+¨")) << "a dead key shows its accent";
    EXPECT_EQ(text(96), QStringLiteral("Alt+F5"));
}

TEST_F(X11HotKeysTest, FollowModifiersThatMoveToOtherKeys)
{
    const test::VirtualDesktop desktop;
    test::XTestKeys keys(desktop.display());
    X11HotKeys hotKeys(desktop.display());
    listen(hotKeys);
    auto token = take(hotKeys, altSpace);
    int changes = 0;
    hotKeys.setChangeHandler([&] {
        ++changes;
        token.reset();
        token = take(hotKeys, altSpace);
    });
    ASSERT_TRUE(isHeard(keys, DeviceKey::leftAlt, DeviceKey::space));
    desktop.run(QStringLiteral("setxkbmap"),
                {QStringLiteral("us"), QStringLiteral("-option"), QStringLiteral("altwin:swap_alt_win")});
    // The layout's own keys have not changed, so whether the change has arrived shows at the keys alone.
    EXPECT_TRUE(isHeard(keys, DeviceKey::leftSuper, DeviceKey::space));
    desktop.run(QStringLiteral("setxkbmap"), {QStringLiteral("us"), QStringLiteral("-option")});
    EXPECT_TRUE(isHeard(keys, DeviceKey::leftAlt, DeviceKey::space));
}

TEST_F(X11HotKeysTest, AChangeThatChangesNothingIsNotTold)
{
    const test::VirtualDesktop desktop;
    desktop.setKeyboardLayout(QStringLiteral("us"));
    X11HotKeys hotKeys(desktop.display());
    int changes = 0;
    hotKeys.setChangeHandler([&] { ++changes; });
    desktop.setKeyboardLayout(QStringLiteral("us"));
    EXPECT_EQ(changes, 0);
    desktop.setKeyboardLayout(QStringLiteral("no"));
    EXPECT_TRUE(waitUntil([&] { return hotKeys.display({41, 0}).text() == QStringLiteral("Ø"); }));
    EXPECT_TRUE(waitUntil([&] { return changes == 1; }));
}

TEST_F(X11HotKeysTest, WhatTheWindowManagerUsesIsTakenAndListed)
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

    X11HotKeys hotKeys(desktop.display(), DesktopFolders::fromEnvironment(desktop.environment()));
    const auto refused = hotKeys.registerHotKey(id, altSpace);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error(), HotKeyError::taken(10));
    EXPECT_THAT(hotKeys.symbolicHotKeys({49, carbon::control}),
                ElementsAre(SymbolicHotKey{true, altSpace, QStringLiteral("ToggleShade")}));
}

TEST_F(X11HotKeysTest, NothingOfARefusedCombinationStaysTaken)
{
    const test::VirtualDesktop desktop;
    test::XTestKeys other(desktop.display());
    constexpr std::uint16_t altWithNumLock = 8 | 16;
    constexpr std::uint16_t alt = 8;
    ASSERT_TRUE(other.grab(DeviceKey::space, altWithNumLock));
    X11HotKeys hotKeys(desktop.display());
    ASSERT_FALSE(hotKeys.registerHotKey(id, altSpace)) << "one of the four states is another program's";
    EXPECT_TRUE(other.grab(DeviceKey::space, alt));
}

TEST_F(X11HotKeysTest, AKeyEventOfAWindowIsTranslated)
{
    const test::VirtualDesktop desktop;
    desktop.setKeyboardLayout(QStringLiteral("us"));
    const X11HotKeys hotKeys(desktop.display());
    constexpr quint32 space = 65;
    EXPECT_EQ(hotKeys.combination({space, 0, 8}), altSpace);
    EXPECT_EQ(hotKeys.combination({space, 0, 1 | 4 | 64}),
              (KeyCombination{49, carbon::shift | carbon::control | carbon::command}));
    EXPECT_EQ(hotKeys.combination({space, 0, 2 | 16 | 8 | 0x2000}), altSpace) << "locks and groups fall away";
    EXPECT_EQ(hotKeys.combination({108, 0, 0}), (KeyCombination{61, 0}));
    EXPECT_EQ(hotKeys.combination({255, 0, 0}), std::nullopt);
    EXPECT_EQ(hotKeys.combination({70000, 0, 0}), std::nullopt);
}

TEST_F(X11HotKeysTest, OutliveTheServer)
{
    test::VirtualDesktop desktop;
    X11HotKeys hotKeys(desktop.display());
    auto token = take(hotKeys, altSpace);
    int changes = 0;
    hotKeys.setChangeHandler([&] { ++changes; });
    desktop.killServer();
    EXPECT_TRUE(waitUntil([&] { return changes == 1; }));
    EXPECT_EQ(hotKeys.support().error(), HotKeyError::unreachable());
    EXPECT_EQ(hotKeys.registerHotKey(id, {96, 0}).error(), HotKeyError::unreachable());
    EXPECT_THAT(hotKeys.symbolicHotKeys(altSpace), IsEmpty());
    EXPECT_EQ(hotKeys.display(altSpace).text(), QStringLiteral("Alt+Space"));
    token.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(changes, 1);
}

TEST_F(X11HotKeysTest, AServerThatDiesUnnoticedIsNoHarm)
{
    test::VirtualDesktop desktop;
    X11HotKeys hotKeys(desktop.display());
    desktop.killServer();
    EXPECT_EQ(hotKeys.registerHotKey(id, altSpace).error(), HotKeyError::unreachable());
    EXPECT_THAT(hotKeys.symbolicHotKeys(altSpace), IsEmpty());
}

TEST_F(X11HotKeysTest, WithoutAServerTheReasonIsSaid)
{
    X11HotKeys hotKeys(QStringLiteral(":64999"));
    EXPECT_EQ(hotKeys.support().error(), HotKeyError::unreachable());
    EXPECT_EQ(hotKeys.registerHotKey(id, altSpace).error(), HotKeyError::unreachable());
    EXPECT_THAT(hotKeys.symbolicHotKeys(altSpace), IsEmpty());
    EXPECT_EQ(hotKeys.display(altSpace).text(), QStringLiteral("Alt+Space"));
    EXPECT_EQ(hotKeys.combination({65, 0, 8}), std::nullopt);
}

} // namespace

} // namespace tulvane
