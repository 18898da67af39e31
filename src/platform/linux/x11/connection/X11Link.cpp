#include <platform/linux/x11/connection/X11Link.h>

#include <QAbstractEventDispatcher>

#include <xkbcommon/xkbcommon-x11.h>

#include <algorithm>

namespace tulvane {

namespace {

constexpr std::uint8_t sentFlag = 0x80; // set in the type of an event that another client sent

const auto timeProperty = QStringLiteral("_TULVANE_TIME");

} // namespace

std::unique_ptr<X11Link> X11Link::open(const QByteArray& display)
{
    xcb_connection_t* connection = xcb_connect(display.constData(), nullptr);
    if (xcb_connection_has_error(connection) != 0) {
        xcb_disconnect(connection);
        return nullptr;
    }
    return std::unique_ptr<X11Link>(new X11Link(connection));
}

X11Link::X11Link(xcb_connection_t* connection)
    : m_connection(connection),
      m_root(xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root),
      m_readable(xcb_get_file_descriptor(connection), QSocketNotifier::Read)
{
    // Before anything is asked about the keyboard: only then the server tells of layouts and their groups.
    xkb_x11_setup_xkb_extension(connection, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr, nullptr);
    connect(&m_readable, &QSocketNotifier::activated, this, [this] { handleEvents(Reading::socket); });
    // A reply that was waited for may have brought events with it: the socket is quiet then, and they lie
    // here.
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this, [this] {
        handleEvents(Reading::queued);
        flush();
    });
}

X11Link::~X11Link()
{
    m_readable.setEnabled(false);
    xcb_disconnect(m_connection);
}

bool X11Link::isBroken() const
{
    return xcb_connection_has_error(m_connection) != 0;
}

xcb_window_t X11Link::makeHiddenWindow()
{
    const xcb_window_t window = xcb_generate_id(m_connection);
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, window, m_root, -10, -10, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    return window;
}

xcb_atom_t X11Link::atom(const QString& name)
{
    const auto known = m_atoms.constFind(name);
    if (known != m_atoms.cend())
        return *known;
    const QByteArray bytes = name.toUtf8();
    const auto cookie =
        xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(bytes.size()), bytes.constData());
    const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection, cookie, nullptr));
    if (!reply)
        return noAtom;
    m_names.insert(reply->atom, name);
    m_atoms.insert(name, reply->atom);
    return reply->atom;
}

QString X11Link::atomName(xcb_atom_t atom)
{
    return atomNames({atom}).first();
}

QStringList X11Link::atomNames(const QList<xcb_atom_t>& atoms)
{
    std::vector<std::pair<xcb_atom_t, xcb_get_atom_name_cookie_t>> asked;
    for (const xcb_atom_t atom : atoms) {
        if (!m_names.contains(atom))
            asked.emplace_back(atom, xcb_get_atom_name(m_connection, atom));
    }
    for (const auto& [atom, cookie] : asked) {
        const XcbReply<xcb_get_atom_name_reply_t> reply(
            xcb_get_atom_name_reply(m_connection, cookie, nullptr));
        if (!reply)
            continue;
        const QString name = QString::fromUtf8(xcb_get_atom_name_name(reply.get()),
                                               xcb_get_atom_name_name_length(reply.get()));
        m_names.insert(atom, name);
        m_atoms.insert(name, atom);
    }
    QStringList names;
    std::ranges::transform(atoms, std::back_inserter(names),
                           [&](xcb_atom_t atom) { return m_names.value(atom); });
    return names;
}

void X11Link::catchUp()
{
    const auto cookie = xcb_get_input_focus(m_connection);
    const XcbReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(m_connection, cookie, nullptr));
    handleEvents(Reading::queued);
}

xcb_timestamp_t X11Link::serverTime(xcb_window_t window)
{
    xcb_change_property(m_connection, XCB_PROP_MODE_APPEND, window, atom(timeProperty), XCB_ATOM_STRING, 8, 0,
                        nullptr);
    catchUp();
    return m_propertyTime;
}

void X11Link::handleEvents(Reading reading)
{
    const auto next = reading == Reading::socket ? &xcb_poll_for_event : &xcb_poll_for_queued_event;
    while (const XcbReply<xcb_generic_event_t> event{next(m_connection)}) {
        event->response_type &= static_cast<std::uint8_t>(~sentFlag);
        // Type 0 is an error: of a window that has gone meanwhile, for instance. There is nobody to tell.
        if (event->response_type != 0)
            tell(*event);
    }
    if (isBroken())
        m_readable.setEnabled(false);
    flush();
}

void X11Link::tell(const xcb_generic_event_t& event)
{
    if (event.response_type == XCB_PROPERTY_NOTIFY) {
        const auto& notice = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (notice.atom == atom(timeProperty))
            m_propertyTime = notice.time;
    }
    const auto listeners = m_listeners;
    for (Listener* listener : listeners) {
        if (std::ranges::find(m_listeners, listener) != m_listeners.end())
            listener->handle(event);
    }
}

} // namespace tulvane
