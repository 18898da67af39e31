#include <platform/linux/x11/connection/X11Connection.h>

#include <QAbstractEventDispatcher>

#include <xkbcommon/xkbcommon-x11.h>

#include <algorithm>
#include <utility>

namespace tulvane {

namespace {

constexpr std::uint8_t sentFlag = 0x80; // set in the type of an event that another client sent

const auto timeProperty = QStringLiteral("_TULVANE_TIME");

} // namespace

X11Connection::Token::Token(X11Connection& connection, std::shared_ptr<EventHandler> handler)
    : m_connection(&connection),
      m_handler(std::move(handler))
{
}

X11Connection::Token::~Token()
{
    if (m_connection)
        std::erase(m_connection->m_handlers, m_handler);
}

std::unique_ptr<X11Connection> X11Connection::open(const QByteArray& display)
{
    int screen = 0;
    xcb_connection_t* const connection = xcb_connect(display.constData(), &screen);
    if (xcb_connection_has_error(connection) != 0) {
        xcb_disconnect(connection);
        return nullptr;
    }
    return std::unique_ptr<X11Connection>(new X11Connection(connection, screen));
}

X11Connection::X11Connection(xcb_connection_t* connection, int screen)
    : m_connection(connection),
      m_screen(screen),
      m_readable(xcb_get_file_descriptor(connection), QSocketNotifier::Read),
      m_atoms(connection)
{
    // Before anything is asked about the keyboard: only then the server reports layouts and their groups.
    quint8 firstEvent = 0;
    if (xkb_x11_setup_xkb_extension(connection, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                    XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &firstEvent,
                                    nullptr) != 0)
        m_keyboardEvent = firstEvent;
    connect(&m_readable, &QSocketNotifier::activated, this, &X11Connection::readSocket);
    // A reply that was waited for may have brought events with it: the socket is quiet then, and they lie
    // here.
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            &X11Connection::collect);
}

X11Connection::~X11Connection()
{
    m_readable.setEnabled(false);
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

std::unique_ptr<X11Connection::Token> X11Connection::listen(EventHandler handler)
{
    m_handlers.push_back(std::make_shared<EventHandler>(std::move(handler)));
    return std::make_unique<Token>(*this, m_handlers.back());
}

xcb_window_t X11Connection::makeHiddenWindow()
{
    const xcb_window_t window = xcb_generate_id(m_connection);
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, window, root(), -10, -10, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    return window;
}

void X11Connection::ringBell()
{
    constexpr qint8 asSet = 0; // per cent above or below what the user has set
    xcb_bell(m_connection, asSet);
    flush();
}

void X11Connection::catchUp()
{
    waitForServer(m_connection);
    collect();
    drain();
}

xcb_timestamp_t X11Connection::serverTime(xcb_window_t window)
{
    xcb_change_property(m_connection, XCB_PROP_MODE_APPEND, window, atom(timeProperty), XCB_ATOM_STRING, 8, 0,
                        nullptr);
    catchUp();
    return m_propertyTime;
}

void X11Connection::readSocket()
{
    collect();
    while (XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection)})
        m_pending.push_back(std::move(event));
    drain();
}

/// Takes over what the library has read already. Handled is it from the event loop, where nothing is under
/// way.
void X11Connection::collect()
{
    // Sent first: where the socket cannot take it all at once, the library reads from it in between.
    flush();
    while (XcbReply<xcb_generic_event_t> event{xcb_poll_for_queued_event(m_connection)})
        m_pending.push_back(std::move(event));
    const bool isDue = !m_pending.empty() || (isBroken() && !m_hasEnded);
    if (isDue && !std::exchange(m_isDrainDue, true))
        QMetaObject::invokeMethod(this, &X11Connection::drain, Qt::QueuedConnection);
}

void X11Connection::drain()
{
    m_isDrainDue = false;
    const QPointer<X11Connection> self(this);
    while (!m_pending.empty()) {
        const XcbReply<xcb_generic_event_t> event = std::move(m_pending.front());
        m_pending.pop_front();
        dispatch(*event);
        if (!self)
            return;
    }
    Q_EMIT drained();
    if (!self)
        return;
    // The handlers, too, may have waited for replies.
    collect();
    noticeEnd();
}

void X11Connection::dispatch(xcb_generic_event_t& event)
{
    event.response_type &= static_cast<std::uint8_t>(~sentFlag);
    // Type 0 is an error: of a window that has gone meanwhile, for instance. No caller waits for it.
    if (event.response_type == 0)
        return;
    if (event.response_type == XCB_PROPERTY_NOTIFY) {
        const auto& notice = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (notice.atom == atom(timeProperty))
            m_propertyTime = notice.time;
    }
    // From a copy: a handler may add and drop others, or destroy this connection.
    const QPointer<X11Connection> self(this);
    const auto handlers = m_handlers;
    for (const auto& handler : handlers) {
        if (std::ranges::find(m_handlers, handler) != m_handlers.end())
            (*handler)(event);
        if (!self)
            return;
    }
}

void X11Connection::noticeEnd()
{
    if (!isBroken() || std::exchange(m_hasEnded, true))
        return;
    m_readable.setEnabled(false);
    // Not from within a call that was only catching up.
    QMetaObject::invokeMethod(this, &X11Connection::closed, Qt::QueuedConnection);
}

} // namespace tulvane
