#include <permissions/PermissionsService.h>
#include <platform/fake/FakePrivacyPermissions.h>
#include <platform/fake/FakeProcesses.h>
#include <platform/fake/FakeWorkspace.h>
#include <support/Await.h>
#include <support/FakeScheduler.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace std::chrono_literals;
using testing::ElementsAre;

namespace tulvane {

namespace {

class PermissionsServiceTest : public testing::Test {
protected:
    [[nodiscard]] std::unique_ptr<PermissionsService>
    make(std::optional<QString> identifier = QStringLiteral("com.dunio.Tulvane"))
    {
        return std::make_unique<PermissionsService>(
            PermissionsPorts{m_permissions, m_processes, m_workspace, m_scheduler}, std::move(identifier));
    }
    [[nodiscard]] int reads() const { return static_cast<int>(m_permissions.calls.count(u"microphone"_qs)); }

    FakePrivacyPermissions m_permissions;
    FakeProcesses m_processes;
    FakeWorkspace m_workspace;
    test::FakeScheduler m_scheduler;
};

const QUrl accessibilityUrl(
    QStringLiteral("x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"));
const QUrl inputMonitoringUrl(
    QStringLiteral("x-apple.systempreferences:com.apple.preference.security?Privacy_ListenEvent"));
const QUrl microphoneUrl(
    QStringLiteral("x-apple.systempreferences:com.apple.preference.security?Privacy_Microphone"));

} // namespace

TEST_F(PermissionsServiceTest, ReadsAllThreeInOrderAtCreationAndDoesNotPoll)
{
    m_permissions.microphoneAccess = MicrophoneAccess::restricted;
    m_permissions.inputMonitoringGranted = false;
    const auto service = make();
    EXPECT_THAT(m_permissions.calls,
                ElementsAre(u"microphone"_qs, u"accessibility"_qs, u"inputMonitoring"_qs));
    EXPECT_EQ(service->microphone(), MicrophoneAccess::restricted);
    EXPECT_TRUE(service->accessibility());
    EXPECT_FALSE(service->inputMonitoring());
    EXPECT_FALSE(service->isPolling());
    EXPECT_TRUE(m_scheduler.pending().empty());
}

TEST_F(PermissionsServiceTest, EveryRefreshPublishesAllThreeChangedOrNot)
{
    const auto service = make();
    QStringList published;
    QObject::connect(service.get(), &PermissionsService::microphoneChanged,
                     [&](MicrophoneAccess) { published.append(u"microphone"_qs); });
    QObject::connect(service.get(), &PermissionsService::accessibilityChanged, [&](bool granted) {
        published.append(granted ? u"accessibility"_qs : u"no accessibility"_qs);
    });
    QObject::connect(service.get(), &PermissionsService::inputMonitoringChanged,
                     [&](bool) { published.append(u"inputMonitoring"_qs); });
    service->refresh();
    EXPECT_THAT(published, ElementsAre(u"microphone"_qs, u"accessibility"_qs, u"inputMonitoring"_qs));
    published.clear();
    m_permissions.accessibilityGranted = false;
    service->refresh();
    EXPECT_THAT(published, ElementsAre(u"microphone"_qs, u"no accessibility"_qs, u"inputMonitoring"_qs));
}

TEST_F(PermissionsServiceTest, PollsOnceASecondUntilStopped)
{
    const auto service = make();
    service->startPolling();
    EXPECT_EQ(reads(), 1);
    m_scheduler.advance(999ms);
    EXPECT_EQ(reads(), 1);
    m_scheduler.advance(1ms);
    EXPECT_EQ(reads(), 2);
    m_scheduler.advance(3s);
    EXPECT_EQ(reads(), 5);
    service->stopPolling();
    m_scheduler.advance(5s);
    EXPECT_EQ(reads(), 5);
}

TEST_F(PermissionsServiceTest, StartingTwiceKeepsOneTimerAndStoppingOnceEndsIt)
{
    const auto service = make();
    service->startPolling();
    m_scheduler.advance(500ms);
    service->startPolling();
    EXPECT_THAT(m_scheduler.pending(), ElementsAre(500ms));
    service->stopPolling();
    EXPECT_FALSE(service->isPolling());
    EXPECT_TRUE(m_scheduler.pending().empty());
    service->startPolling();
    m_scheduler.advance(1s);
    EXPECT_EQ(reads(), 2);
}

TEST_F(PermissionsServiceTest, AReceiverOfAPollCanEndThePolling)
{
    const auto service = make();
    service->startPolling();
    QObject::connect(service.get(), &PermissionsService::microphoneChanged, service.get(),
                     &PermissionsService::stopPolling);
    m_scheduler.advance(1s);
    EXPECT_EQ(reads(), 2);
    EXPECT_FALSE(service->isPolling());
    m_scheduler.advance(5s);
    EXPECT_EQ(reads(), 2);
}

TEST_F(PermissionsServiceTest, ThePollEndsWithTheService)
{
    auto service = make();
    service->startPolling();
    service.reset();
    m_scheduler.advance(5s);
    EXPECT_EQ(reads(), 1);
}

TEST_F(PermissionsServiceTest, TheMicrophoneIsReadAgainOnceTheUserHasAnswered)
{
    m_permissions.microphoneAccess = MicrophoneAccess::notDetermined;
    const auto service = make();
    const QCoro::Task<> task = service->requestMicrophone();
    QCoreApplication::processEvents();
    EXPECT_FALSE(task.isReady());
    EXPECT_EQ(reads(), 1);
    m_permissions.answerMicrophone(true);
    ASSERT_TRUE(test::waitUntil([&] { return task.isReady(); }));
    EXPECT_EQ(service->microphone(), MicrophoneAccess::authorized);
    EXPECT_TRUE(m_workspace.opened.isEmpty());
}

TEST_F(PermissionsServiceTest, AnAnswerAfterTheServiceIsGoneDoesNothing)
{
    auto service = make();
    const QCoro::Task<> task = service->requestMicrophone();
    service.reset();
    m_permissions.answerMicrophone(true);
    ASSERT_TRUE(test::waitUntil([&] { return task.isReady(); }));
    EXPECT_EQ(reads(), 1);
}

TEST_F(PermissionsServiceTest, AccessibilityGrantedAtThePromptOpensNoPane)
{
    m_permissions.accessibilityGranted = false;
    m_permissions.grantOnRequest = true;
    const auto service = make();
    service->requestAccessibility();
    EXPECT_TRUE(service->accessibility());
    EXPECT_TRUE(m_workspace.opened.isEmpty());
}

TEST_F(PermissionsServiceTest, AccessibilityStillMissingOpensItsPaneAfterTheRefresh)
{
    m_permissions.accessibilityGranted = false;
    const auto service = make();
    m_permissions.calls.clear();
    service->requestAccessibility();
    EXPECT_EQ(m_permissions.calls.first(), u"requestAccessibility"_qs);
    EXPECT_EQ(reads(), 1);
    EXPECT_THAT(m_workspace.opened, ElementsAre(accessibilityUrl));
}

TEST_F(PermissionsServiceTest, WhereTheDesktopAsksInADialogNothingCoversIt)
{
    m_permissions.accessibilityGranted = false;
    m_permissions.asked = Permission::accessibility;
    const auto service = make();
    EXPECT_TRUE(service->asksForAccessibility());
    service->requestAccessibility();
    EXPECT_EQ(m_permissions.calls.count(u"requestAccessibility"_qs), 1);
    EXPECT_TRUE(m_workspace.opened.isEmpty());
    m_permissions.accessibilityGranted = true;
    EXPECT_FALSE(service->asksForAccessibility());
}

TEST_F(PermissionsServiceTest, InputMonitoringGrantedAtTheRequestOpensNoPane)
{
    m_permissions.inputMonitoringGranted = false;
    m_permissions.grantOnRequest = true;
    const auto service = make();
    service->requestInputMonitoring();
    EXPECT_TRUE(service->inputMonitoring());
    EXPECT_TRUE(m_workspace.opened.isEmpty());
}

TEST_F(PermissionsServiceTest, InputMonitoringStillMissingOpensItsPaneAfterTheRefresh)
{
    m_permissions.inputMonitoringGranted = false;
    const auto service = make();
    m_permissions.calls.clear();
    service->requestInputMonitoring();
    EXPECT_EQ(m_permissions.calls.first(), u"requestInputMonitoring"_qs);
    EXPECT_EQ(reads(), 1);
    EXPECT_THAT(m_workspace.opened, ElementsAre(inputMonitoringUrl));
}

TEST_F(PermissionsServiceTest, OpensWhatIsAUrlAndIgnoresWhatIsNot)
{
    const auto service = make();
    service->openSettings(QString());
    service->openSettings(u"http://[broken"_qs);
    EXPECT_TRUE(m_workspace.opened.isEmpty());
    service->openSettings(PermissionsService::microphonePane);
    EXPECT_THAT(m_workspace.opened, ElementsAre(microphoneUrl));
}

TEST_F(PermissionsServiceTest, ResetsByTheToolWithTheServiceNameOfEachPermission)
{
    const auto service = make();
    EXPECT_TRUE(service->resetPermission(PermissionsService::Resettable::accessibility));
    EXPECT_TRUE(service->resetPermission(PermissionsService::Resettable::inputMonitoring));
    const QString tool = u"/usr/bin/tccutil"_qs;
    EXPECT_THAT(
        m_processes.commands,
        ElementsAre(FakeProcesses::Command{tool, {u"reset"_qs, u"Accessibility"_qs, u"com.dunio.Tulvane"_qs}},
                    FakeProcesses::Command{tool, {u"reset"_qs, u"ListenEvent"_qs, u"com.dunio.Tulvane"_qs}}));
    EXPECT_EQ(reads(), 3);
}

TEST_F(PermissionsServiceTest, AResetThatExitsOtherThanZeroIsFalseAndRefreshesAllTheSame)
{
    const auto service = make();
    m_processes.exitStatus = 1;
    EXPECT_FALSE(service->resetPermission(PermissionsService::Resettable::accessibility));
    EXPECT_EQ(reads(), 2);
}

TEST_F(PermissionsServiceTest, AToolThatCannotBeLaunchedIsFalseAndNothingIsReadAgain)
{
    const auto service = make();
    m_processes.exitStatus = std::nullopt;
    EXPECT_FALSE(service->resetPermission(PermissionsService::Resettable::inputMonitoring));
    EXPECT_EQ(reads(), 1);
}

TEST_F(PermissionsServiceTest, WithoutABundleIdentifierNothingIsRun)
{
    const auto service = make(std::nullopt);
    EXPECT_FALSE(service->resetPermission(PermissionsService::Resettable::accessibility));
    EXPECT_TRUE(m_processes.commands.isEmpty());
    EXPECT_EQ(reads(), 1);
}

TEST_F(PermissionsServiceTest, SaysWhyAPermissionIsMissing)
{
    const PermissionObstacle obstacle{u"because"_qs, u"do this"_qs};
    m_permissions.obstacles.insert(Permission::accessibility, obstacle);
    const auto service = make();
    EXPECT_EQ(service->obstacle(Permission::accessibility), obstacle);
    EXPECT_EQ(service->obstacle(Permission::microphone), PermissionObstacle());
}

} // namespace tulvane
