#include <platform/linux/x11/keyboard/OwnStrokes.h>
#include <platform/linux/x11/keyboard/ServerTime.h>
#include <platform/linux/x11/keyboard/X11Hotkeys.h>
#include <platform/linux/x11/keyboard/X11KeyPosting.h>
#include <platform/linux/x11/keyboard/X11ModifierEvents.h>
#include <ports/KeyModifiers.h>
#include <support/Await.h>
#include <support/VirtualDesktop.h>
#include <support/XTestKeys.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

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

TEST(X11ModifierEvents, LeaveOutWhatThisProgramPosts)
{
    const test::VirtualDesktop desktop;
    test::XTestKeys keys(desktop.display());
    X11ModifierEvents events(desktop.display());
    std::vector<ModifierEvent> seen;
    const auto tap = listen(events, seen);
    keys.press(DeviceKey::rightAlt);
    ASSERT_TRUE(waitUntil([&] { return seen.size() == 1; }));
    EventLoopScheduler scheduler;
    const auto link = X11Connection::open(desktop.display().toLocal8Bit());
    ASSERT_TRUE(link);
    X11KeyPosting posting(*link, scheduler, [](const PasteTarget&) { return true; });
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(test::await(posting.paste({})));
    keys.release(DeviceKey::rightAlt);
    ASSERT_TRUE(waitUntil([&] { return seen.size() > 1; }));
    EXPECT_FALSE(waitUntil([&] { return seen.size() > 2; }, std::chrono::milliseconds(200)));
    EXPECT_EQ(seen.back().flags, 0U) << "only the finger's own release";
}

TEST(X11ModifierEvents, TellWhenWhatIsHandledLateHasHappened)
{
    const test::VirtualDesktop desktop;
    test::XTestKeys keys(desktop.display());
    X11ModifierEvents events(desktop.display());
    std::vector<ModifierEvent> seen;
    const auto tap = listen(events, seen);
    keys.press(DeviceKey::rightAlt);
    ASSERT_TRUE(waitUntil([&] { return seen.size() == 1; }));
    keys.release(DeviceKey::rightAlt);
    std::this_thread::sleep_for(std::chrono::milliseconds(400)); // a program that is busy
    ASSERT_TRUE(waitUntil([&] { return seen.size() == 2; }));
    EXPECT_LT(seen[0].age.count(), 200);
    EXPECT_GE(seen[1].age.count(), 350);
}

TEST(OwnStrokes, AreTakenOnceAndNotLongAfterwards)
{
    using namespace std::chrono_literals;
    OwnStrokes strokes;
    const auto now = std::chrono::steady_clock::now();
    EXPECT_FALSE(strokes.take(108, false, now));
    strokes.add(108, false);
    strokes.add(108, true);
    EXPECT_FALSE(strokes.take(64, false, now)) << "another key";
    EXPECT_TRUE(strokes.take(108, true, now + 20ms));
    EXPECT_FALSE(strokes.take(108, true, now + 20ms)) << "the user's own";
    EXPECT_FALSE(strokes.take(108, false, now + 400ms)) << "it never came";
}

TEST(ServerTime, IsByTheMonotonicClockOrThePromptestEvent)
{
    using namespace std::chrono_literals;
    const std::chrono::steady_clock::time_point now(1'000'000ms);
    ServerTime local;
    EXPECT_EQ(local.age(999'700, now), 300ms);
    EXPECT_EQ(local.age(1'000'000, now), 0ms);
    ServerTime remote;
    EXPECT_EQ(remote.age(5'000, now), 0ms);
    EXPECT_EQ(remote.age(5'100, now + 500ms), 400ms);
    EXPECT_EQ(remote.age(5'700, now + 600ms), 0ms) << "prompter than the first";
    EXPECT_EQ(remote.age(5'800, now + 900ms), 200ms);
    ServerTime wrapped;
    EXPECT_EQ(wrapped.age(0xFFFFFF00U, now), 0ms);
    EXPECT_EQ(wrapped.age(0x10U, now + 500ms), 500ms - 272ms);
}

} // namespace

} // namespace tulvane
