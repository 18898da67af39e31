#include <permissions/PermissionsService.h>

#include <QCoroFuture>
#include <QPointer>
#include <QUrl>

#include <utility>

namespace tulvane {

PermissionsService::PermissionsService(const PermissionsPorts& ports, std::optional<QString> bundleIdentifier,
                                       QObject* parent)
    : QObject(parent),
      m_ports(ports),
      m_bundleIdentifier(std::move(bundleIdentifier))
{
    refresh();
}

PermissionObstacle PermissionsService::obstacle(Permission permission) const
{
    return m_ports.permissions.obstacle(permission);
}

bool PermissionsService::asksForAccessibility() const
{
    return m_ports.permissions.asksUser(Permission::accessibility);
}

void PermissionsService::refresh()
{
    m_microphone = m_ports.permissions.microphone();
    Q_EMIT microphoneChanged(m_microphone);
    m_accessibility = m_ports.permissions.accessibility();
    Q_EMIT accessibilityChanged(m_accessibility);
    m_inputMonitoring = m_ports.permissions.inputMonitoring();
    Q_EMIT inputMonitoringChanged(m_inputMonitoring);
}

void PermissionsService::startPolling()
{
    if (!m_pollTimer)
        poll();
}

void PermissionsService::poll()
{
    m_pollTimer = m_ports.scheduler.after(pollInterval, [this] {
        poll();
        refresh();
    });
}

void PermissionsService::stopPolling()
{
    m_pollTimer.reset();
}

QCoro::Task<> PermissionsService::requestMicrophone()
{
    const QPointer<PermissionsService> self(this);
    co_await m_ports.permissions.requestMicrophone();
    if (self)
        refresh();
}

void PermissionsService::requestAccessibility()
{
    // The desktop's own question is not to be covered by its settings.
    const bool isAsked = asksForAccessibility();
    m_ports.permissions.requestAccessibility();
    refresh();
    if (!m_accessibility && !isAsked)
        openSettings(accessibilityPane);
}

void PermissionsService::requestInputMonitoring()
{
    m_ports.permissions.requestInputMonitoring();
    refresh();
    if (!m_inputMonitoring)
        openSettings(inputMonitoringPane);
}

void PermissionsService::openSettings(const QString& urlText)
{
    const QUrl url(urlText, QUrl::StrictMode);
    if (url.isValid())
        m_ports.workspace.open(url);
}

bool PermissionsService::resetPermission(Resettable kind)
{
    if (!m_bundleIdentifier)
        return false;
    const QString service =
        kind == Resettable::accessibility ? QStringLiteral("Accessibility") : QStringLiteral("ListenEvent");
    const std::optional<int> exitStatus = m_ports.processes.run(
        QStringLiteral("/usr/bin/tccutil"), {QStringLiteral("reset"), service, *m_bundleIdentifier});
    if (!exitStatus)
        return false;
    refresh();
    return exitStatus == 0;
}

} // namespace tulvane
