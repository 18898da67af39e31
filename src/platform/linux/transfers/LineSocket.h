#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QObject>
#include <QSocketNotifier>

#include <memory>

namespace tulvane::transfers {

/// A local stream socket that carries one JSON object per line, both ways. Only processes of the same user
/// are spoken to. Lives on a thread with an event loop. Not QLocalSocket: that would load the network library
/// into every start of the program.
class LineSocket final : public QObject {
    Q_OBJECT

public:
    /// Takes over a connected, non-blocking socket.
    explicit LineSocket(int descriptor, QObject* parent = nullptr);
    Q_DISABLE_COPY_MOVE(LineSocket)
    ~LineSocket() override;

    /// Connects to the socket at `path`; null when no process of this user listens there.
    [[nodiscard]] static std::unique_ptr<LineSocket> connectTo(const QString& path);
    /// Whether the process at the other end runs as the same user.
    [[nodiscard]] static bool isSameUser(int descriptor);

    [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }
    void send(const QJsonObject& message);
    /// Sends what it can without waiting and closes; `closed` is not emitted.
    void close();

Q_SIGNALS:
    void received(const QJsonObject& message);
    /// The other end is gone, or talks nonsense. Emitted once, from the event loop.
    void closed();

private:
    void readReady();
    void writeReady();
    void takeLines();
    void drop();

    int m_descriptor;
    QSocketNotifier m_readable;
    QSocketNotifier m_writable;
    QByteArray m_incoming;
    QByteArray m_outgoing;
};

} // namespace tulvane::transfers
