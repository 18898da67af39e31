#include <platform/linux/atspi/Announcement.h>
#include <platform/linux/desktop/AutostartEntry.h>
#include <platform/linux/desktop/DBusScreenLock.h>
#include <platform/linux/desktop/DesktopWorkspace.h>
#include <platform/linux/desktop/PortalPermissions.h>
#include <platform/linux/desktop/shell/DesktopPresentation.h>
#include <platform/linux/portal/AskedPermissions.h>
#include <platform/linux/process/ChildProcesses.h>
#include <platform/linux/process/ProcessMemory.h>
#include <platform/linux/pulse/PulseAudioInput.h>
#include <platform/linux/pulse/PulseServer.h>
#include <platform/linux/pulse/PulseSounds.h>
#include <platform/linux/session/Session.h>
#include <platform/linux/session/desktop/JoinedScreenLock.h>
#include <platform/linux/session/desktop/SharedPorts.h>
#include <platform/linux/transfers/DetachedTransfers.h>

namespace tulvane {

namespace {

std::shared_ptr<PrivacyPermissions> permissionsOf(const DesktopOptions& options, const DesktopParts& parts,
                                                  const std::shared_ptr<PulseAudioInput>& microphone)
{
    const Session& session = sessionOf(options.environment);
    auto permissions = session.permissions(
        options.environment, [microphone] { return microphone->server()->refusesMicrophone(); });
    if (parts.remoteDesktop)
        permissions = std::make_unique<AskedPermissions>(std::move(permissions), parts.remoteDesktop,
                                                         session.kind == SessionKind::gnome);
    return std::make_shared<PortalPermissions>(
        std::move(permissions),
        std::make_unique<MicrophonePermission>(LastingBus::session(), QStringLiteral("com.dunio.Tulvane")));
}

} // namespace

void fillWithSharedPorts(Desktop& desktop, const DesktopOptions& options, const DesktopParts& parts)
{
    desktop.defaults = options.defaults;
    const auto microphone = std::make_shared<PulseAudioInput>();
    desktop.microphone = microphone;
    desktop.sounds = std::make_shared<PulseSounds>(microphone->server());
    desktop.permissions = permissionsOf(options, parts, microphone);
    desktop.processes = std::make_shared<ChildProcesses>();
    desktop.workspace = std::make_shared<DesktopWorkspace>(
        desktopName(options.environment).split(u':', Qt::SkipEmptyParts), options.helpPage);
    desktop.transfers = std::make_shared<DetachedTransfers>(
        DetachedTransfers::Options{.helper = options.transferHelper, .folder = options.transferFolder});
    desktop.memory = std::make_shared<ProcessMemory>();
    desktop.loginItem = std::make_shared<AutostartEntry>(AutostartEntry::standardFolder(), options.program);
    std::shared_ptr<ScreenLock> lock = std::make_shared<DBusScreenLock>(
        DBusScreenLock::Options{.session = options.environment.value(QStringLiteral("XDG_SESSION_ID"))});
    if (desktop.screenLock)
        lock = std::make_shared<JoinedScreenLock>(desktop.screenLock, lock);
    desktop.screenLock = std::move(lock);
    desktop.announce = [](const QString& text) { announce(text); };
    if (!desktop.presentation)
        desktop.presentation = std::make_shared<DesktopPresentation>();
}

} // namespace tulvane
