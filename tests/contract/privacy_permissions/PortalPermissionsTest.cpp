#include "PermissionStore.h"

#include <platform/fake/FakePrivacyPermissions.h>
#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/desktop/PortalPermissions.h>
#include <support/Await.h>
#include <support/ReturningBus.h>
#include <support/VirtualDesktop.h>

#include <QElapsedTimer>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

using namespace std::chrono_literals;

const QString ours = QStringLiteral("com.dunio.Tulvane");
const QString other = QStringLiteral("org.example.Other");
const QStringList yes{QStringLiteral("yes")};
const QStringList no{QStringLiteral("no")};

class PortalPermissionsTest : public testing::Test {
protected:
    PortalPermissions& permissions()
    {
        auto inner = std::make_unique<FakePrivacyPermissions>();
        session = inner.get();
        session->microphoneAccess = MicrophoneAccess::authorized;
        auto decided = std::make_unique<MicrophonePermission>(std::make_shared<LastingBus>(bus), ours);
        decided->waitForAnswer(5s);
        return m_made.emplace(std::move(inner), std::move(decided));
    }

    VirtualDesktop desktop{{.windowManager = VirtualDesktop::WindowManager::none,
                            .sessionBus = VirtualDesktop::SessionBus::own,
                            .openboxKeys = {}}};
    const QString bus = desktop.environment().value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
    FakePrivacyPermissions* session = nullptr;

private:
    std::optional<PortalPermissions> m_made;
};

} // namespace

TEST_F(PortalPermissionsTest, WithoutAStoreOrADecisionTheSessionsOwnAnswerCounts)
{
    EXPECT_EQ(permissions().microphone(), MicrophoneAccess::authorized);
    const PermissionStore store(bus);
    EXPECT_EQ(permissions().microphone(), MicrophoneAccess::authorized);
    PortalPermissions& all = permissions();
    session->microphoneAccess = MicrophoneAccess::denied;
    EXPECT_EQ(all.microphone(), MicrophoneAccess::denied);
    session->accessibilityGranted = false;
    EXPECT_FALSE(all.accessibility());
    session->accessibilityGranted = true;
    EXPECT_TRUE(all.accessibility());
}

TEST_F(PortalPermissionsTest, WhatTheUserHasForbiddenIsDeniedWithItsReasonAndItsRemedy)
{
    const PermissionStore store(bus, {{ours, no}, {other, yes}});
    PortalPermissions& denied = permissions();
    EXPECT_EQ(denied.microphone(), MicrophoneAccess::denied);
    EXPECT_FALSE(await(denied.requestMicrophone()));
    EXPECT_EQ(denied.obstacle(Permission::microphone).reason,
              u"Your desktop's privacy settings keep Tulvane from the microphone."_qs);
    EXPECT_EQ(denied.obstacle(Permission::microphone).remedy,
              u"Allow Tulvane to use the microphone there."_qs);
}

TEST_F(PortalPermissionsTest, WhatIsDecidedOfOthersIsNoneOfOurs)
{
    const PermissionStore store(bus, {{ours, yes}, {other, no}});
    EXPECT_EQ(permissions().microphone(), MicrophoneAccess::authorized);
}

TEST_F(PortalPermissionsTest, ADecisionIsFollowed)
{
    PermissionStore store(bus, {{ours, yes}});
    PortalPermissions& all = permissions();
    EXPECT_EQ(all.microphone(), MicrophoneAccess::authorized);
    store.decide({{ours, no}}, QStringLiteral("camera"));
    store.decide({{ours, no}});
    EXPECT_TRUE(waitUntil([&] { return all.microphone() == MicrophoneAccess::denied; }));
    store.decide({{ours, yes}});
    EXPECT_TRUE(waitUntil([&] { return all.microphone() == MicrophoneAccess::authorized; }));
    store.decide({{ours, no}});
    EXPECT_TRUE(waitUntil([&] { return all.microphone() == MicrophoneAccess::denied; }));
    store.decide({});
    EXPECT_TRUE(waitUntil([&] { return all.microphone() == MicrophoneAccess::authorized; }));
}

TEST_F(PortalPermissionsTest, AStoreThatComesLaterIsAsked)
{
    PortalPermissions& all = permissions();
    const PermissionStore store(bus, {{ours, no}});
    EXPECT_TRUE(waitUntil([&] { return all.microphone() == MicrophoneAccess::denied; }));
}

TEST_F(PortalPermissionsTest, WithoutABusNothingIsWaitedFor)
{
    QElapsedTimer timer;
    timer.start();
    MicrophonePermission decided(std::make_shared<LastingBus>(QStringLiteral("unix:path=/nowhere")), ours);
    decided.waitForAnswer(5s);
    EXPECT_LT(timer.elapsed(), 1000);
    EXPECT_FALSE(decided.isDenied());
}

TEST_F(PortalPermissionsTest, ADecisionIsFollowedOnABusThatHasComeBack)
{
    ReturningBus returning;
    const MicrophonePermission decided(std::make_shared<LastingBus>(returning.address()), ours);
    for (int round = 0; round < 2; ++round) {
        returning.kill();
        returning.start();
        PermissionStore store(returning.address(), {{ours, no}});
        EXPECT_TRUE(waitUntil([&] { return decided.isDenied(); }, 20s));
        store.decide({{ours, yes}});
        EXPECT_TRUE(waitUntil([&] { return !decided.isDenied(); }));
    }
}

} // namespace tulvane::test
