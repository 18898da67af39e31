#include <base/Log.h>
#include <platform/linux/x11/clipboard/SelectionReader.h>

#include <algorithm>

namespace tulvane {

namespace {

constexpr std::uint32_t wholeProperty = 0x1fffffff; // in four-byte units: more than any property holds
constexpr int propertyNames = 32;

} // namespace

SelectionReader::SelectionReader(X11Connection& link, Scheduler& scheduler, xcb_window_t window,
                                 xcb_atom_t selection, Done done)
    : m_link(link),
      m_scheduler(scheduler),
      m_window(window),
      m_selection(selection),
      m_done(std::move(done))
{
    m_listening = m_link.listen([this](const xcb_generic_event_t& event) { handle(event); });
    m_late = m_scheduler.after(totalLimit, [this] { finish(false); });
}

void SelectionReader::begin()
{
    m_left.clear();
    m_item = {};
    m_forms.clear();
    m_bytes = 0;
    m_stalls = 0;
    m_lost = false;
    m_encodingsEnd.reset();
    m_time = m_link.serverTime(m_window);
    ask(m_link.atom(QStringLiteral("TARGETS")));
}

void SelectionReader::beginAgain()
{
    if (m_done)
        begin();
}

void SelectionReader::hurry()
{
    m_isWaitedFor = true;
    if (m_waiting != Waiting::nothing && isDispensable(m_target))
        limitEncodings();
}

bool SelectionReader::isDispensable(xcb_atom_t target) const
{
    const auto isPicture = [](const QString& format) {
        return worthOf(format) == FormatWorth::picture || worthOf(format) == FormatWorth::redundant;
    };
    return worthOf(m_link.atomName(target)) == FormatWorth::redundant &&
           std::ranges::any_of(m_item.dataByType.keys(), isPicture);
}

void SelectionReader::limitEncodings()
{
    if (!m_encodingsEnd)
        m_encodingsEnd = m_scheduler.after(encodingsLimit, [this] { finish(true); });
}

void SelectionReader::ask(xcb_atom_t target)
{
    // A name of its own for each request, so that a late answer is not taken for that of the next one.
    m_property = m_link.atom(QStringLiteral("_TULVANE_READ_%1").arg(m_requests++ % propertyNames));
    m_target = target;
    m_waiting = Waiting::notice;
    if (m_isWaitedFor && isDispensable(target))
        limitEncodings();
    xcb_delete_property(m_link.connection(), m_window, m_property);
    xcb_convert_selection(m_link.connection(), m_window, m_selection, target, m_property, m_time);
    m_link.flush();
    progressed();
}

void SelectionReader::askNext()
{
    m_waiting = Waiting::nothing;
    if (m_left.isEmpty())
        finish(true);
    else
        ask(m_left.takeFirst());
}

void SelectionReader::handle(const xcb_generic_event_t& event)
{
    if (event.response_type == XCB_SELECTION_NOTIFY && m_waiting == Waiting::notice) {
        const auto& notice = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
        const bool ours = notice.requestor == m_window && notice.selection == m_selection;
        if (ours && notice.target == m_target && (notice.property == m_property || notice.property == noAtom))
            noticed(notice);
    } else if (event.response_type == XCB_PROPERTY_NOTIFY && m_waiting == Waiting::pieces) {
        const auto& notice = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (notice.window == m_window && notice.atom == m_property && notice.state == XCB_PROPERTY_NEW_VALUE)
            takeProperty();
    }
}

void SelectionReader::noticed(const xcb_selection_notify_event_t& notice)
{
    const bool askedForTargets = m_target == m_link.atom(QStringLiteral("TARGETS"));
    if (notice.property != noAtom) {
        takeProperty();
    } else if (askedForTargets) {
        // No list of targets: there is no owner, or one from before the conventions, which has text at most.
        m_left = {m_link.atom(QStringLiteral("UTF8_STRING")), XCB_ATOM_STRING};
        askNext();
    } else {
        askNext();
    }
}

XcbReply<xcb_get_property_reply_t> SelectionReader::fetchProperty()
{
    const auto cookie =
        xcb_get_property(m_link.connection(), 1, m_window, m_property, XCB_ATOM_ANY, 0, wholeProperty);
    return XcbReply<xcb_get_property_reply_t>(xcb_get_property_reply(m_link.connection(), cookie, nullptr));
}

void SelectionReader::takeProperty()
{
    const XcbReply<xcb_get_property_reply_t> reply = fetchProperty();
    if (!reply || (reply->type == noAtom && m_waiting == Waiting::notice)) {
        askNext();
        return;
    }
    if (m_waiting == Waiting::pieces)
        takePiece(reply);
    else
        takeWhole(reply);
}

void SelectionReader::takeWhole(const XcbReply<xcb_get_property_reply_t>& reply)
{
    if (reply->type == m_link.atom(QStringLiteral("INCR"))) {
        // Having read it, and so deleted it, is the sign to begin.
        m_waiting = Waiting::pieces;
        m_pieces.clear();
        m_piecesForm = {};
        progressed();
        return;
    }
    take({static_cast<const char*>(xcb_get_property_value(reply.get())),
          xcb_get_property_value_length(reply.get())},
         {reply->type, reply->format});
}

void SelectionReader::takePiece(const XcbReply<xcb_get_property_reply_t>& reply)
{
    const int length = xcb_get_property_value_length(reply.get());
    if (reply->type == noAtom)
        return; // an event of a piece that has been taken already
    if (length == 0) {
        take(m_pieces, m_piecesForm.type == noAtom ? TargetForm{reply->type, reply->format} : m_piecesForm);
        return;
    }
    m_piecesForm = {reply->type, reply->format};
    m_pieces.append(static_cast<const char*>(xcb_get_property_value(reply.get())), length);
    if (m_bytes + m_pieces.size() > byteLimit)
        finish(false);
    else
        progressed();
}

void SelectionReader::take(const QByteArray& bytes, const TargetForm& form)
{
    if (m_target == m_link.atom(QStringLiteral("TARGETS")))
        takeTargets(bytes);
    else
        keep(bytes, form);
    if (m_bytes > byteLimit)
        finish(false);
    else
        askNext();
}

void SelectionReader::takeTargets(const QByteArray& bytes)
{
    const auto* first = reinterpret_cast<const xcb_atom_t*>(bytes.constData());
    const QList<xcb_atom_t> targets(first, first + bytes.size() / static_cast<qsizetype>(sizeof(xcb_atom_t)));
    const QStringList names = m_link.atomNames(targets);
    m_left.clear();
    for (qsizetype index = 0; index < targets.size(); ++index) {
        if (isContentTarget(names[index]) && !m_left.contains(targets[index]))
            m_left.append(targets[index]);
    }
    std::ranges::stable_sort(m_left, {},
                             [this](xcb_atom_t target) { return worthOf(m_link.atomName(target)); });
}

void SelectionReader::keep(const QByteArray& bytes, const TargetForm& form)
{
    const QString name = m_link.atomName(m_target);
    m_item.dataByType.insert(name, bytes);
    m_forms.insert(name, form);
    m_bytes += bytes.size();
    m_stalls = 0;
}

void SelectionReader::progressed()
{
    const bool isList = m_target == m_link.atom(QStringLiteral("TARGETS"));
    const bool isPicture = worthOf(m_link.atomName(m_target)) == FormatWorth::picture;
    const auto limit = isList ? listLimit : isPicture ? pictureLimit : formatLimit;
    m_stalled = m_scheduler.after(limit, [this] { stalled(); });
}

void SelectionReader::stalled()
{
    // A picture that there is in another encoding is not lost.
    if (!isDispensable(m_target)) {
        m_lost = true;
        qCWarning(lcInsertion).noquote()
            << "The clipboard's owner did not deliver" << m_link.atomName(m_target);
    }
    const bool isList = m_target == m_link.atom(QStringLiteral("TARGETS"));
    if (isList || ++m_stalls == stallLimit)
        finish(false);
    else
        askNext();
}

void SelectionReader::finish(bool complete)
{
    m_waiting = Waiting::nothing;
    m_stalled.reset();
    m_late.reset();
    m_encodingsEnd.reset();
    const bool onlyEncodingsLeft = m_target != noAtom && isDispensable(m_target);
    Outcome outcome{{{}, (complete || onlyEncodingsLeft) && !m_lost}, m_forms};
    if (!m_item.dataByType.isEmpty())
        outcome.contents.items.append(m_item);
    if (const Done done = std::exchange(m_done, nullptr))
        done(outcome);
}

} // namespace tulvane
