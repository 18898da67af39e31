#include <platform/linux/x11/connection/X11Connection.h>

#include <QPointer>

namespace tulvane {

std::unique_ptr<X11Connection> X11Connection::open(const QString& display)
{
    const QByteArray name = display.toLocal8Bit();
    xcb_connection_t* const connection = xcb_connect(name.isEmpty() ? nullptr : name.constData(), nullptr);
    if (xcb_connection_has_error(connection) != 0) {
        xcb_disconnect(connection);
        return nullptr;
    }
    return std::unique_ptr<X11Connection>(new X11Connection(connection));
}

X11Connection::X11Connection(xcb_connection_t* connection)
    : m_connection(connection),
      m_notifier(
          std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection), QSocketNotifier::Read))
{
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &X11Connection::drain);
}

X11Connection::~X11Connection()
{
    m_notifier.reset();
    xcb_disconnect(m_connection);
}

std::vector<xcb_window_t> X11Connection::roots() const
{
    std::vector<xcb_window_t> roots;
    for (auto screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)); screen.rem > 0;
         xcb_screen_next(&screen))
        roots.push_back(screen.data->root);
    return roots;
}

void X11Connection::ringBell()
{
    constexpr qint8 asSet = 0; // per cent above or below what the user has set
    xcb_bell(m_connection, asSet);
    xcb_flush(m_connection);
}

void X11Connection::handleEventsSoon()
{
    if (m_isDrainDue)
        return;
    m_isDrainDue = true;
    QMetaObject::invokeMethod(this, &X11Connection::drain, Qt::QueuedConnection);
}

void X11Connection::drain()
{
    m_isDrainDue = false;
    const QPointer<X11Connection> self(this);
    while (isAlive()) {
        const XcbReply<xcb_generic_event_t> event(xcb_poll_for_event(m_connection));
        if (!event)
            break;
        // From a copy: the handler may replace itself, or destroy this connection.
        const EventHandler handler = m_handler;
        if (handler)
            handler(*event);
        if (!self)
            return;
    }
    Q_EMIT drained();
    if (self)
        noticeEnd();
}

void X11Connection::noticeEnd()
{
    if (!m_isAlive || xcb_connection_has_error(m_connection) == 0)
        return;
    m_isAlive = false;
    m_notifier->setEnabled(false);
    Q_EMIT closed();
}

} // namespace tulvane
