#pragma once

#include <platform/linux/wayland/connection/WaylandLibrary.h>

#include <QByteArray>
#include <QObject>
#include <QProcessEnvironment>
#include <QSocketNotifier>

#include <cstdint>
#include <memory>
#include <vector>

namespace tulvane {

/// A connection of our own to a Wayland compositor, served by the event loop of the thread that opened it and
/// used there, whatever Qt itself talks to. Waits for the compositor where it must, never for another
/// program.
///
/// A compositor that goes closes it; nothing else happens to the program: every request is without effect
/// then.
class WaylandConnection final : public QObject {
    Q_OBJECT

public:
    /// An object that the compositor offers to every program.
    struct Global {
        std::uint32_t name = 0;
        QByteArray interface;
        std::uint32_t version = 0;
    };

    /// The socket's path; empty where the environment names none.
    [[nodiscard]] static QByteArray socketOf(const QProcessEnvironment& environment);
    /// Null where libwayland is missing or nothing answers there. Waits for the compositor's list of globals.
    [[nodiscard]] static std::unique_ptr<WaylandConnection> open(const QByteArray& socket);
    Q_DISABLE_COPY_MOVE(WaylandConnection)
    ~WaylandConnection() override;

    [[nodiscard]] const std::vector<Global>& globals() const { return m_globals; }
    [[nodiscard]] bool offers(const char* interface) const { return find(interface) != nullptr; }
    /// The first global of the interface, in the highest version that both sides know; null where there is
    /// none.
    template <class Object>
    [[nodiscard]] Object* bind(const wl_interface& interface, std::uint32_t highestVersion)
    {
        return static_cast<Object*>(bindGlobal(find(interface.name), interface, highestVersion));
    }
    template <class Object>
    [[nodiscard]] Object* bind(const Global& global, const wl_interface& interface,
                               std::uint32_t highestVersion)
    {
        return static_cast<Object*>(bindGlobal(&global, interface, highestVersion));
    }
    /// The first seat; null where there is none. Of the connection, until the seat has gone.
    [[nodiscard]] wl_seat* seat();
    /// The compositor has said by an object of the seat that the seat has gone, and may not have said so
    /// itself yet. `seat()` is another one from now on.
    void dropSeat();

    void flush();
    /// Every event that the compositor has sent until now has been handled when this returns.
    void catchUp();
    /// Whether the compositor has gone, as far as is known.
    [[nodiscard]] bool isBroken() const;
    /// The process at the other end; 0 where the system does not tell.
    [[nodiscard]] int compositorProcess() const;

Q_SIGNALS:
    void appeared(const tulvane::WaylandConnection::Global& global);
    void disappeared(std::uint32_t name);
    /// The compositor has ended the connection. From the event loop, once.
    void closed();

private:
    explicit WaylandConnection(wl_display* display);
    [[nodiscard]] const Global* find(const char* interface) const;
    [[nodiscard]] void* bindGlobal(const Global* global, const wl_interface& interface,
                                   std::uint32_t highestVersion);
    void remove(std::uint32_t name);
    void readSocket();
    void noticeEnd();

    const WaylandLibrary& m_library;
    wl_display* m_display;
    std::unique_ptr<QSocketNotifier> m_readable; ///< null without an event loop: then `catchUp()` alone reads
    wl_registry* m_registry;
    wl_seat* m_seat = nullptr;
    std::uint32_t m_seatName = 0; ///< among the globals, where there is a seat
    std::vector<Global> m_globals;
    bool m_hasEnded = false;
};

} // namespace tulvane
