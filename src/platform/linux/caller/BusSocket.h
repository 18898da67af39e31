#pragma once

#include <QByteArray>
#include <QDeadlineTimer>

#include <memory>
#include <optional>

namespace tulvane {

/// A connection to a message bus, with nothing of a library behind it. Any one thread. Every call blocks
/// until it is done, at most until its deadline.
class BusSocket final {
public:
    /// `socket` as `busSockets` gives it. Null where no bus takes us there.
    [[nodiscard]] static std::unique_ptr<BusSocket> open(const QByteArray& socket, const QDeadlineTimer& end);
    BusSocket(const BusSocket&) = delete;
    BusSocket& operator=(const BusSocket&) = delete;
    ~BusSocket();

    /// False once the other side has gone.
    [[nodiscard]] bool isOpen() const { return m_isOpen; }
    [[nodiscard]] bool send(const QByteArray& bytes, const QDeadlineTimer& end);
    /// The next message; nothing where none came in time, or what came is none.
    [[nodiscard]] std::optional<QByteArray> receive(const QDeadlineTimer& end);

private:
    explicit BusSocket(int socket) : m_socket(socket) {}
    [[nodiscard]] bool authenticate(const QDeadlineTimer& end);
    [[nodiscard]] bool wait(short events, const QDeadlineTimer& end) const;
    /// Takes in what has come, or waits for it.
    [[nodiscard]] bool readMore(const QDeadlineTimer& end);

    int m_socket;
    bool m_isOpen = true;
    QByteArray m_received;
};

} // namespace tulvane
