#include <platform/linux/x11/clipboard/SelectionResponder.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace tulvane {

SelectionResponder::SelectionResponder(X11Connection& link, xcb_window_t owner, xcb_atom_t selection,
                                       TextRead textRead)
    : m_link(link),
      m_owner(owner),
      m_selection(selection),
      m_textRead(std::move(textRead))
{
    m_listening = m_link.listen([this](const xcb_generic_event_t& event) { handle(event); });
}

void SelectionResponder::set(const QList<TargetOffer>& offers, xcb_timestamp_t time, quint64 number)
{
    m_offers = offers;
    m_time = time;
    m_number = number;
    // The program no longer asks whether an earlier text was taken.
    m_given.clear();
}

void SelectionResponder::handle(const xcb_generic_event_t& event)
{
    switch (event.response_type) {
    case XCB_SELECTION_REQUEST: {
        const auto& request = reinterpret_cast<const xcb_selection_request_event_t&>(event);
        if (request.owner == m_owner && request.selection == m_selection)
            answer(request);
        break;
    }
    case XCB_PROPERTY_NOTIFY: {
        const auto& notice = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (notice.state == XCB_PROPERTY_DELETE)
            propertyGone(notice.window, notice.atom);
        break;
    }
    case XCB_DESTROY_NOTIFY:
        windowGone(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
        break;
    default:
        break;
    }
}

void SelectionResponder::answer(const xcb_selection_request_event_t& request)
{
    // Clients from before the conventions name no property; the target's name serves then.
    const xcb_atom_t property = request.property == noAtom ? request.target : request.property;
    const bool several = request.target == m_link.atom(QStringLiteral("MULTIPLE"));
    const bool answered = several ? request.property != noAtom && convertSeveral(request.requestor, property)
                                  : convert(request.requestor, request.target, property);
    xcb_selection_notify_event_t notice{};
    notice.response_type = XCB_SELECTION_NOTIFY;
    notice.time = request.time;
    notice.requestor = request.requestor;
    notice.selection = request.selection;
    notice.target = request.target;
    notice.property = answered ? property : noAtom;
    std::array<char, 32> bytes{}; // the size of every event on the wire
    std::memcpy(bytes.data(), &notice, sizeof(notice));
    xcb_send_event(m_link.connection(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, bytes.data());
    m_link.flush();
}

bool SelectionResponder::convert(xcb_window_t reader, xcb_atom_t target, xcb_atom_t property)
{
    if (m_offers.isEmpty())
        return false;
    if (target == m_link.atom(QStringLiteral("TARGETS"))) {
        QList<xcb_atom_t> targets;
        for (const char* name : {"TARGETS", "MULTIPLE", "TIMESTAMP"})
            targets.append(m_link.atom(QString::fromLatin1(name)));
        for (const TargetOffer& offer : m_offers)
            targets.append(offer.target);
        writeAtoms(reader, property, targets);
        return true;
    }
    if (target == m_link.atom(QStringLiteral("TIMESTAMP"))) {
        xcb_change_property(m_link.connection(), XCB_PROP_MODE_REPLACE, reader, property, XCB_ATOM_INTEGER,
                            32, 1, &m_time);
        return true;
    }
    const auto offer = std::ranges::find(m_offers, target, &TargetOffer::target);
    if (offer == m_offers.end())
        return false;
    begin(reader, property, *offer);
    return true;
}

void SelectionResponder::begin(xcb_window_t reader, xcb_atom_t property, const TargetOffer& offer)
{
    const bool isText = isTextTarget(m_link.atomName(offer.target));
    const ClientProcess process = isText ? ClientProcess::ofWindow(m_link, reader) : ClientProcess();
    if (offer.bytes.size() <= IncrementalTransfer::pieceBytes) {
        if (isText) {
            watch(reader);
            m_given.removeIf(
                [&](const Given& one) { return one.reader == reader && one.property == property; });
            m_given.append({reader, property, m_number, process});
        }
        const auto units = static_cast<std::uint32_t>(offer.bytes.size() / (offer.form.format / 8));
        xcb_change_property(m_link.connection(), XCB_PROP_MODE_REPLACE, reader, property, offer.form.type,
                            offer.form.format, units, offer.bytes.constData());
        return;
    }
    // A second request for the same property takes the place of the first.
    std::erase_if(m_running, [&](const Running& running) {
        return running.transfer.reader() == reader && running.transfer.property() == property;
    });
    watch(reader);
    m_running.push_back({IncrementalTransfer(m_link, reader, property, offer), isText, m_number, process});
    m_running.back().transfer.begin();
}

bool SelectionResponder::convertSeveral(xcb_window_t reader, xcb_atom_t property)
{
    const auto cookie = xcb_get_property(m_link.connection(), 0, reader, property, XCB_ATOM_ANY, 0, 1024);
    const XcbReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(m_link.connection(), cookie, nullptr));
    if (!reply || reply->format != 32)
        return false;
    const auto* first = static_cast<const xcb_atom_t*>(xcb_get_property_value(reply.get()));
    QList<xcb_atom_t> pairs(first, first + reply->value_len);
    const xcb_atom_t multiple = m_link.atom(QStringLiteral("MULTIPLE"));
    for (qsizetype pair = 0; pair + 1 < pairs.size(); pair += 2) {
        if (pairs[pair] == multiple || !convert(reader, pairs[pair], pairs[pair + 1]))
            pairs[pair + 1] = noAtom;
    }
    xcb_change_property(m_link.connection(), XCB_PROP_MODE_REPLACE, reader, property, reply->type, 32,
                        static_cast<std::uint32_t>(pairs.size()), pairs.constData());
    return true;
}

void SelectionResponder::writeAtoms(xcb_window_t reader, xcb_atom_t property, const QList<xcb_atom_t>& atoms)
{
    xcb_change_property(m_link.connection(), XCB_PROP_MODE_REPLACE, reader, property, XCB_ATOM_ATOM, 32,
                        static_cast<std::uint32_t>(atoms.size()), atoms.constData());
}

void SelectionResponder::propertyGone(xcb_window_t window, xcb_atom_t property)
{
    if (textGone(window, property))
        return;
    const auto running = std::ranges::find_if(m_running, [&](const Running& one) {
        return one.transfer.reader() == window && one.transfer.property() == property;
    });
    if (running == m_running.end() || !running->transfer.advance())
        return;
    const bool wasText = running->isText;
    const quint64 number = running->number;
    const ClientProcess process = running->process;
    m_running.erase(running);
    unwatch(window);
    if (wasText)
        m_textRead(window, process, number);
}

bool SelectionResponder::textGone(xcb_window_t window, xcb_atom_t property)
{
    const auto given = std::ranges::find_if(
        m_given, [&](const Given& one) { return one.reader == window && one.property == property; });
    if (given == m_given.end())
        return false;
    const Given taken = *given;
    m_given.erase(given);
    unwatch(window);
    m_textRead(window, taken.process, taken.number);
    return true;
}

void SelectionResponder::windowGone(xcb_window_t window)
{
    // Some make a window for one read and destroy it with the property in it.
    for (const Given& one : std::as_const(m_given)) {
        if (one.reader == window)
            m_textRead(window, one.process, one.number);
    }
    m_given.removeIf([&](const Given& one) { return one.reader == window; });
    std::erase_if(m_running, [&](const Running& one) { return one.transfer.reader() == window; });
}

void SelectionResponder::watch(xcb_window_t reader)
{
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_link.connection(), reader, XCB_CW_EVENT_MASK, &events);
}

void SelectionResponder::unwatch(xcb_window_t reader)
{
    const bool isAwaited =
        std::ranges::any_of(m_given, [&](const Given& one) { return one.reader == reader; }) ||
        std::ranges::any_of(m_running, [&](const Running& one) { return one.transfer.reader() == reader; });
    const std::uint32_t events = XCB_EVENT_MASK_NO_EVENT;
    if (!isAwaited)
        xcb_change_window_attributes(m_link.connection(), reader, XCB_CW_EVENT_MASK, &events);
}

} // namespace tulvane
