#include <platform/linux/x11/keyboard/X11Hotkeys.h>
#include <platform/linux/x11/keyboard/X11ModifierEvents.h>
#include <support/Await.h>
#include <support/VirtualDesktop.h>
#include <support/XTestKeys.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ports/KeyModifiers.h>

namespace tulvane {

namespace {

using test::DeviceKey;
using test::waitUntil;
using Type = ModifierEvent::Type;

std::unique_ptr<ModifierEvents::Tap> listen(X11ModifierEvents& events, std::vector<ModifierEvent>& seen)
{
    auto tap = events.createTap(61, [&seen](const ModifierEvent& event) { seen.push_back(event); });
    EXPECT_TRUE(tap);
    (*tap)->enable();
    return std::move(*tap);
}

TEST(X11ModifierEvents, NeverSeeFn)
{
    const test::VirtualDesktop desktop;
    X11ModifierEvents events(desktop.display());
    const auto tap = events.createTap(63, [](const ModifierEvent&) {});
    ASSERT_FALSE(tap);
    EXPECT_EQ(tap.error(), ModifierEventsError::keyNotSeen(QStringLiteral("fn")));
    EXPECT_EQ(events.createTap(-1, [](const ModifierEvent&) {}).error(),
              ModifierEventsError::keyNotSeen(QStringLiteral("-1")));
}

TEST(X11ModifierEvents, KnowTheKeysThatAreHeldAlready)
{
    const test::VirtualDesktop desktop;
    test::XTestKeys keys(desktop.display());
    X11ModifierEvents events(desktop.display());
    keys.press(DeviceKey::leftShift);
    std::vector<ModifierEvent> seen;
    const auto tap = listen(events, seen);
    keys.press(DeviceKey::rightAlt);
    ASSERT_TRUE(waitUntil([&] { return !seen.empty(); }));
    EXPECT_EQ(seen.front().keyCode, 61);
    EXPECT_EQ(seen.front().flags, eventFlags::option | eventFlags::shift);
}

TEST(X11ModifierEvents, ArePositionsWhateverTheLayoutMakesOfThem)
{
    const test::VirtualDesktop desktop;
    desktop.setKeyboardLayout(QStringLiteral("no"));
    test::XTestKeys keys(desktop.display());
    X11ModifierEvents events(desktop.display());
    std::vector<ModifierEvent> seen;
    const auto tap = listen(events, seen);
    keys.tap(DeviceKey::rightAlt);
    ASSERT_TRUE(waitUntil([&] { return seen.size() == 2; })) << "AltGr is the right Alt key";
    EXPECT_EQ(seen.front().keyCode, 61);
    EXPECT_EQ(seen.front().flags, eventFlags::option);
    desktop.setKeyboardLayout(QStringLiteral("us"));
    keys.tap(DeviceKey::rightSuper);
    ASSERT_TRUE(waitUntil([&] { return seen.size() == 4; }));
    EXPECT_EQ(seen.back().keyCode, 54);
    EXPECT_EQ(seen.back().flags, 0U);
}

TEST(X11ModifierEvents, ComeWhileAHotkeyOfOursIsHeld)
{
    const test::VirtualDesktop desktop;
    test::XTestKeys keys(desktop.display());
    X11Hotkeys hotkeys(desktop.display());
    X11ModifierEvents events(desktop.display());
    bool isPressed = false;
    hotkeys.setEventHandler([&](const HotkeyEvent& event) {
        isPressed = event.kind != HotkeyEventKind::released;
        return HotkeyDelivery::handled;
    });
    const auto token = hotkeys.registerHotkey({1, 1}, {101, 0});
    ASSERT_TRUE(token);
    std::vector<ModifierEvent> seen;
    const auto tap = listen(events, seen);
    keys.press(DeviceKey::f9);
    ASSERT_TRUE(waitUntil([&] { return isPressed; }));
    keys.press(DeviceKey::rightAlt);
    keys.release(DeviceKey::rightAlt);
    EXPECT_TRUE(waitUntil([&] { return seen.size() == 2; })) << seen.size();
    keys.release(DeviceKey::f9);
    EXPECT_TRUE(waitUntil([&] { return !isPressed; }));
}

TEST(X11ModifierEvents, ComeWhileAnotherProgramHoldsTheKeyboard)
{
    const test::VirtualDesktop desktop;
    test::XTestKeys keys(desktop.display());
    test::XTestKeys other(desktop.display());
    ASSERT_TRUE(other.grab(DeviceKey::f9, 0));
    X11ModifierEvents events(desktop.display());
    std::vector<ModifierEvent> seen;
    const auto tap = listen(events, seen);
    keys.press(DeviceKey::f9);
    keys.tap(DeviceKey::rightControl);
    EXPECT_TRUE(waitUntil([&] { return seen.size() == 2; }));
    keys.release(DeviceKey::f9);
}

TEST(X11ModifierEvents, TellOfTheEndOfTheServerOnce)
{
    test::VirtualDesktop desktop;
    X11ModifierEvents events(desktop.display());
    std::vector<ModifierEvent> seen;
    const auto tap = listen(events, seen);
    desktop.killServer();
    ASSERT_TRUE(waitUntil([&] { return !seen.empty(); }));
    EXPECT_EQ(seen.front().type, Type::lost);
    tap->disable();
    tap->enable();
    QCoreApplication::processEvents();
    EXPECT_EQ(seen.size(), 1U);
    EXPECT_EQ(events.createTap(61, [](const ModifierEvent&) {}).error(), ModifierEventsError::unreachable());
}

TEST(X11ModifierEvents, ATapMayBeDroppedWhenTheServerEnds)
{
    test::VirtualDesktop desktop;
    X11ModifierEvents events(desktop.display());
    std::unique_ptr<ModifierEvents::Tap> tap;
    bool isLost = false;
    auto created = events.createTap(61, [&](const ModifierEvent& event) {
        isLost = event.type == Type::lost;
        tap.reset();
    });
    ASSERT_TRUE(created);
    tap = std::move(*created);
    tap->enable();
    desktop.killServer();
    EXPECT_TRUE(waitUntil([&] { return isLost; }));
    EXPECT_EQ(tap, nullptr);
}

TEST(X11ModifierEvents, WithoutAServerTheReasonIsSaid)
{
    X11ModifierEvents events(QStringLiteral(":64999"));
    EXPECT_EQ(events.createTap(61, [](const ModifierEvent&) {}).error(), ModifierEventsError::unreachable());
}

} // namespace

} // namespace tulvane
