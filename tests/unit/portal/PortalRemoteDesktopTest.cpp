// Keys by the portal: when the user is asked, what becomes of each answer, and what goes out.
#include "ScriptedRemoteDesktop.h"

#include <platform/fake/FakeUserDefaults.h>
#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/portal/PortalRemoteDesktop.h>
#include <platform/linux/remote/RemoteKeyPosting.h>
#include <support/Await.h>
#include <support/PrivateBus.h>
#include <support/ReturningBus.h>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

using State = PortalRemoteDesktop::State;
using User = ScriptedRemoteDesktop::User;

const QStringList controlV{QStringLiteral("29+"), QStringLiteral("47+"), QStringLiteral("47-"),
                           QStringLiteral("29-")};

class PortalKeys : public testing::Test {
protected:
    PortalRemoteDesktop& start(const QList<quint32>& keysToLetGo = {})
    {
        posting.reset();
        desktop.reset();
        desktop = std::make_shared<PortalRemoteDesktop>(std::make_shared<LastingBus>(bus.address()), defaults,
                                                        keysToLetGo);
        posting = std::make_unique<RemoteKeyPosting>(desktop, RemoteKeyPosting::Hooks{});
        return *desktop;
    }
    /// Which the user leaves as it is.
    void showDialog()
    {
        portal.user = User::isSilent;
        start().ask();
        ASSERT_TRUE(waitUntil([&] { return portal.dialogs() == 1; }));
    }
    [[nodiscard]] bool comesTo(State state) const
    {
        return waitUntil([&] { return desktop->state() == state; });
    }
    [[nodiscard]] bool pastes() const { return await(posting->paste({})); }
    [[nodiscard]] bool isAllowed() const { return defaults->value(PortalRemoteDesktop::allowedKey).toBool(); }

    PrivateBus bus;
    ScriptedRemoteDesktop portal{bus.connect()};
    std::shared_ptr<FakeUserDefaults> defaults = std::make_shared<FakeUserDefaults>();
    std::shared_ptr<PortalRemoteDesktop> desktop;
    std::unique_ptr<RemoteKeyPosting> posting;
};

} // namespace

TEST_F(PortalKeys, NothingIsAskedBeforeTheUserWantsIt)
{
    start();
    posting->prepare();
    EXPECT_FALSE(pastes());
    EXPECT_FALSE(await(posting->typeSpaces(1)));
    EXPECT_EQ(desktop->state(), State::notAsked);
    EXPECT_EQ(portal.calls, QStringList());
}

TEST_F(PortalKeys, WhatTheUserAllowsIsPressed)
{
    start().ask();
    EXPECT_EQ(desktop->state(), State::asking);
    ASSERT_TRUE(comesTo(State::granted));
    EXPECT_EQ(portal.selection.value(QStringLiteral("types")).toUInt(), 1U) << "the keyboard alone";
    posting->prepare();
    EXPECT_TRUE(pastes());
    EXPECT_TRUE(await(posting->typeSpaces(2)));
    EXPECT_EQ(portal.keys, controlV + QStringList({QStringLiteral("57+"), QStringLiteral("57-"),
                                                   QStringLiteral("57+"), QStringLiteral("57-")}));
    EXPECT_EQ(portal.dialogs(), 1) << "one session for all of it";
    EXPECT_TRUE(portal.isOpen());
    desktop->ask();
    EXPECT_EQ(desktop->state(), State::granted);
}

TEST_F(PortalKeys, TheSessionEndsWithTheProgram)
{
    start().ask();
    ASSERT_TRUE(comesTo(State::granted));
    posting.reset();
    desktop.reset();
    EXPECT_TRUE(waitUntil([&] { return !portal.isOpen(); }));
}

TEST_F(PortalKeys, WhatWasAllowedIsAskedForAgainAtTheNextStart)
{
    start().ask();
    ASSERT_TRUE(comesTo(State::granted));
    EXPECT_TRUE(isAllowed());
    start();
    EXPECT_EQ(desktop->state(), State::asking);
    ASSERT_TRUE(comesTo(State::granted));
    EXPECT_EQ(portal.dialogs(), 2);
    EXPECT_FALSE(portal.selection.contains(QStringLiteral("restore_token")));
}

TEST_F(PortalKeys, APortalThatRemembersIsGivenWhatItGave)
{
    portal.nextToken = QStringLiteral("first");
    start().ask();
    ASSERT_TRUE(comesTo(State::granted));
    EXPECT_EQ(portal.selection.value(QStringLiteral("persist_mode")).toUInt(), 2U);
    portal.nextToken = QStringLiteral("second");
    start();
    ASSERT_TRUE(comesTo(State::granted));
    EXPECT_EQ(portal.selection.value(QStringLiteral("restore_token")), QStringLiteral("first"));
    start();
    ASSERT_TRUE(comesTo(State::granted));
    EXPECT_EQ(portal.selection.value(QStringLiteral("restore_token")), QStringLiteral("second"))
        << "each serves once";
}

TEST_F(PortalKeys, WhoDeclinesIsNotAskedAtTheNextStart)
{
    start().ask();
    ASSERT_TRUE(comesTo(State::granted));
    portal.user = User::declines;
    start();
    ASSERT_TRUE(comesTo(State::declined));
    EXPECT_FALSE(pastes());
    EXPECT_EQ(portal.keys, QStringList());
    EXPECT_TRUE(waitUntil([&] { return !portal.isOpen(); })) << "nothing is left open";
    start();
    EXPECT_EQ(desktop->state(), State::notAsked);
    portal.user = User::agrees;
    desktop->ask();
    EXPECT_TRUE(comesTo(State::granted)) << "but may change their mind";
}

