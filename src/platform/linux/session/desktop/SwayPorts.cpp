#include <platform/linux/session/desktop/SwayPorts.h>
#include <platform/linux/session/desktop/WaylandPorts.h>
#include <platform/linux/sway/SwayFront.h>
#include <platform/linux/sway/SwayHotkeys.h>
#include <platform/linux/sway/SwayLock.h>
#include <platform/linux/wayland/fields/InputMethodElements.h>
#include <platform/linux/wayland/keyboard/VirtualKeyboard.h>
#include <platform/linux/wayland/keyboard/WaylandKeymap.h>

namespace tulvane {

namespace {

/// Of a desktop that does not tell which program is in front.
class UnknownFront final : public FrontPrograms {
public:
    [[nodiscard]] FrontProgram current() override { return {}; }
};

SwayHotkeys::Layout layoutOf(const std::shared_ptr<WaylandKeymap>& keymap)
{
    return {.labelOf = [keymap](const VirtualKey& key) { return keymap->label(key); },
            .keyOf = [keymap](const QString& keysym) { return keymap->keyForKeysym(keysym); },
            .combinationOf = [keymap](const NativeKey& key) { return keymap->combination(key); },
            .setChangeHandler =
                [keymap](const std::function<void()>& handler) {
                    QObject::disconnect(keymap.get(), &WaylandKeymap::changed, nullptr, nullptr);
                    if (handler)
                        QObject::connect(keymap.get(), &WaylandKeymap::changed, keymap.get(), handler);
                }};
}

} // namespace

Result<void, Obstacle> fillWithSwayPorts(Desktop& desktop, const DesktopOptions& options,
                                         const DesktopParts& /*parts*/)
{
    const QByteArray socket = WaylandConnection::socketOf(options.environment);
    const std::shared_ptr<WaylandConnection> connection = WaylandConnection::open(socket);
    if (!connection)
        return failure(compositorGone());
    const std::shared_ptr<SwayConnection> sway =
        SwayConnection::open(SwayConnection::socketOf(options.environment));
    std::shared_ptr<FrontPrograms> front = std::make_shared<UnknownFront>();
    if (sway) {
        front = std::make_shared<SwayFront>(sway);
        desktop.screenLock = std::make_shared<SwayLock>(
            sway, options.environment.value(QStringLiteral("PATH")).split(u':', Qt::SkipEmptyParts));
        desktop.hotkeys =
            std::make_shared<SwayHotkeys>(sway, layoutOf(std::make_shared<WaylandKeymap>(connection)));
    }
    const auto text = WaylandText::open(
        socket,
        [&](DataControlPasteboards& boards) {
            return keysByDevice(VirtualKeyboard::make(connection), boards);
        },
        front, options.terminals);
    fillWithWaylandText(desktop, text, front);
    if (desktop.elements)
        desktop.elements = std::make_shared<InputMethodElements>(desktop.elements, connection,
                                                                 [front] { return !front->current().isX11; });
    fillWithWaylandWindows(desktop, options, connection);
    return {};
}

} // namespace tulvane
