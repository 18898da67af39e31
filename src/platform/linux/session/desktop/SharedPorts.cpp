#include <platform/linux/atspi/Announcement.h>
#include <platform/linux/desktop/AutostartEntry.h>
#include <platform/linux/desktop/DBusScreenLock.h>
#include <platform/linux/desktop/DesktopWorkspace.h>
#include <platform/linux/desktop/PortalPermissions.h>
#include <platform/linux/desktop/shell/DesktopPresentation.h>
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

void fillWithSharedPorts(Desktop& desktop, const DesktopOptions& options)
{
    desktop.defaults = options.defaults;
    const auto microphone = std::make_shared<PulseAudioInput>();
    desktop.microphone = microphone;
    desktop.sounds = std::make_shared<PulseSounds>(microphone->server());
    desktop.permissions = std::make_shared<PortalPermissions>(
        sessionOf(options.environment)
            .permissions(options.environment,
                         [microphone] { return microphone->server()->refusesMicrophone(); }),
        std::make_unique<MicrophonePermission>(LastingBus::session(), QStringLiteral("com.dunio.Tulvane")));
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
