#include "X11Peers.h"

#include <support/Await.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <stdexcept>

namespace tulvane::test {

namespace {

std::unique_ptr<X11Connection> opened(const QString& display)
{
    auto link = X11Connection::open(display.toLocal8Bit());
    if (!link)
        throw std::runtime_error("no display");
    return link;
}

} // namespace

X11Peer::X11Peer(const QString& display, const QByteArray& windowClass)
    : m_link(opened(display)),
      m_window(xcb_generate_id(m_link->connection()))
{
    m_listening = m_link->listen([this](const xcb_generic_event_t& event) { handle(event); });
    const std::uint32_t mask = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE |
                               XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_FOCUS_CHANGE |
                               XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_connection_t* const connection = m_link->connection();
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, m_window, m_link->root(), 0, 0, 200, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    const QByteArray classes = windowClass.toLower() + '\0' + windowClass + '\0';
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(classes.size()), classes.constData());
    xcb_map_window(connection, m_window);
    m_link->flush();
    if (!waitUntil([&] { return m_visible; }))
        throw std::runtime_error("the peer's window did not appear");
}

void X11Peer::takeFocus()
{
    m_focused = false;
    // From another window of its own first, so that there is a change to be notified of.
    xcb_set_input_focus(m_link->connection(), XCB_INPUT_FOCUS_NONE, XCB_INPUT_FOCUS_NONE, XCB_CURRENT_TIME);
    xcb_set_input_focus(m_link->connection(), XCB_INPUT_FOCUS_NONE, m_window, XCB_CURRENT_TIME);
    m_link->flush();
    if (!waitUntil([&] { return m_focused; }))
        throw std::runtime_error("the peer's window did not get the focus");
}

SelectionReader::Outcome X11Peer::read(const QString& selection)
{
    std::optional<SelectionReader::Outcome> outcome;
    SelectionReader read(*m_link, m_scheduler, m_link->makeHiddenWindow(), m_link->atom(selection),
                         [&](const SelectionReader::Outcome& answer) { outcome = answer; });
    read.begin();
    if (!waitUntil([&] { return outcome.has_value(); }))
        throw std::runtime_error("the selection was not read in time");
    return *outcome;
}

std::optional<QByteArray> X11Peer::readTarget(const QString& target, const QString& selection)
{
    xcb_connection_t* const connection = m_link->connection();
    const xcb_window_t reader = m_link->makeHiddenWindow();
    const xcb_atom_t property = m_link->atom(QStringLiteral("PEER_DATA"));
    m_noticed.reset();
    xcb_convert_selection(connection, reader, m_link->atom(selection), m_link->atom(target), property,
                          XCB_CURRENT_TIME);
    m_link->flush();
    if (!waitUntil([&] { return m_noticed.has_value(); }))
        throw std::runtime_error("the target was not answered in time");
    if (*m_noticed == noAtom)
        return std::nullopt;
    const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection, xcb_get_property(connection, 1, reader, property, XCB_ATOM_ANY, 0, 0x1fffffff), nullptr));
    return QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                      xcb_get_property_value_length(reply.get()));
}

void X11Peer::handle(const xcb_generic_event_t& event)
{
    switch (event.response_type) {
    case XCB_EXPOSE:
        m_visible = true;
        break;
    case XCB_FOCUS_IN:
        m_focused = true;
        break;
    case XCB_KEY_PRESS:
    case XCB_KEY_RELEASE: {
        const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(event);
        m_keys.append({event.response_type == XCB_KEY_PRESS, key.detail, key.state});
        break;
    }
    case XCB_SELECTION_NOTIFY:
        m_noticed = reinterpret_cast<const xcb_selection_notify_event_t&>(event).property;
        break;
    default:
        break;
    }
}

ScriptedOwner::Target ScriptedOwner::Target::refusing()
{
    Target target;
    target.refused = true;
    return target;
}

ScriptedOwner::Target ScriptedOwner::Target::silent()
{
    Target target;
    target.ignored = true;
    return target;
}

ScriptedOwner::Target ScriptedOwner::Target::inPieces(const QByteArray& data, int pieces, int stopsAfter)
{
    Target target(data);
    target.pieces = pieces;
    target.stopsAfter = stopsAfter;
    return target;
}

