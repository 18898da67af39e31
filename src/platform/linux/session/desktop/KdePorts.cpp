#include <platform/linux/session/desktop/KdePorts.h>
#include <platform/linux/session/desktop/WaylandPorts.h>
#include <platform/linux/wayland/keyboard/FakeInput.h>

namespace tulvane {

namespace {

class UnknownKdeFront final : public FrontPrograms {
public:
    [[nodiscard]] FrontProgram current() override { return {}; }
};

} // namespace

Result<void, Obstacle> fillWithKdePorts(Desktop& desktop, const DesktopOptions& options,
                                        Scheduler& /*scheduler*/)
{
    const QByteArray socket = WaylandConnection::socketOf(options.environment);
    const std::shared_ptr<WaylandConnection> connection = WaylandConnection::open(socket);
    if (!connection)
        return failure(compositorGone());
    const std::shared_ptr<FrontPrograms> front = std::make_shared<UnknownKdeFront>();
    fillWithWaylandText(
        desktop, WaylandText::open(socket, FakeInput::make(connection), front, options.terminals), front);
    fillWithWaylandWindows(desktop, options, connection);
    return {};
}

} // namespace tulvane