TEST_F(PortalKeys, AnAgreementWithoutTheKeyboardIsNone)
{
    portal.devices = 0;
    start().ask();
    ASSERT_TRUE(comesTo(State::noKeyboard));
    EXPECT_FALSE(pastes());
    EXPECT_FALSE(isAllowed());
    EXPECT_TRUE(waitUntil([&] { return !portal.isOpen(); }));
}

TEST_F(PortalKeys, AUserWhoEndsTheSessionIsNotAskedAnewByItself)
{
    start().ask();
    ASSERT_TRUE(comesTo(State::granted));
    portal.endSession();
    ASSERT_TRUE(comesTo(State::ended));
    posting->prepare();
    EXPECT_FALSE(pastes());
    EXPECT_EQ(portal.dialogs(), 1);
    desktop->ask();
    ASSERT_TRUE(comesTo(State::granted));
    EXPECT_TRUE(pastes());
}

TEST_F(PortalKeys, ADialogThatIsLostFromSightIsShownAgain)
{
    showDialog();
    desktop->ask();
    ASSERT_TRUE(waitUntil([&] { return portal.dialogs() == 2; }));
    EXPECT_EQ(portal.calls.count(QStringLiteral("Close")), 1) << "the first one is taken away";
    portal.answer(true);
    EXPECT_TRUE(comesTo(State::granted));
}

TEST_F(PortalKeys, TheAnswerCountsAlsoWhereTheSessionIsClosedBeforeIt)
{
    showDialog();
    portal.endSession();
    portal.answer(false);
    ASSERT_TRUE(comesTo(State::declined));
    desktop->ask();
    ASSERT_TRUE(waitUntil([&] { return portal.dialogs() == 2; }));
    portal.endSession();
    portal.answer(true);
    EXPECT_TRUE(comesTo(State::ended)) << "and is nothing without its session";
}

TEST_F(PortalKeys, ADialogThatGoesWithoutAnAnswerCanBeHadAgain)
{
    showDialog();
    portal.endSession();
    ASSERT_TRUE(comesTo(State::ended));
    portal.user = User::agrees;
    desktop->ask();
    EXPECT_TRUE(comesTo(State::granted));
}

TEST_F(PortalKeys, APortalThatFailsIsNoPermission)
{
    portal.isBroken = true;
    start().ask();
    ASSERT_TRUE(comesTo(State::failed));
    EXPECT_FALSE(pastes());
}

TEST_F(PortalKeys, APortalThatQuitsTakesThePermissionAlong)
{
    showDialog();
    portal.quit();
    ASSERT_TRUE(comesTo(State::ended));
    portal.start();
    portal.user = User::agrees;
    desktop->ask();
    ASSERT_TRUE(comesTo(State::granted));
    portal.quit();
    ASSERT_TRUE(comesTo(State::ended));
    EXPECT_FALSE(pastes());
}

TEST_F(PortalKeys, WhatTheUserHoldsIsLetGoOfFirstWhereThatHelps)
{
    start({29, 42}).ask();
    ASSERT_TRUE(comesTo(State::granted));
    EXPECT_TRUE(pastes());
    EXPECT_EQ(portal.keys, QStringList({QStringLiteral("29-"), QStringLiteral("42-")}) + controlV);
}

TEST_F(PortalKeys, ItGoesAtAnyTime)
{
    for (const int milliseconds : {0, 1, 5, 20, 60}) {
        start().ask();
        posting->prepare();
        const auto pasting = posting->paste({});
        (void)waitUntil([&] { return pasting.isFinished(); }, std::chrono::milliseconds(milliseconds));
    }
}

TEST(PortalKeysVersion, OnlyANewerPortalRemembers)
{
    const PrivateBus bus;
    for (const uint version : {1U, 2U}) {
        const ScriptedRemoteDesktop portal(bus.connect(), version);
        PortalRemoteDesktop desktop(std::make_shared<LastingBus>(bus.address()), nullptr, {});
        bool isKnown = false;
        QObject::connect(&desktop, &PortalRemoteDesktop::changed, [&] { isKnown = true; });
        ASSERT_TRUE(waitUntil([&] { return isKnown; }));
        EXPECT_EQ(desktop.isRemembered(), version == 2);
    }
}

TEST(PortalKeysBus, AfterTheBusHasReturnedTheUserIsAskedAgain)
{
    ReturningBus bus;
    auto portal = std::make_unique<ScriptedRemoteDesktop>(
        QDBusConnection::connectToBus(bus.address(), QStringLiteral("portal-before")));
    const auto lasting = std::make_shared<LastingBus>(bus.address());
    PortalRemoteDesktop desktop(lasting, nullptr, {});
    const auto comesTo = [&](State state) { return waitUntil([&] { return desktop.state() == state; }); };
    desktop.ask();
    ASSERT_TRUE(comesTo(State::granted));
    bus.kill();
    ASSERT_TRUE(comesTo(State::ended));
    portal.reset();
    bus.start();
    portal = std::make_unique<ScriptedRemoteDesktop>(
        QDBusConnection::connectToBus(bus.address(), QStringLiteral("portal-after")));
    ASSERT_TRUE(waitUntil([&] { return lasting->connection().isConnected(); }));
    desktop.ask();
    ASSERT_TRUE(comesTo(State::granted));
    portal->quit();
    EXPECT_TRUE(comesTo(State::ended)) << "and the new portal is watched";
}

} // namespace tulvane::test