ScriptedOwner::ScriptedOwner(const QString& display, const QString& selection)
    : m_link(opened(display)),
      m_window(m_link->makeHiddenWindow()),
      m_selection(m_link->atom(selection))
{
    m_listening = m_link->listen([this](const xcb_generic_event_t& event) { handle(event); });
}

void ScriptedOwner::own()
{
    xcb_set_selection_owner(m_link->connection(), m_window, m_selection, m_link->serverTime(m_window));
    m_link->catchUp();
}

void ScriptedOwner::ownAfter(xcb_timestamp_t time)
{
    while (m_link->serverTime(m_window) <= time) {
    }
    own();
}

void ScriptedOwner::handle(const xcb_generic_event_t& event)
{
    if (event.response_type == XCB_SELECTION_REQUEST) {
        answer(reinterpret_cast<const xcb_selection_request_event_t&>(event));
    } else if (event.response_type == XCB_PROPERTY_NOTIFY && m_sending) {
        const auto& notice = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (notice.state == XCB_PROPERTY_DELETE && notice.window == m_sending->reader &&
            notice.atom == m_sending->property)
            sendPiece();
    }
}

void ScriptedOwner::answer(const xcb_selection_request_event_t& request)
{
    const QString name = m_link->atomName(request.target);
    m_asked.append(name);
    if (onRequest)
        onRequest(name);
    const auto found = std::ranges::find(m_targets, name, &std::pair<QString, Target>::first);
    const bool isList = name == u"TARGETS" && found == m_targets.end();
    const bool known = isList ? m_namesTargets : found != m_targets.end() && !found->second.refused;
    if (!isList && known && found->second.ignored)
        return;
    if (isList && known)
        writeTargets(request);
    else if (known)
        write(request, found->second);
    m_link->flush();
    notify(request, known ? request.property : noAtom);
}

void ScriptedOwner::write(const xcb_selection_request_event_t& request, const Target& target)
{
    xcb_connection_t* const connection = m_link->connection();
    const xcb_atom_t type = target.type.isEmpty() ? request.target : m_link->atom(target.type);
    if (target.pieces == 0) {
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, request.requestor, request.property, type,
                            static_cast<std::uint8_t>(target.format),
                            static_cast<std::uint32_t>(target.bytes.size() / (target.format / 8)),
                            target.bytes.constData());
        return;
    }
    const std::uint32_t watched = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection, request.requestor, XCB_CW_EVENT_MASK, &watched);
    m_sending = Sending{request.requestor, request.property, target, type, 0};
    const auto size = static_cast<std::uint32_t>(target.bytes.size());
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, request.requestor, request.property,
                        m_link->atom(QStringLiteral("INCR")), 32, 1, &size);
}

void ScriptedOwner::notify(const xcb_selection_request_event_t& request, xcb_atom_t property)
{
    xcb_selection_notify_event_t notice{};
    notice.response_type = XCB_SELECTION_NOTIFY;
    notice.time = request.time;
    notice.requestor = request.requestor;
    notice.selection = request.selection;
    notice.target = request.target;
    notice.property = property;
    std::array<char, 32> bytes{};
    std::memcpy(bytes.data(), &notice, sizeof(notice));
    xcb_send_event(m_link->connection(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, bytes.data());
    m_link->flush();
}

void ScriptedOwner::writeTargets(const xcb_selection_request_event_t& request)
{
    QList<xcb_atom_t> atoms{m_link->atom(QStringLiteral("TARGETS"))};
    for (const auto& [name, target] : m_targets)
        atoms.append(m_link->atom(name));
    xcb_change_property(m_link->connection(), XCB_PROP_MODE_REPLACE, request.requestor, request.property,
                        XCB_ATOM_ATOM, 32, static_cast<std::uint32_t>(atoms.size()), atoms.constData());
}

void ScriptedOwner::sendPiece()
{
    const Target& target = m_sending->target;
    if (m_sending->sent == target.stopsAfter)
        return;
    const qsizetype each = (target.bytes.size() + target.pieces - 1) / target.pieces;
    const QByteArray piece = target.bytes.mid(each * m_sending->sent, each);
    xcb_change_property(m_link->connection(), XCB_PROP_MODE_REPLACE, m_sending->reader, m_sending->property,
                        m_sending->type, static_cast<std::uint8_t>(target.format),
                        static_cast<std::uint32_t>(piece.size() / (target.format / 8)), piece.constData());
    m_link->flush();
    if (++m_sending->sent > target.pieces)
        m_sending.reset();
}

} // namespace tulvane::test
