#include <platform/linux/x11/windows/OutlineRows.h>
#include <platform/linux/x11/windows/X11IndicatorPanel.h>
#include <platform/linux/x11/windows/QtX11.h>

#include <QWindow>

#include <xcb/shape.h>

#include <cstdlib>

namespace tulvane {

namespace {

int screenOf(const QByteArray& display)
{
    char* host = nullptr;
    int number = 0;
    int screen = 0;
    const int parsed =
        xcb_parse_display(display.isEmpty() ? nullptr : display.constData(), &host, &number, &screen);
    std::free(host); // NOLINT(cppcoreguidelines-no-malloc)
    return parsed != 0 ? screen : 0;
}

void raiseNow(QWindow& window)
{
    window.raise();
    qtx11::flush();
}

} // namespace

X11IndicatorPanel::X11IndicatorPanel(const QByteArray& display)
    : m_connection(X11Connection::open(QString::fromLocal8Bit(display))),
      m_compositorsSelection("_NET_WM_CM_S" + QByteArray::number(screenOf(display)))
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
    if (!m_connection || !m_connection->isAlive() || !qtx11::connection())
        return false;
    xcb_connection_t* const server = m_connection->xcb();
    const auto name = xcb_intern_atom(server, 0, static_cast<quint16>(m_compositorsSelection.size()),
                                      m_compositorsSelection.constData());
    const XcbReply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(server, name, nullptr));
    if (!atom)
        return false;
    const auto question = xcb_get_selection_owner(server, atom->atom);
    const XcbReply<xcb_get_selection_owner_reply_t> answer(
        xcb_get_selection_owner_reply(server, question, nullptr));
    m_connection->handleEventsSoon();
    return answer && answer->owner != xcb_window_t{XCB_WINDOW_NONE};
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
