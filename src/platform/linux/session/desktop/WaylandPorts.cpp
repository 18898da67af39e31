#include <platform/linux/atspi/AtspiFocusedElements.h>
#include <platform/linux/desktop/shell/DesktopPresentation.h>
#include <platform/linux/desktop/shell/TrayStatusItem.h>
#include <platform/linux/session/Session.h>
#include <platform/linux/session/desktop/WaylandPorts.h>
#include <platform/linux/wayland/windows/LayerShellPanel.h>

namespace tulvane {

void fillWithWaylandText(Desktop& desktop, const std::shared_ptr<WaylandText>& text,
                         const std::shared_ptr<FrontPrograms>& front)
{
    if (!text)
        return;
    desktop.pasteboards = std::shared_ptr<Pasteboards>(text, &text->pasteboards());
    if (text->keys())
        desktop.keys = std::shared_ptr<KeyPosting>(text, text->keys());
    desktop.elements = std::make_shared<AtspiFocusedElements>(
        AtspiFocusedElements::usersSessionBus(), [front]() -> std::optional<quint32> {
            const quint32 process = front->current().process;
            return process != 0 ? std::optional(process) : std::nullopt;
        });
}

void fillWithWaylandWindows(Desktop& desktop, const DesktopOptions& options,
                            const std::shared_ptr<WaylandConnection>& connection)
{
    desktop.presentation = std::make_shared<DesktopPresentation>();
    desktop.statusItem = std::make_shared<TrayStatusItem>(
        options.symbols, desktopName(options.environment).split(u':', Qt::SkipEmptyParts), nullptr);
    if (connection->offers("zwlr_layer_shell_v1"))
        desktop.makeIndicatorPanel = [connection] { return LayerShellPanel::make(connection); };
    desktop.setEndHandler = [connection](const std::function<void()>& ended) {
        QObject::connect(connection.get(), &WaylandConnection::closed, connection.get(), ended);
    };
}

Obstacle compositorGone()
{
    return {QStringLiteral("The Wayland compositor does not answer."), {}};
}

} // namespace tulvane
