#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QObject>
#include <QProcessEnvironment>
#include <QSocketNotifier>

#include <memory>
#include <optional>

namespace tulvane {

/// Sway's own socket: questions with their answers, and events. Main thread; waits for sway, at most
/// `answerLimitMs`, and never for another program. When sway goes, every question is without an answer.
class SwayConnection final : public QObject {
    Q_OBJECT

public:
    static constexpr int answerLimitMs = 1000;

    enum class Question : quint32 {
        run = 0,
        subscribe = 2,
        tree = 4,
        version = 7,
        config = 9,
        bindingState = 12,
        seats = 101
    };
    enum class Event : quint32 {
        workspace = 0x80000000,
        mode = 0x80000002,
        window = 0x80000003,
        binding = 0x80000005
    };

    /// The socket's path, as in SWAYSOCK.
    [[nodiscard]] static QByteArray socketOf(const QProcessEnvironment& environment);
    /// Whether something answers there. Needs no application object.
    [[nodiscard]] static bool answers(const QByteArray& socket);
    /// Null where nothing answers there.
    [[nodiscard]] static std::unique_ptr<SwayConnection> open(const QByteArray& socket);
    Q_DISABLE_COPY_MOVE(SwayConnection)
    ~SwayConnection() override;

    [[nodiscard]] std::optional<QJsonDocument> ask(Question question, const QByteArray& about = {});
    /// Whether sway did all of these commands.
    bool run(const QString& commands);
    [[nodiscard]] bool isBroken() const { return m_isBroken; }

Q_SIGNALS:
    /// From the event loop.
    void happened(tulvane::SwayConnection::Event event, const QJsonObject& about);
    /// Sway has ended the connection. From the event loop, once.
    void closed();

private:
    struct Message;
    SwayConnection(int questions, int events);

    [[nodiscard]] bool subscribe();
    void readEvents();
    void noticeEnd();

    int m_questions;
    int m_events;
    QSocketNotifier m_readable;
    QByteArray m_pending; ///< of events, not yet whole
    bool m_isBroken = false;
};

} // namespace tulvane
