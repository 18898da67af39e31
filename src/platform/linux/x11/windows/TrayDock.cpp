#include <platform/linux/x11/connection/XcbReply.h>
#include <platform/linux/x11/windows/QtX11.h>
#include <platform/linux/x11/windows/TrayDock.h>

#include <QGuiApplication>

#include <xcb/xfixes.h>

namespace tulvane {

namespace {

// The tray of the first screen. More than one X screen is a thing of the past; more than one monitor is not.
constexpr auto selectionName = "_NET_SYSTEM_TRAY_S0";

} // namespace

TrayDock::TrayDock()
{
    m_connection = qtx11::connection();
    const auto* const extension =
        m_connection ? xcb_get_extension_data(m_connection, &xcb_xfixes_id) : nullptr;
    if (!extension || !extension->present)
        return;
    m_selection = qtx11::atom(selectionName);
    const auto known =
        xcbReply(m_connection, xcb_xfixes_query_version_reply, xcb_xfixes_query_version(m_connection, 1, 0));
    if (!known)
        m_selection = 0;
    if (m_selection == 0)
        return;
    m_selectionNotify = static_cast<std::uint8_t>(extension->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
    xcb_xfixes_select_selection_input(m_connection, root, m_selection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
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
    const auto owner = xcbReply(m_connection, xcb_get_selection_owner_reply,
                                xcb_get_selection_owner(m_connection, m_selection));
    return owner && owner->owner != XCB_WINDOW_NONE;
}

bool TrayDock::nativeEventFilter(const QByteArray& eventType, void* message, qintptr* /*result*/)
{
    const auto* const event = static_cast<const xcb_generic_event_t*>(message);
    if (eventType == "xcb_generic_event_t" && (event->response_type & 0x7F) == m_selectionNotify) {
        const auto* const change = reinterpret_cast<const xcb_xfixes_selection_notify_event_t*>(event);
        const auto& handler = change->owner == XCB_WINDOW_NONE ? onDeparture : onArrival;
        if (change->selection == m_selection && handler)
            handler();
    }
    return false;
}

} // namespace tulvane
