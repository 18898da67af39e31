#include <platform/fake/FakePrivacyPermissions.h>
#include <platform/linux/session/X11PrivacyPermissions.h>
#include <support/Await.h>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

/// What a desktop permits.
struct Grants {
    bool microphone = true;
    bool accessibility = true;
    bool inputMonitoring = true;
};

/// Either backend, on a desktop that permits as the test says.
class FakeDesktop {
public:
    explicit FakeDesktop(const Grants& grants)
    {
        m_permissions.accessibilityGranted = grants.accessibility;
        m_permissions.inputMonitoringGranted = grants.inputMonitoring;
        m_answer = grants.microphone;
        set(Permission::microphone, grants.microphone);
        set(Permission::accessibility, grants.accessibility);
        set(Permission::inputMonitoring, grants.inputMonitoring);
        m_permissions.microphoneAccess =
            grants.microphone ? MicrophoneAccess::authorized : MicrophoneAccess::denied;
    }
    [[nodiscard]] PrivacyPermissions& permissions() { return m_permissions; }
    /// The user answers what the program has asked.
    void answer() { m_permissions.answerMicrophone(m_answer); }

private:
    void set(Permission permission, bool granted)
    {
        if (!granted)
            m_permissions.obstacles[permission] = {QStringLiteral("Why"), QStringLiteral("What to do")};
    }

    FakePrivacyPermissions m_permissions;
    bool m_answer = true;
};

class X11Desktop {
public:
    explicit X11Desktop(const Grants& grants)
        : m_permissions({true, grants.accessibility, grants.inputMonitoring},
                        [denied = !grants.microphone] { return denied; })
    {
    }
    [[nodiscard]] PrivacyPermissions& permissions() { return m_permissions; }
    /// An X11 desktop asks nothing.
    static void answer() {}

private:
    X11PrivacyPermissions m_permissions;
};

template <class Desktop>
class PrivacyPermissionsContract : public testing::Test {};

using Desktops = testing::Types<FakeDesktop, X11Desktop>;
TYPED_TEST_SUITE(PrivacyPermissionsContract, Desktops);

bool isGranted(const PrivacyPermissions& permissions, Permission permission)
{
    switch (permission) {
    case Permission::microphone:
        return permissions.microphone() == MicrophoneAccess::authorized;
    case Permission::accessibility:
        return permissions.accessibility();
    case Permission::inputMonitoring:
        return permissions.inputMonitoring();
    }
    Q_UNREACHABLE();
}

constexpr std::array all{Permission::microphone, Permission::accessibility, Permission::inputMonitoring};

Grants allBut(Permission missing)
{
    return {missing != Permission::microphone, missing != Permission::accessibility,
            missing != Permission::inputMonitoring};
}

} // namespace

TYPED_TEST(PrivacyPermissionsContract, NothingStandsInTheWayOfWhatIsPermitted)
{
    TypeParam desktop{Grants{}};
    for (const Permission one : all) {
        EXPECT_TRUE(isGranted(desktop.permissions(), one));
        EXPECT_EQ(desktop.permissions().obstacle(one), PermissionObstacle());
    }
}

TYPED_TEST(PrivacyPermissionsContract, EachIsRefusedByItselfWithAReasonAndARemedy)
{
    for (const Permission missing : all) {
        TypeParam desktop{allBut(missing)};
        for (const Permission one : all) {
            EXPECT_EQ(isGranted(desktop.permissions(), one), one != missing);
            const PermissionObstacle obstacle = desktop.permissions().obstacle(one);
            EXPECT_EQ(obstacle.reason.isEmpty(), one != missing);
            EXPECT_EQ(obstacle.remedy.isEmpty(), one != missing);
        }
    }
}

TYPED_TEST(PrivacyPermissionsContract, AskingForTheMicrophoneEndsWithWhatCanBeReadAfterwards)
{
    for (const bool granted : {true, false}) {
        TypeParam desktop{Grants{.microphone = granted}};
        QFuture<bool> answer = desktop.permissions().requestMicrophone();
        desktop.answer();
        EXPECT_EQ(await(answer), granted);
        EXPECT_EQ(isGranted(desktop.permissions(), Permission::microphone), granted);
    }
}

TYPED_TEST(PrivacyPermissionsContract, AskingForTheOthersTakesNothingAway)
{
    for (const Permission missing : all) {
        TypeParam desktop{allBut(missing)};
        PrivacyPermissions& permissions = desktop.permissions();
        const bool microphone = isGranted(permissions, Permission::microphone);
        permissions.requestAccessibility();
        permissions.requestInputMonitoring();
        EXPECT_EQ(isGranted(permissions, Permission::microphone), microphone);
        EXPECT_GE(permissions.accessibility(), missing != Permission::accessibility);
        EXPECT_GE(permissions.inputMonitoring(), missing != Permission::inputMonitoring);
    }
}

} // namespace tulvane::test
