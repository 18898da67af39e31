#include <platform/linux/session/DisplayCheck.h>

#include <xcb/xcb.h>

namespace tulvane {

std::optional<Obstacle> displayObstacle(const QByteArray& display)
{
    if (display.isEmpty())
        return Obstacle{
            QStringLiteral("There is no X server to work on: DISPLAY is not set."),
            QStringLiteral("Start Tulvane from your desktop session; a Wayland desktop needs XWayland.")};
    xcb_connection_t* const connection = xcb_connect(display.constData(), nullptr);
    const bool answers = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    if (answers)
        return std::nullopt;
    return Obstacle{QStringLiteral("The X server %1 does not answer.").arg(QString::fromLocal8Bit(display)),
                    {}};
}

} // namespace tulvane
