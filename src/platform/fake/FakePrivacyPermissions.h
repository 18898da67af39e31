#pragma once

#include <ports/PrivacyPermissions.h>

#include <QMap>
#include <QPromise>
#include <QStringList>

#include <optional>

namespace tulvane {

/// Permissions as the test sets them; a request grants what `grantOnRequest` says.
class FakePrivacyPermissions final : public PrivacyPermissions {
public:
    [[nodiscard]] MicrophoneAccess microphone() const override
    {
        calls.append(QStringLiteral("microphone"));
        return microphoneAccess;
    }
    [[nodiscard]] bool accessibility() const override
    {
        calls.append(QStringLiteral("accessibility"));
        return accessibilityGranted;
    }
    [[nodiscard]] bool inputMonitoring() const override
    {
        calls.append(QStringLiteral("inputMonitoring"));
        return inputMonitoringGranted;
    }
    [[nodiscard]] QFuture<bool> requestMicrophone() override
    {
        calls.append(QStringLiteral("requestMicrophone"));
        m_microphoneAnswer = QPromise<bool>();
        m_microphoneAnswer.start();
        return m_microphoneAnswer.future();
    }
    void requestAccessibility() override
    {
        calls.append(QStringLiteral("requestAccessibility"));
        accessibilityGranted = accessibilityGranted || grantOnRequest;
    }
    void requestInputMonitoring() override
    {
        calls.append(QStringLiteral("requestInputMonitoring"));
        inputMonitoringGranted = inputMonitoringGranted || grantOnRequest;
    }
    [[nodiscard]] bool asksUser(Permission permission) const override
    {
        return asked == permission && (permission != Permission::accessibility || !accessibilityGranted);
    }
    [[nodiscard]] PermissionObstacle obstacle(Permission permission) const override
    {
        return obstacles.value(permission);
    }

    /// The user answers the microphone prompt.
    void answerMicrophone(bool granted)
    {
        microphoneAccess = granted ? MicrophoneAccess::authorized : MicrophoneAccess::denied;
        m_microphoneAnswer.addResult(granted);
        m_microphoneAnswer.finish();
    }

    MicrophoneAccess microphoneAccess = MicrophoneAccess::authorized;
    bool accessibilityGranted = true;
    bool inputMonitoringGranted = true;
    bool grantOnRequest = false;
    std::optional<Permission> asked; ///< of which the desktop asks the user
    QMap<Permission, PermissionObstacle> obstacles;
    /// Every read and request, oldest first.
    mutable QStringList calls;

private:
    QPromise<bool> m_microphoneAnswer;
};

} // namespace tulvane
