#include <platform/linux/x11/windows/TrayDock.h>

#include <QGuiApplication>

#include <xcb/xcb.h>
#include <xcb/xfixes.h>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace tulvane {

namespace {

template <class Reply>
using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

template <class Reply>
Owned<Reply> owned(Reply* reply)
{
    return {reply, &std::free};
}

// The tray of the first screen. More than one X screen is a thing of the past; more than one monitor is not.
constexpr auto selectionName = "_NET_SYSTEM_TRAY_S0";

} // namespace

TrayDock::TrayDock()
{
    const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    m_connection = x11 ? x11->connection() : nullptr;
    const auto* const extension =
        m_connection ? xcb_get_extension_data(m_connection, &xcb_xfixes_id) : nullptr;
    if (!extension || !extension->present)
        return;
    const auto wanted = xcb_intern_atom(m_connection, false, std::strlen(selectionName), selectionName);
    const auto version = xcb_xfixes_query_version(m_connection, 1, 0);
    const auto atom = owned(xcb_intern_atom_reply(m_connection, wanted, nullptr));
    const auto known = owned(xcb_xfixes_query_version_reply(m_connection, version, nullptr));
    if (!atom || !known)
        return;
    m_selection = atom->atom;
    m_selectionNotify = static_cast<std::uint8_t>(extension->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
    xcb_xfixes_select_selection_input(m_connection, root, m_selection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
    xcb_flush(m_connection);
    qGuiApp->installNativeEventFilter(this);
}

TrayDock::~TrayDock()
{
    if (qGuiApp)
        qGuiApp->removeNativeEventFilter(this);
}

bool TrayDock::isThere() const
{
    if (m_selection == 0)
        return false;
    const auto asked = xcb_get_selection_owner(m_connection, m_selection);
    const auto owner = owned(xcb_get_selection_owner_reply(m_connection, asked, nullptr));
    return owner && owner->owner != XCB_WINDOW_NONE;
}

bool TrayDock::nativeEventFilter(const QByteArray& eventType, void* message, qintptr* /*result*/)
{
    const auto* const event = static_cast<const xcb_generic_event_t*>(message);
    if (eventType == "xcb_generic_event_t" && (event->response_type & 0x7F) == m_selectionNotify) {
        const auto* const change = reinterpret_cast<const xcb_xfixes_selection_notify_event_t*>(event);
        if (change->selection == m_selection && change->owner != XCB_WINDOW_NONE && onArrival)
            onArrival();
    }
    return false;
}

} // namespace tulvane
