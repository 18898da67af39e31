#pragma once

#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QVariantMap>

#include <chrono>
#include <memory>

namespace tulvane {

class LastingBus;

/// What the user has decided, in the desktop's privacy settings, about a program and the microphone: the
/// desktop's portals keep it in their permission store. Asks in the background and starts nothing; follows
/// changes. Main thread.
class MicrophonePermission final : public QObject {
    Q_OBJECT

public:
    /// `program` as the desktop's settings know it ("com.dunio.Tulvane").
    MicrophonePermission(std::shared_ptr<LastingBus> bus, const QString& program);
    ~MicrophonePermission() override;

    /// False while nothing has been decided, and while the store has not answered.
    [[nodiscard]] bool isDenied() const { return m_isDenied; }
    /// Waits for the first answer, no longer than this; for short processes.
    void waitForAnswer(std::chrono::milliseconds limit) const;

Q_SIGNALS:
    void answered();

private Q_SLOTS:
    void noteChange(const QDBusMessage& signal);

private:
    void listen();
    void ask();
    void note(const QVariant& permissions);

    std::shared_ptr<LastingBus> m_bus;
    QDBusServiceWatcher m_watcher;
    QString m_program;
    bool m_isAnswered = false;
    bool m_isDenied = false;
};

} // namespace tulvane
