#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/kde/KGlobalAccelGrab.h>
#include <platform/linux/kde/KGlobalAccelHotKeys.h>
#include <platform/linux/kde/KWinFront.h>
#include <platform/linux/kde/QtKeys.h>
#include <ports/KeyModifiers.h>
#include <support/Await.h>
#include <support/Paths.h>
#include <support/wayland/WaylandDesktop.h>

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QWindow>

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace tulvane::test {

namespace {

using testing::ElementsAre;

constexpr KeyCombination altSpace{49, carbon::option};
constexpr KeyCombination controlAltT{17, carbon::control | carbon::option};
constexpr KeyCombination f8{100, 0};
constexpr HotkeyId id{0x544C564B, 1};
constexpr int space = 57;
constexpr int leftAlt = 56;
constexpr int leftControl = 29;
constexpr int letterT = 20;

class KdeTest : public testing::Test {
protected:
    void SetUp() override
    {
        TULVANE_NEEDS(WaylandDesktop::Kind::kwin);
        desktop = std::make_unique<WaylandDesktop>(WaylandDesktop::Kind::kwin);
        bus = std::make_shared<LastingBus>(desktop->bus());
        start();
    }
    void TearDown() override
    {
        registration.reset();
        hotkeys.reset();
    }
    void start()
    {
        registration.reset();
        hotkeys = std::make_unique<KGlobalAccelHotKeys>(
            KGlobalAccelHotKeys::Options{bus, desktop->variable(QStringLiteral("XDG_CONFIG_HOME"))});
        hotkeys->setEventHandler([this](const HotkeyEvent& event) {
            if (event.kind != HotkeyEventKind::repeated)
                edges.push_back(event.kind == HotkeyEventKind::pressed);
            return HotkeyDelivery::handled;
        });
        hotkeys->setChangeHandler([this] { ++changes; });
    }
    void take(const KeyCombination& combination)
    {
        registration.reset();
        auto taken = hotkeys->registerHotkey(id, combination);
        ASSERT_TRUE(taken) << qPrintable(taken.error().description());
        registration = std::move(*taken);
    }
    /// As the system settings do it.
    void rebind(const KeyCombination& combination)
    {
        const KGlobalAccel service(bus);
        const KGlobalAccel::Action action{
            QStringLiteral("com.dunio.Tulvane"), QStringLiteral("hotkey-1"), {}, {}};
        QList<int> keys;
        if (combination.keyCode != 0)
            keys = qtKeysOf(combination, *XkbKeymap::fromNames(QStringLiteral("no")));
        service.setForeignKeys(action, keys);
        ASSERT_TRUE(waitUntil([&] { return changes > 0; }));
        changes = 0;
    }
    [[nodiscard]] bool hearsPress(const QList<int>& keys)
    {
        edges.clear();
        desktop->press(keys);
        return waitUntil([&] { return edges.size() >= 2; }, std::chrono::milliseconds(700));
    }

    QProcess& edit()
    {
        return desktop->start(QStringLiteral("/usr/bin/python3"),
                              {sourceFolder() + QStringLiteral("/tests/support/targets/gtk_target.py"),
                               QStringLiteral("view")});
    }
    static bool isInFront(const KWinFront& front, const QProcess& program)
    {
        return front.current().process == static_cast<quint32>(program.processId());
    }

    std::unique_ptr<WaylandDesktop> desktop;
    std::shared_ptr<LastingBus> bus;
    std::unique_ptr<KGlobalAccelHotKeys> hotkeys;
    std::unique_ptr<GlobalHotkeys::Registration> registration;
    std::vector<bool> edges;
    int changes = 0;
};

TEST_F(KdeTest, TheUsersRebindingCountsNowAndAtTheNextStart)
{
    take(altSpace);
    ASSERT_TRUE(hearsPress({leftAlt, space}));
    rebind(controlAltT);
    take(altSpace);
    EXPECT_EQ(hotkeys->display(altSpace), hotkeys->display(controlAltT));
    EXPECT_FALSE(hearsPress({leftAlt, space}));
    EXPECT_TRUE(hearsPress({leftControl, leftAlt, letterT}));
    EXPECT_THAT(edges, ElementsAre(true, false));

    start();
    take(altSpace);
    EXPECT_TRUE(hearsPress({leftControl, leftAlt, letterT}));
    EXPECT_FALSE(hearsPress({leftAlt, space}));
}

TEST_F(KdeTest, ACombinationRecordedInOurSettingsTakesThePlaceOfARebinding)
{
    take(altSpace);
    rebind(controlAltT);
    take(f8);
    EXPECT_TRUE(hearsPress({66}));
    EXPECT_FALSE(hearsPress({leftControl, leftAlt, letterT}));
}

TEST_F(KdeTest, AKeyThatTheUserHasTakenAwayIsSaidToBeGone)
{
    take(altSpace);
    rebind({});
    registration.reset();
    const auto refused = hotkeys->registerHotkey(id, altSpace);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().kind(), HotkeyError::Kind::unsupported);
    EXPECT_TRUE(refused.error().description().contains(QStringLiteral("settings")));
}

TEST_F(KdeTest, TheHolderOfACombinationIsNamed)
{
    const KGlobalAccel service(bus);
    const KGlobalAccel::Action runner{QStringLiteral("krunner"), QStringLiteral("run"),
                                      QStringLiteral("KRunner"), QStringLiteral("Search")};
    ASSERT_FALSE(service.add(runner).isEmpty());
    service.setKeys(runner, qtKeysOf(altSpace, *XkbKeymap::fromNames({})), KGlobalAccel::Keys::asGiven);
    const auto refused = hotkeys->registerHotkey(id, altSpace);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().kind(), HotkeyError::Kind::taken);
    EXPECT_TRUE(refused.error().description().contains(QStringLiteral("KRunner")));
}

