// The permission to press keys where the portal asks for it, as the pages show it.
#include "ScriptedRemoteDesktop.h"

#include <platform/fake/FakePrivacyPermissions.h>
#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/portal/AskedPermissions.h>
#include <support/Await.h>
#include <support/PrivateBus.h>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

using State = PortalRemoteDesktop::State;
using User = ScriptedRemoteDesktop::User;

class AskedPermissionsTest : public testing::Test {
protected:
    explicit AskedPermissionsTest(bool isGnome = false)
    {
        auto inner = std::make_unique<FakePrivacyPermissions>();
        session = inner.get();
        session->obstacles.insert(Permission::microphone, {QStringLiteral("muted"), {}});
        permissions = std::make_unique<AskedPermissions>(std::move(inner), keys, isGnome);
    }
    [[nodiscard]] QString reasonIn(State state)
    {
        EXPECT_TRUE(waitUntil([&] { return keys->state() == state; }));
        EXPECT_FALSE(permissions->accessibility());
        EXPECT_TRUE(permissions->asksUser(Permission::accessibility));
        const Obstacle obstacle = permissions->obstacle(Permission::accessibility);
        EXPECT_FALSE(obstacle.remedy.isEmpty());
        return obstacle.reason;
    }

    PrivateBus bus;
    ScriptedRemoteDesktop portal{bus.connect()};
    std::shared_ptr<PortalRemoteDesktop> keys = std::make_shared<PortalRemoteDesktop>(
        std::make_shared<LastingBus>(bus.address()), nullptr, QList<quint32>());
    FakePrivacyPermissions* session = nullptr;
    std::unique_ptr<AskedPermissions> permissions;
};

class AskedOnGnome : public AskedPermissionsTest {
protected:
    AskedOnGnome() : AskedPermissionsTest(true) {}
};

} // namespace

TEST_F(AskedPermissionsTest, BeforeTheDialogTheUserReadsThatItComesAndHowOften)
{
    EXPECT_EQ(
        reasonIn(State::notAsked),
        QStringLiteral("This desktop asks you in a dialog of its own whether Tulvane may press keys, and "
                       "asks again at each start of Tulvane."));
}

TEST_F(AskedPermissionsTest, ARequestBringsTheDialogAndItsAnswerCounts)
{
    portal.user = User::isSilent;
    permissions->requestAccessibility();
    EXPECT_EQ(reasonIn(State::asking),
              QStringLiteral("The desktop is asking you now whether Tulvane may press keys."));
    ASSERT_TRUE(waitUntil([&] { return portal.dialogs() == 1; }));
    portal.answer(true);
    EXPECT_TRUE(waitUntil([&] { return permissions->accessibility(); }));
    EXPECT_FALSE(permissions->asksUser(Permission::accessibility));
    EXPECT_EQ(permissions->obstacle(Permission::accessibility), Obstacle());
}

TEST_F(AskedPermissionsTest, EachOtherAnswerHasItsReason)
{
    portal.user = User::declines;
    permissions->requestAccessibility();
    EXPECT_EQ(reasonIn(State::declined), QStringLiteral("You have not allowed Tulvane to press keys."));
    portal.user = User::agrees;
    portal.devices = 0;
    permissions->requestAccessibility();
    EXPECT_EQ(reasonIn(State::noKeyboard),
              QStringLiteral("You have allowed Tulvane remote control, but not of the keyboard."));
    portal.devices = 1;
    permissions->requestAccessibility();
    ASSERT_TRUE(waitUntil([&] { return permissions->accessibility(); }));
    portal.endSession();
    EXPECT_EQ(reasonIn(State::ended),
              QStringLiteral("The desktop no longer lets Tulvane press keys: its remote control was ended."));
    portal.isBroken = true;
    permissions->requestAccessibility();
    EXPECT_EQ(reasonIn(State::failed),
              QStringLiteral("The desktop could not ask you whether Tulvane may press keys."));
}

TEST_F(AskedPermissionsTest, TheOthersAreTheSessionsOwn)
{
    session->microphoneAccess = MicrophoneAccess::denied;
    session->inputMonitoringGranted = false;
    EXPECT_EQ(permissions->microphone(), MicrophoneAccess::denied);
    EXPECT_FALSE(permissions->inputMonitoring());
    EXPECT_FALSE(permissions->asksUser(Permission::microphone));
    EXPECT_EQ(permissions->obstacle(Permission::microphone).reason, QStringLiteral("muted"));
    permissions->requestInputMonitoring();
    EXPECT_EQ(session->calls.constLast(), QStringLiteral("requestInputMonitoring"));
    const auto answer = permissions->requestMicrophone();
    session->answerMicrophone(true);
    EXPECT_TRUE(await(answer));
}

TEST_F(AskedOnGnome, TheSwitchOfItsDialogIsNamed)
{
    EXPECT_TRUE(permissions->obstacle(Permission::accessibility)
                    .remedy.contains(QStringLiteral("“Allow Remote Interaction”")));
}

} // namespace tulvane::test
