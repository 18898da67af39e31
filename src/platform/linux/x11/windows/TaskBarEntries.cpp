#include <platform/linux/x11/windows/QtX11.h>
#include <platform/linux/x11/windows/TaskBarEntries.h>

#include <QEvent>
#include <QGuiApplication>
#include <QWindow>

namespace tulvane {

namespace {

constexpr auto stateName = "_NET_WM_STATE";

QList<quint32> hidingStates()
{
    return {qtx11::atom("_NET_WM_STATE_SKIP_TASKBAR"), qtx11::atom("_NET_WM_STATE_SKIP_PAGER")};
}

/// Has no entry anyway: the indicator, menus and what explains a control.
bool isUnmanaged(const QWindow& window)
{
    return window.flags().testFlag(Qt::BypassWindowManagerHint) || window.type() == Qt::ToolTip ||
           window.type() == Qt::Popup;
}

/// Of a window that is not shown the states are its own property, which the window manager reads when the
/// window appears.
void writeStates(xcb_window_t window, bool hidden)
{
    QList<quint32> states = qtx11::property(window, stateName, XCB_ATOM_ATOM);
    for (const quint32 state : hidingStates()) {
        states.removeAll(state);
        if (hidden)
            states.append(state);
    }
    qtx11::setProperty(window, stateName, XCB_ATOM_ATOM, states);
}

/// Of a window that is shown the window manager keeps them, and changes them when it is asked.
void askForStates(const QWindow& window, bool hidden)
{
    const QList<quint32> states = hidingStates();
    constexpr quint32 fromAProgram = 1;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = qtx11::serverWindow(window);
    message.type = qtx11::atom(stateName);
    message.data.data32[0] = hidden ? 1 : 0;
    message.data.data32[1] = states.at(0);
    message.data.data32[2] = states.at(1);
    message.data.data32[3] = fromAProgram;
    xcb_send_event(qtx11::connection(), 0, qtx11::root(window),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    qtx11::flush();
}

} // namespace

TaskBarEntries::~TaskBarEntries() = default;

void TaskBarEntries::setHidden(bool hidden)
{
    if (m_isHidden == hidden || !qGuiApp)
        return;
    m_isHidden = hidden;
    if (hidden)
        qGuiApp->installEventFilter(this);
    else
        qGuiApp->removeEventFilter(this);
    for (const QWindow* window : QGuiApplication::topLevelWindows())
        apply(*window);
}

void TaskBarEntries::apply(const QWindow& window) const
{
    const xcb_window_t id = qtx11::serverWindow(window);
    if (id == 0 || isUnmanaged(window))
        return;
    if (window.isVisible())
        askForStates(window, m_isHidden);
    else
        writeStates(id, m_isHidden);
}

bool TaskBarEntries::eventFilter(QObject* object, QEvent* event)
{
    const auto* const window = qobject_cast<QWindow*>(object);
    if (!window || !window->isTopLevel() || isUnmanaged(*window))
        return false;
    if (event->type() == QEvent::Show) {
        // About to appear: with the states on it there is no entry even for a moment.
        if (const xcb_window_t id = qtx11::serverWindow(*window); id != 0)
            writeStates(id, true);
        m_appearing.insert(window);
    } else if (event->type() == QEvent::Expose && m_appearing.remove(window)) {
        // Has appeared, perhaps by a window manager that does not read the property.
        apply(*window);
    }
    return false;
}

} // namespace tulvane
