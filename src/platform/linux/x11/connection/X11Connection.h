#pragma once

#include <platform/linux/x11/connection/XcbAtoms.h>
#include <platform/linux/x11/connection/XcbReply.h>

#include <QObject>
#include <QPointer>
#include <QSocketNotifier>
#include <QString>
#include <QStringList>

#include <xcb/xcb.h>

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace tulvane {

// The library has these as enumerators, which do not mix with values.
inline constexpr xcb_window_t noWindow = XCB_WINDOW_NONE;
inline constexpr xcb_atom_t noAtom = XCB_ATOM_NONE;

/// A connection of our own to an X server, served by the event loop of the thread that opened it and used
/// there, whatever Qt itself talks to. Waits for the server where it must, never for another program.
///
/// A server that dies closes it; nothing else happens to the program: every request is without effect then.
class X11Connection final : public QObject {
    Q_OBJECT

public:
    /// Receives every event that the server sends, in order, with the flag of events that other clients have
    /// sent taken off. May drop its token, other tokens, and the connection.
    using EventHandler = std::function<void(const xcb_generic_event_t&)>;

    /// A handler receives events until its token is dropped; the token may outlive the connection.
    class Token final {
    public:
        Token(X11Connection& connection, std::shared_ptr<EventHandler> handler);
        Token(const Token&) = delete;
        Token& operator=(const Token&) = delete;
        ~Token();

    private:
        QPointer<X11Connection> m_connection;
        std::shared_ptr<EventHandler> m_handler;
    };

    /// `display` as in DISPLAY, which an empty one stands for. Null where there is no such server.
    [[nodiscard]] static std::unique_ptr<X11Connection> open(const QByteArray& display);
    Q_DISABLE_COPY_MOVE(X11Connection)
    ~X11Connection() override;

    [[nodiscard]] xcb_connection_t* connection() const { return m_connection; }
    /// The root window of the first screen, and of each.
    [[nodiscard]] xcb_window_t root() const { return roots().front(); }
    [[nodiscard]] std::vector<xcb_window_t> roots() const;
    /// The number of the screen that the display's name says.
    [[nodiscard]] int screen() const { return m_screen; }
    /// Whether the server has gone, as far as is known: the event loop, or the next request, finds out.
    [[nodiscard]] bool isBroken() const { return xcb_connection_has_error(m_connection) != 0; }
    /// The number of all events of the keyboard extension (XKB); none where the server lacks it.
    [[nodiscard]] std::optional<quint8> keyboardEvent() const { return m_keyboardEvent; }

    /// From the event loop, or from within `catchUp()`.
    [[nodiscard]] std::unique_ptr<Token> listen(EventHandler handler);

    /// A window that is never shown, and of whose properties every change comes as an event.
    [[nodiscard]] xcb_window_t makeHiddenWindow();

    [[nodiscard]] xcb_atom_t atom(const QString& name) { return m_atoms.atom(name); }
    [[nodiscard]] QString atomName(xcb_atom_t atom) { return m_atoms.names({atom}).first(); }
    /// Asks for all of them in one round trip.
    [[nodiscard]] QStringList atomNames(const QList<xcb_atom_t>& atoms) { return m_atoms.names(atoms); }

    void flush() { xcb_flush(m_connection); }
    /// Every event that the server has sent until now has been handled when this returns.
    void catchUp();
    /// The server's time now, of an event that `window`, one of ours, has just caused. Catches up.
    [[nodiscard]] xcb_timestamp_t serverTime(xcb_window_t window);

    /// The keyboard's bell, as loud as the user has set it. Nothing where the server has gone.
    void ringBell();

Q_SIGNALS:
    /// All events that had come in have been handled.
    void drained();
    /// The server has ended the connection. From the event loop, once.
    void closed();

private:
    X11Connection(xcb_connection_t* connection, int screen);
    void readSocket();
    void collect();
    void drain();
    void dispatch(xcb_generic_event_t& event);
    void noticeEnd();

    xcb_connection_t* m_connection;
    int m_screen;
    QSocketNotifier m_readable;
    XcbAtoms m_atoms;
    std::optional<quint8> m_keyboardEvent;
    std::vector<std::shared_ptr<EventHandler>> m_handlers;
    std::deque<XcbReply<xcb_generic_event_t>> m_pending; ///< have come in, and have not been handled
    xcb_timestamp_t m_propertyTime = XCB_CURRENT_TIME;
    bool m_isDrainDue = false;
    bool m_hasEnded = false;
};

} // namespace tulvane
