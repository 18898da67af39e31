#pragma once

#include <base/Scheduler.h>
#include <ports/PrivacyPermissions.h>
#include <ports/Processes.h>
#include <ports/Workspace.h>

#include <QCoroTask>
#include <QLatin1StringView>
#include <QObject>

#include <chrono>
#include <memory>
#include <optional>

namespace tulvane {

/// What the service works with; all of it must outlive the service.
struct PermissionsPorts {
    PrivacyPermissions& permissions;
    Processes& processes;
    Workspace& workspace;
    Scheduler& scheduler;
};

/// Whether the three privacy permissions are granted, published; asks for them, shows where they are given,
/// and has a stale decision forgotten. Main thread.
///
/// The desktop does not tell of a change: the state is read at creation, after every request, and once a
/// second while polling is on, which the pages that show it switch on and off.
class PermissionsService final : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds pollInterval{1000};
    static constexpr QLatin1StringView microphonePane{
        "x-apple.systempreferences:com.apple.preference.security?Privacy_Microphone"};
    static constexpr QLatin1StringView accessibilityPane{
        "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"};
    static constexpr QLatin1StringView inputMonitoringPane{
        "x-apple.systempreferences:com.apple.preference.security?Privacy_ListenEvent"};

    /// What `resetPermission` can have forgotten.
    enum class Resettable { accessibility, inputMonitoring };

    /// `bundleIdentifier` is the name under which the desktop knows this program, if it has one.
    explicit PermissionsService(const PermissionsPorts& ports, std::optional<QString> bundleIdentifier,
                                QObject* parent = nullptr);

    [[nodiscard]] MicrophoneAccess microphone() const { return m_microphone; }
    [[nodiscard]] bool accessibility() const { return m_accessibility; }
    [[nodiscard]] bool inputMonitoring() const { return m_inputMonitoring; }
    /// Why the last answer was "no", in words for the user.
    [[nodiscard]] PermissionObstacle obstacle(Permission permission) const;

    /// Whether the desktop asks the user for it in a dialog, when it is requested.
    [[nodiscard]] bool asksForAccessibility() const;

    /// Reads the three again, in their order. Each is published, changed or not.
    void refresh();

    /// Refreshes once a second from now on. Starting twice is starting once.
    void startPolling();
    void stopPolling();
    [[nodiscard]] bool isPolling() const { return m_pollTimer != nullptr; }

    /// Asks, waits for the user's answer, and refreshes.
    QCoro::Task<> requestMicrophone();
    /// Asks, refreshes, and opens the settings pane when the permission is still missing; not where the
    /// desktop asks the user in a dialog.
    void requestAccessibility();
    void requestInputMonitoring();

    /// Opens a settings pane; a text that is no URL is ignored.
    void openSettings(const QString& urlText);

    /// Has the system forget its stored decision, and refreshes. Blocks until that is done. True exactly when
    /// it succeeded; without a bundle identifier nothing is run.
    bool resetPermission(Resettable kind);

Q_SIGNALS:
    void microphoneChanged(tulvane::MicrophoneAccess access);
    void accessibilityChanged(bool granted);
    void inputMonitoringChanged(bool granted);

private:
    void poll();

    PermissionsPorts m_ports;
    std::optional<QString> m_bundleIdentifier;
    MicrophoneAccess m_microphone = MicrophoneAccess::notDetermined;
    bool m_accessibility = false;
    bool m_inputMonitoring = false;
    std::unique_ptr<Scheduler::Token> m_pollTimer;
};

} // namespace tulvane
