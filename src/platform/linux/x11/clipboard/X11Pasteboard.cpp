#include <platform/linux/x11/clipboard/FrontWindow.h>
#include <platform/linux/x11/clipboard/X11Pasteboard.h>

#include <algorithm>

namespace tulvane {

X11Pasteboard::X11Pasteboard(X11Connection& link, SelectionOwner& keeper, Scheduler& scheduler,
                             const QString& selection, Readers readers)
    : m_link(link),
      m_keeper(keeper),
      m_scheduler(scheduler),
      m_selection(link.atom(selection)),
      m_window(link.makeHiddenWindow()),
      m_owner(keeper.keep(m_selection,
                          [this](xcb_window_t reader, const ClientProcess& process, quint64 offer) {
                              QMetaObject::invokeMethod(
                                  &m_context,
                                  [this, reader, process, offer] { textRead(reader, process, offer); },
                                  Qt::QueuedConnection);
                          })),
      m_readers(readers)
{
    m_listening = m_link.listen([this](const xcb_generic_event_t& event) { handle(event); });
    xcb_connection_t* const connection = m_link.connection();
    const xcb_query_extension_reply_t* fixes = xcb_get_extension_data(connection, &xcb_xfixes_id);
    if (fixes == nullptr || fixes->present == 0)
        return;
    m_fixesEvent = static_cast<std::uint8_t>(fixes->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    const XcbReply<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(
        connection, xcb_xfixes_query_version(connection, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION),
        nullptr));
    xcb_xfixes_select_selection_input(connection, m_window, m_selection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    m_link.flush();
}

X11Pasteboard::~X11Pasteboard()
{
    m_keeper.forget(m_selection);
    m_listening.reset();
    for (PendingRead& pending : m_reads) {
        if (pending.isFinished)
            continue;
        pending.promise.addResult(PasteboardContents{{}, false});
        pending.promise.finish();
    }
    xcb_destroy_window(m_link.connection(), m_window);
    m_link.flush();
}

QFuture<PasteboardContents> X11Pasteboard::contents()
{
    // A change that has happened is not to begin the read anew.
    m_link.catchUp();
    if (isOurs())
        return QtFuture::makeReadyFuture(PasteboardContents{m_ownItems, true});
    const auto ahead = std::exchange(m_ahead, std::nullopt);
    auto contents = ahead ? *ahead : startRead();
    for (PendingRead& pending : m_reads)
        pending.read->hurry();
    return contents;
}

void X11Pasteboard::readAhead()
{
    m_link.catchUp();
    if (m_ahead || isOurs())
        return;
    m_ahead = startRead();
    m_aheadEnd = m_scheduler.after(aheadLimit, [this] { m_ahead.reset(); });
}

QList<xcb_atom_t> X11Pasteboard::ownTargets()
{
    QList<xcb_atom_t> targets;
    const QList<TargetOffer> offers =
        isOurs() ? offersFor(m_link, m_ownItems, m_forms) : QList<TargetOffer>();
    for (const TargetOffer& offer : offers)
        targets.append(offer.target);
    return targets;
}

QFuture<PasteboardContents> X11Pasteboard::startRead()
{
    m_reads.push_back({QPromise<PasteboardContents>(), m_link.makeHiddenWindow(), nullptr, false});
    PendingRead& pending = m_reads.back();
    pending.promise.start();
    pending.read = std::make_unique<SelectionReader>(
        m_link, m_scheduler, pending.window, m_selection,
        [this, &pending](const SelectionReader::Outcome& outcome) { readFinished(pending, outcome); });
    pending.read->begin();
    return pending.promise.future();
}

void X11Pasteboard::readFinished(PendingRead& pending, const SelectionReader::Outcome& outcome)
{
    m_forms.insert(outcome.forms);
    xcb_destroy_window(m_link.connection(), pending.window);
    pending.isFinished = true;
    QPromise<PasteboardContents> promise = std::move(pending.promise);
    // The read is still running on this stack; it goes when the stack has unwound.
    QMetaObject::invokeMethod(
        &m_context,
        [this, gone = &pending] { m_reads.remove_if([&](const PendingRead& one) { return &one == gone; }); },
        Qt::QueuedConnection);
    promise.addResult(outcome.contents);
    promise.finish();
}

qint64 X11Pasteboard::changeCount()
{
    m_link.catchUp();
    return m_changeCount;
}

bool X11Pasteboard::replaceFor(const QList<PasteboardItem>& items, const PasteTarget& target)
{
    return put(items, target, std::nullopt);
}

void X11Pasteboard::clear()
{
    empty(std::nullopt);
}

bool X11Pasteboard::replaceUnlessChanged(const QList<PasteboardItem>& items, qint64 count)
{
    return items.isEmpty() ? empty(count) : put(items, {}, count);
}

bool X11Pasteboard::put(const QList<PasteboardItem>& items, const PasteTarget& target, OnlyAt count)
{
    const QList<TargetOffer> offers = offersFor(m_link, items, m_forms);
    const auto window = m_readers == Readers::target ? static_cast<xcb_window_t>(target.window) : noWindow;
    const ClientProcess program = ClientProcess::ofWindow(m_link, window);
    // Whatever has been written until this moment is counted. What another program writes between it and the
    // change of the owner has a later time than ours, and the server keeps to it.
    const xcb_timestamp_t time = m_link.serverTime(m_window);
    if (count && m_changeCount != *count)
        return false;
    m_ahead.reset();
    m_ownItems = items;
    m_reading = Reading::unread;
    m_requests = 0;
    m_expectsReader = false;
    m_sinceWrite.start();
    m_target = window;
    m_program = program;
    m_keeper.take(m_selection, offers, time, ++m_offer);
    if (isOurs()) {
        countOwnChange();
        return true;
    }
    m_keeper.drop(m_selection);
    m_ownItems.clear();
    return false;
}

bool X11Pasteboard::empty(OnlyAt count)
{
    const xcb_timestamp_t time = m_link.serverTime(m_window);
    if (count && m_changeCount != *count)
        return false;
    m_keeper.drop(m_selection);
    m_ahead.reset();
    m_ownItems.clear();
    countOwnChange();
    // The notice of it comes now or, where another program was quicker, never: waited for any longer, it
    // would be taken for the next program's that clears the pasteboard.
    m_clearing = time;
    setOwner(noWindow, time);
    m_link.catchUp();
    m_clearing.reset();
    return true;
}

void X11Pasteboard::handle(const xcb_generic_event_t& event)
{
    if (m_fixesEvent == 0 || event.response_type != m_fixesEvent)
        return;
    const auto& notice = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
    if (notice.window == m_window && notice.selection == m_selection)
        ownerChanged(notice);
}

void X11Pasteboard::ownerChanged(const xcb_xfixes_selection_notify_event_t& notice)
{
    // Our own write was counted when it was made.
    const bool isSet = notice.subtype == XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER;
    if (isSet && notice.owner == m_owner)
        return;
    if (isSet && notice.owner == noWindow && m_clearing == notice.selection_timestamp) {
        m_clearing.reset();
        return;
    }
    ++m_changeCount;
    // A read that is still going on begins anew.
    if (m_ahead && m_ahead->isFinished())
        m_ahead.reset();
    if (!isOurs()) {
        m_keeper.drop(m_selection);
        m_ownItems.clear();
    }
    for (PendingRead& pending : m_reads)
        pending.read->beginAgain();
    tellActivity();
}

void X11Pasteboard::textRead(xcb_window_t reader, const ClientProcess& process, quint64 offer)
{
    // What was read may be a text from before the last write.
    if (offer != m_offer || !isOfTheTarget(reader, process))
        return;
    m_reading = Reading::read;
    tellActivity();
}

bool X11Pasteboard::isOfTheTarget(xcb_window_t reader, const ClientProcess& process)
{
    if (m_readers != Readers::target) {
        const bool isKeepers = m_readers == Readers::bridgedAndKept && m_requests == 0;
        ++m_requests;
        return !isKeepers && m_expectsReader;
    }
    return m_target != noWindow &&
           (FrontWindow::sameProgram(m_link, reader, m_target) || process.belongsTo(m_program));
}

bool X11Pasteboard::isBridged() const
{
    switch (m_readers) {
    case Readers::target:
        return true;
    case Readers::bridged:
        return !m_sinceWrite.isValid() || m_sinceWrite.hasExpired(bridgeTime.count());
    case Readers::bridgedAndKept:
        // It asks after it has offered the text to the program in front.
        return m_requests > 0;
    }
    Q_UNREACHABLE();
}

bool X11Pasteboard::isOurs() const
{
    xcb_connection_t* const connection = m_link.connection();
    const XcbReply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, m_selection), nullptr));
    return reply && reply->owner == m_owner;
}

void X11Pasteboard::setOwner(xcb_window_t owner, xcb_timestamp_t time)
{
    xcb_set_selection_owner(m_link.connection(), owner, m_selection, time);
    m_link.flush();
}

void X11Pasteboard::tellActivity()
{
    QMetaObject::invokeMethod(
        &m_context,
        [this] {
            if (m_activity)
                m_activity();
        },
        Qt::QueuedConnection);
}

} // namespace tulvane