TEST_F(KdeTest, AskingForAFreeOneLeavesNothingInTheSystemSettings)
{
    EXPECT_TRUE(hotkeys->isFree(altSpace));
    EXPECT_TRUE(
        KGlobalAccel(bus).holders(qtKeysOf(altSpace, *XkbKeymap::fromNames({})).constFirst()).isEmpty());
}

TEST_F(KdeTest, AHeldBackKeyboardGoesToTheWindow)
{
    take(altSpace);
    KGlobalAccelGrab grab(bus, desktop->environment());
    QWindow window;
    window.show();
    auto hold = grab.hold(window);
    ASSERT_NE(hold, nullptr);
    EXPECT_FALSE(hearsPress({leftAlt, space}));
    hold.reset();
    EXPECT_TRUE(hearsPress({leftAlt, space}));
}

TEST_F(KdeTest, AStartFreesWhatAKilledProgramHeldBack)
{
    take(altSpace);
    KGlobalAccel(bus).setBlocked(true);
    ASSERT_FALSE(hearsPress({leftAlt, space}));
    const KGlobalAccelGrab grab(bus, desktop->environment());
    EXPECT_TRUE(hearsPress({leftAlt, space}));
}

TEST_F(KdeTest, AProgramThatIsKilledHoldsNothingBack)
{
    take(altSpace);
    KGlobalAccel(bus).setBlocked(true);
    ASSERT_FALSE(hearsPress({leftAlt, space}));
    const QString owner = KGlobalAccel(bus).owner();
    const pid_t program = fork();
    if (program == 0) {
        const auto watch = KGlobalAccelGrab::watch(desktop->environment(), owner);
        std::raise(SIGKILL);
    }
    waitpid(program, nullptr, 0);
    EXPECT_TRUE(waitUntil([&] { return hearsPress({leftAlt, space}); }));
}

TEST_F(KdeTest, AKWinThatCrashesAndReturnsHasTheHotkeyAgain)
{
    take(altSpace);
    // As the registry does it.
    hotkeys->setChangeHandler([this] {
        registration.reset();
        if (auto taken = hotkeys->registerHotkey(id, altSpace))
            registration = std::move(*taken);
    });
    desktop->down({leftAlt, space});
    ASSERT_TRUE(waitUntil([&] { return edges.size() == 1; }));
    desktop->perform(QStringLiteral("crash_and_return"));
    ASSERT_TRUE(waitUntil([&] { return edges.size() == 2; }));
    EXPECT_FALSE(edges.back()) << "what was held is let go";
    ASSERT_TRUE(waitUntil([&] { return registration != nullptr; }));
    EXPECT_TRUE(waitUntil([&] { return hearsPress({leftAlt, space}); }));
    EXPECT_THAT(edges, ElementsAre(true, false));
}

TEST_F(KdeTest, AKWinThatCrashesAndReturnsTellsTheWindowInFront)
{
    KWinFront front(bus);
    QProcess& before = edit();
    ASSERT_TRUE(waitUntil([&] { return isInFront(front, before); }));
    desktop->perform(QStringLiteral("crash_and_return"));
    ASSERT_TRUE(waitUntil([&] { return front.current().id.isEmpty(); }));
    QProcess& after = edit();
    EXPECT_TRUE(waitUntil([&] { return isInFront(front, after); }));
}

TEST_F(KdeTest, TheWindowInFrontIsTold)
{
    KWinFront front(bus);
    QProcess& program = edit();
    EXPECT_TRUE(waitUntil([&] { return isInFront(front, program); }));
    EXPECT_EQ(front.current().resourceClass, QStringLiteral("gtk-target"));
    EXPECT_FALSE(front.current().isX11);
    EXPECT_FALSE(front.current().id.isEmpty());
    program.terminate();
    EXPECT_TRUE(waitUntil([&] { return front.current().id.isEmpty(); }));
}

} // namespace

} // namespace tulvane::test
