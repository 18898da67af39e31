#include <platform/linux/x11/clipboard/ClipboardHandover.h>

#include <QElapsedTimer>
#include <QThread>

namespace tulvane {

namespace {

constexpr unsigned long lookEveryMs = 5;

} // namespace

ClipboardHandover::ClipboardHandover(X11Connection& link)
    : m_link(link),
      m_window(link.makeHiddenWindow()),
      m_manager(link.atom(QStringLiteral("CLIPBOARD_MANAGER")))
{
    m_listening = m_link.listen([this](const xcb_generic_event_t& event) { handle(event); });
}

ClipboardHandover::~ClipboardHandover()
{
    m_listening.reset();
    xcb_destroy_window(m_link.connection(), m_window);
    m_link.flush();
}

bool ClipboardHandover::run(const QList<xcb_atom_t>& targets)
{
    if (!hasManager())
        return false;
    xcb_connection_t* const connection = m_link.connection();
    const xcb_atom_t save = m_link.atom(QStringLiteral("SAVE_TARGETS"));
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, m_window, save, XCB_ATOM_ATOM, 32,
                        static_cast<std::uint32_t>(targets.size()), targets.constData());
    xcb_convert_selection(connection, m_window, m_manager, save, save, m_link.serverTime(m_window));
    QElapsedTimer waited;
    waited.start();
    while (!m_answered && !m_link.isBroken() && waited.elapsed() < limit.count()) {
        QThread::msleep(lookEveryMs);
        m_link.catchUp();
    }
    return m_saved;
}

void ClipboardHandover::handle(const xcb_generic_event_t& event)
{
    if (event.response_type != XCB_SELECTION_NOTIFY)
        return;
    const auto& notice = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
    if (notice.requestor != m_window || notice.selection != m_manager)
        return;
    m_answered = true;
    m_saved = notice.property != noAtom;
}

bool ClipboardHandover::hasManager() const
{
    xcb_connection_t* const connection = m_link.connection();
    const XcbReply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, m_manager), nullptr));
    return reply && reply->owner != noWindow;
}

} // namespace tulvane
