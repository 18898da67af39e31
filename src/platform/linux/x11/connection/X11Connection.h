#pragma once

#include <platform/linux/x11/connection/XcbReply.h>

#include <QObject>
#include <QSocketNotifier>
#include <QString>

#include <xcb/xcb.h>

#include <functional>
#include <memory>
#include <vector>

namespace tulvane {

/// A connection of our own to an X server, served by the main thread's event loop whatever Qt itself talks
/// to. A server that dies closes it; nothing else happens to the program. Main thread.
class X11Connection final : public QObject {
    Q_OBJECT

public:
    using EventHandler = std::function<void(const xcb_generic_event_t&)>;

    /// `display` as in $DISPLAY, which an empty one stands for. Null where there is no such server.
    [[nodiscard]] static std::unique_ptr<X11Connection> open(const QString& display);
    Q_DISABLE_COPY_MOVE(X11Connection)
    ~X11Connection() override;

    [[nodiscard]] xcb_connection_t* xcb() const { return m_connection; }
    /// Whether the server is there, as far as is known: the event loop, or the next request, finds out.
    [[nodiscard]] bool isAlive() const { return m_isAlive && xcb_connection_has_error(m_connection) == 0; }
    /// The root window of each screen.
    [[nodiscard]] std::vector<xcb_window_t> roots() const;

    /// The keyboard's bell, as loud as the user has set it. Nothing where the server has gone.
    void ringBell();

    /// Hears of every event, in order; may destroy the connection.
    void setEventHandler(const EventHandler& handler) { m_handler = handler; }
    /// Waiting for a reply can bring in events that the event loop knows nothing of: call this after every
    /// request that has a reply, and they are handed out when the event loop runs next.
    void handleEventsSoon();

Q_SIGNALS:
    /// Every event that had come in has been handled.
    void drained();
    /// The server has ended the connection. Told once.
    void closed();

private:
    explicit X11Connection(xcb_connection_t* connection);
    void drain();
    void noticeEnd();

    xcb_connection_t* m_connection;
    std::unique_ptr<QSocketNotifier> m_notifier;
    EventHandler m_handler;
    bool m_isAlive = true;
    bool m_isDrainDue = false;
};

} // namespace tulvane
