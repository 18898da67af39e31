#include <platform/linux/x11text/FrontWindow.h>
#include <platform/linux/x11text/X11Pasteboard.h>

#include <xcb/xfixes.h>

#include <algorithm>

namespace tulvane {

X11Pasteboard::X11Pasteboard(X11Link& link, Scheduler& scheduler, const QString& selection)
    : m_link(link),
      m_scheduler(scheduler),
      m_selection(link.atom(selection)),
      m_window(link.makeHiddenWindow()),
      m_offers(link, m_window, m_selection, [this](xcb_window_t reader) { textRead(reader); })
{
    m_link.addListener(*this);
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
    m_link.removeListener(*this);
    for (PendingRead& pending : m_reads) {
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
    m_reads.push_back({QPromise<PasteboardContents>(), m_link.makeHiddenWindow(), nullptr});
    PendingRead& pending = m_reads.back();
    pending.promise.start();
    pending.read = std::make_unique<SelectionRead>(
        m_link, m_scheduler, pending.window, m_selection,
        [this, &pending](const SelectionRead::Outcome& outcome) { readFinished(pending, outcome); });
    pending.read->begin();
    return pending.promise.future();
}

void X11Pasteboard::readFinished(PendingRead& pending, const SelectionRead::Outcome& outcome)
{
    m_forms.insert(outcome.forms);
    xcb_destroy_window(m_link.connection(), pending.window);
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

bool X11Pasteboard::replace(const QList<PasteboardItem>& items)
{
    const QList<TargetOffer> offers = offersFor(m_link, items, m_forms);
    const xcb_timestamp_t time = m_link.serverTime(m_window);
    m_offers.set(offers, time);
    m_ownItems = items;
    m_reading = Reading::unread;
    m_front = FrontWindow::current(m_link).window;
    setOwner(m_window, time);
    if (isOurs()) {
        ++m_changeCount;
        return true;
    }
    m_offers.drop();
    m_ownItems.clear();
    return false;
}

void X11Pasteboard::clear()
{
    const xcb_timestamp_t time = m_link.serverTime(m_window);
    m_offers.drop();
    m_ownItems.clear();
    ++m_changeCount;
    ++m_ownClearsToCome;
    setOwner(noWindow, time);
}

void X11Pasteboard::handle(const xcb_generic_event_t& event)
{
    if (m_fixesEvent == 0 || event.response_type != m_fixesEvent)
        return;
    const auto& notice = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
    if (notice.window == m_window && notice.selection == m_selection)
        ownerChanged(notice.subtype == XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER ? notice.owner
                                                                                      : noWindow);
}

void X11Pasteboard::ownerChanged(xcb_window_t owner)
{
    // Our own write was counted when it was made.
    if (owner == m_window)
        return;
    if (owner == noWindow && m_ownClearsToCome > 0) {
        --m_ownClearsToCome;
        return;
    }
    ++m_changeCount;
    if (!isOurs()) {
        m_offers.drop();
        m_ownItems.clear();
    }
    for (PendingRead& pending : m_reads)
        pending.read->beginAgain();
    tellActivity();
}

void X11Pasteboard::textRead(xcb_window_t reader)
{
    if (m_front == noWindow || !FrontWindow::sameProgram(m_link, reader, m_front))
        return;
    m_reading = Reading::read;
    tellActivity();
}

bool X11Pasteboard::isOurs() const
{
    xcb_connection_t* const connection = m_link.connection();
    const XcbReply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, m_selection), nullptr));
    return reply && reply->owner == m_window;
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
