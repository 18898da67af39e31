#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/kde/KGlobalAccelGrab.h>
#include <platform/linux/kde/KGlobalAccelHotKeys.h>
#include <platform/linux/kde/KWinFront.h>
#include <platform/linux/keys/DesktopShortcuts.h>
#include <platform/linux/portal/PortalRemoteDesktop.h>
#include <platform/linux/session/Session.h>
#include <platform/linux/session/desktop/KdePorts.h>
#include <platform/linux/session/desktop/WaylandPorts.h>
#include <platform/linux/wayland/keyboard/FakeInput.h>

namespace tulvane {

namespace {

/// The window in front as KWin tells it.
class KdeFront final : public FrontPrograms {
public:
    explicit KdeFront(std::shared_ptr<LastingBus> bus) : m_kwin(std::move(bus)) {}

    [[nodiscard]] FrontProgram current() override
    {
        const KWinWindow& window = m_kwin.current();
        if (window.id.isEmpty())
            return {};
        // KWin names a window by a text; a number that is never 0 serves to tell two apart.
        return {.window = qHash(window.id) | 1U,
                .classes = {window.resourceClass},
                .process = window.process,
                .isX11 = window.isX11};
    }

private:
    KWinFront m_kwin;
};

} // namespace

Result<void, Obstacle> fillWithKdePorts(Desktop& desktop, const DesktopOptions& options,
                                        const DesktopParts& parts)
{
    const QByteArray socket = WaylandConnection::socketOf(options.environment);
    const std::shared_ptr<WaylandConnection> connection = WaylandConnection::open(socket);
    if (!connection)
        return failure(compositorGone());
    const std::shared_ptr<LastingBus> bus = LastingBus::session();
    const std::shared_ptr<FrontPrograms> front = std::make_shared<KdeFront>(bus);
    desktop.hotkeys = std::make_shared<KGlobalAccelHotKeys>(KGlobalAccelHotKeys::Options{
        .bus = bus, .configHome = DesktopFolders::fromEnvironment(options.environment).configHome});
    desktop.keyboard = std::make_shared<KGlobalAccelGrab>(bus, options.environment);
    const auto text = WaylandText::open(
        socket,
        [&](DataControlPasteboards& boards) {
            return parts.remoteDesktop ? keysByRemoteDesktop(parts.remoteDesktop, boards)
                                       : keysByDevice(FakeInput::make(connection), boards);
        },
        front, options.terminals);
    fillWithWaylandText(desktop, text, front);
    fillWithWaylandWindows(desktop, options, connection);
    return {};
}

} // namespace tulvane
