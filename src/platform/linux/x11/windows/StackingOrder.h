#pragma once

#include <platform/linux/x11/connection/X11Connection.h>

#include <QObject>
#include <QTimer>

#include <functional>

namespace tulvane {

/// Keeps an unmanaged window above what is put over it, as long as that gives in. Listens only while the
/// window is watched over, on a connection that nothing else asks for the windows of the roots. Main thread.
class StackingOrder final : public QObject {
public:
    /// How often the window comes back up before it lets another one that insists have its way.
    static constexpr int patience = 5;

    /// `raise` puts the window on top of all. The connection outlives this object.
    StackingOrder(X11Connection& connection, std::function<void()> raise);
    Q_DISABLE_COPY_MOVE(StackingOrder)
    ~StackingOrder() override;

    /// From now on, with fresh patience. `window` lies directly in one of the connection's roots.
    void begin(xcb_window_t window);
    void end();

private:
    void listen(bool to);
    void note(const xcb_generic_event_t& event);
    void noteOwn(const xcb_configure_notify_event_t& event);
    void comeBack();

    X11Connection& m_connection;
    std::function<void()> m_raise;
    QTimer m_soon;
    std::unique_ptr<X11Connection::Token> m_listening;
    xcb_window_t m_window = 0; ///< 0 while none is watched over
    int m_returns = 0;
    bool m_isReturning = false; ///< has been asked to come up, and the server has not confirmed it
};

} // namespace tulvane
