#pragma once

#include <platform/linux/x11/connection/XcbReply.h>

#include <QHash>
#include <QObject>
#include <QSocketNotifier>
#include <QString>
#include <QStringList>

#include <xcb/xcb.h>

#include <memory>
#include <vector>

namespace tulvane {

// The library has these as enumerators, which do not mix with values.
inline constexpr xcb_window_t noWindow = XCB_WINDOW_NONE;
inline constexpr xcb_atom_t noAtom = XCB_ATOM_NONE;

/// A connection of our own to an X server, read from the event loop of the thread that opened it, and used
/// there. Waits for the server where it must, never for another program.
///
/// When the server goes away, nothing is called any more, and every request is without effect.
class X11Link final : public QObject {
    Q_OBJECT

public:
    /// Hears of every event that the server sends.
    class Listener {
    public:
        Listener() = default;
        Listener(const Listener&) = delete;
        Listener& operator=(const Listener&) = delete;
        virtual ~Listener() = default;
        virtual void handle(const xcb_generic_event_t& event) = 0;
    };

    /// `display` as in DISPLAY. Null when there is no such server.
    [[nodiscard]] static std::unique_ptr<X11Link> open(const QByteArray& display);
    ~X11Link() override;

    [[nodiscard]] xcb_connection_t* connection() const { return m_connection; }
    [[nodiscard]] xcb_window_t root() const { return m_root; }
    [[nodiscard]] bool isBroken() const;

    /// A window that is never shown, and that hears of changes of its properties.
    [[nodiscard]] xcb_window_t makeHiddenWindow();

    [[nodiscard]] xcb_atom_t atom(const QString& name);
    [[nodiscard]] QString atomName(xcb_atom_t atom);
    /// Asks for all of them in one round trip.
    [[nodiscard]] QStringList atomNames(const QList<xcb_atom_t>& atoms);

    /// Every event that the server has sent until now is handled when this returns.
    void catchUp();
    /// The server's time now, of an event that `window`, one of ours, has just caused.
    [[nodiscard]] xcb_timestamp_t serverTime(xcb_window_t window);
    void flush() { xcb_flush(m_connection); }

    void addListener(Listener& listener) { m_listeners.push_back(&listener); }
    void removeListener(Listener& listener) { std::erase(m_listeners, &listener); }

private:
    explicit X11Link(xcb_connection_t* connection);

    enum class Reading { socket, queued };
    void handleEvents(Reading reading);
    void tell(const xcb_generic_event_t& event);

    xcb_connection_t* m_connection;
    xcb_window_t m_root;
    QSocketNotifier m_readable;
    QHash<QString, xcb_atom_t> m_atoms;
    QHash<xcb_atom_t, QString> m_names;
    std::vector<Listener*> m_listeners;
    xcb_timestamp_t m_propertyTime = XCB_CURRENT_TIME;
};

} // namespace tulvane
