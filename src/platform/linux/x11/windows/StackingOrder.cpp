#include <platform/linux/x11/windows/StackingOrder.h>

#include <chrono>
#include <utility>

namespace tulvane {

namespace {

/// Whatever happens within this time is answered once: the server reports a dragged window at every pixel.
constexpr std::chrono::milliseconds pause{40};

} // namespace

StackingOrder::StackingOrder(X11Connection& connection, std::function<void()> raise)
    : m_connection(connection),
      m_raise(std::move(raise))
{
    m_soon.setSingleShot(true);
    m_soon.setInterval(pause);
    connect(&m_soon, &QTimer::timeout, this, &StackingOrder::comeBack);
    m_listening = m_connection.listen([this](const xcb_generic_event_t& event) { note(event); });
}

StackingOrder::~StackingOrder() = default;

void StackingOrder::begin(xcb_window_t window)
{
    m_returns = 0;
    m_isReturning = false;
    if (std::exchange(m_window, window) == 0)
        listen(true);
}

void StackingOrder::end()
{
    m_soon.stop();
    if (std::exchange(m_window, 0) != 0)
        listen(false);
}

void StackingOrder::listen(bool to)
{
    if (m_connection.isBroken())
        return;
    const quint32 events = to ? XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY : XCB_EVENT_MASK_NO_EVENT;
    for (const xcb_window_t root : m_connection.roots())
        xcb_change_window_attributes(m_connection.connection(), root, XCB_CW_EVENT_MASK, &events);
    m_connection.flush();
}

void StackingOrder::note(const xcb_generic_event_t& event)
{
    if (m_window == 0)
        return;
    switch (event.response_type) {
    case XCB_CONFIGURE_NOTIFY:
        noteOwn(reinterpret_cast<const xcb_configure_notify_event_t&>(event));
        [[fallthrough]];
    case XCB_MAP_NOTIFY:
    case XCB_REPARENT_NOTIFY:
    case XCB_CIRCULATE_NOTIFY:
        // Which of the two is above is not asked: a window that is on top already receives no event when it
        // is raised, so that an answer too many ends with itself.
        if (m_returns < patience && !m_soon.isActive())
            m_soon.start();
        break;
    default:
        break;
    }
}

void StackingOrder::noteOwn(const xcb_configure_notify_event_t& event)
{
    // A window that is on top already receives no event when it is raised: a return was needed, and worked.
    if (event.window == m_window && std::exchange(m_isReturning, false))
        ++m_returns;
}

void StackingOrder::comeBack()
{
    if (m_window == 0)
        return;
    m_isReturning = true;
    m_raise();
}

} // namespace tulvane
