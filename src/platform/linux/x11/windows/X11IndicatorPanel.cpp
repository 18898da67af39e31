#include <platform/linux/x11/windows/OutlineRows.h>
#include <platform/linux/x11/windows/QtX11.h>
#include <platform/linux/x11/windows/X11IndicatorPanel.h>

#include <QWindow>

#include <xcb/shape.h>

namespace tulvane {

namespace {

void raiseNow(QWindow& window)
{
    window.raise();
    qtx11::flush();
}

} // namespace

X11IndicatorPanel::X11IndicatorPanel(std::shared_ptr<X11Connection> connection)
    : m_connection(std::move(connection))
{
}

X11IndicatorPanel::~X11IndicatorPanel()
{
    QObject::disconnect(m_visibility);
}

void X11IndicatorPanel::prepare(QWindow& window)
{
    window.setFlags(Qt::ToolTip | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint |
                    Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus | Qt::WindowTransparentForInput |
                    Qt::NoDropShadowWindowHint);
    window.create();
    const xcb_window_t id = qtx11::serverWindow(window);
    if (id == 0)
        return;
    // Compositors draw shadows under tooltips and thin them out; messages they leave alone. Those that ask
    // for neither leave alone what says that it draws its own frame.
    qtx11::setProperty(id, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM,
                       {qtx11::atom("_NET_WM_WINDOW_TYPE_NOTIFICATION")});
    qtx11::setProperty(id, "_GTK_FRAME_EXTENTS", XCB_ATOM_CARDINAL, {0, 0, 0, 0});
    if (!m_connection)
        return;
    m_watch = std::make_unique<StackingOrder>(*m_connection, [&window] { raiseNow(window); });
    m_visibility = QObject::connect(&window, &QWindow::visibleChanged, &window, [this](bool isVisible) {
        if (!isVisible)
            m_watch->end();
    });
}

void X11IndicatorPanel::raise(QWindow& window)
{
    raiseNow(window);
    const xcb_window_t id = qtx11::serverWindow(window);
    if (m_watch && id != 0 && window.isVisible())
        m_watch->begin(id);
}

bool X11IndicatorPanel::isBlended() const
{
    if (!m_connection || m_connection->isBroken() || !qtx11::connection())
        return false;
    // Its owner blends the screen's windows.
    const auto selection = m_connection->atom(QStringLiteral("_NET_WM_CM_S%1").arg(m_connection->screen()));
    const auto answer = xcbReply(m_connection->connection(), xcb_get_selection_owner_reply,
                                 xcb_get_selection_owner(m_connection->connection(), selection));
    return answer && answer->owner != noWindow;
}

void X11IndicatorPanel::setOpacity(QWindow& window, double opacity)
{
    window.setOpacity(opacity);
    qtx11::flush();
}

void X11IndicatorPanel::cut(QWindow& window, const std::optional<PanelOutline>& outline)
{
    const xcb_window_t id = qtx11::serverWindow(window);
    const double scale = window.devicePixelRatio();
    if (id == 0 || (outline == m_outline && scale == m_scale))
        return;
    m_outline = outline;
    m_scale = scale;
    xcb_connection_t* const server = qtx11::connection();
    if (!outline) {
        xcb_shape_mask(server, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, id, 0, 0, XCB_PIXMAP_NONE);
        xcb_flush(server);
        return;
    }
    const auto rows = outlineRows(*outline, scale);
    xcb_shape_rectangles(server, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, XCB_CLIP_ORDERING_UNSORTED, id, 0,
                         0, static_cast<quint32>(rows.size()), rows.data());
    xcb_flush(server);
}

} // namespace tulvane
