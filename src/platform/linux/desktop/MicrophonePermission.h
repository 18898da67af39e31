#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QVariantMap>

#include <chrono>

namespace tulvane {

/// What the user has decided, in the desktop's privacy settings, about a program and the microphone: the
/// desktop's portals keep it in their permission store. Asks in the background and starts nothing; follows
/// changes. Main thread.
class MicrophonePermission final : public QObject {
    Q_OBJECT

public:
    /// `program` as the desktop's settings know it ("com.dunio.Tulvane").
    MicrophonePermission(const QDBusConnection& bus, const QString& program);
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
    void ask();
    void note(const QVariant& permissions);

    QDBusConnection m_bus;
    QString m_program;
    bool m_isAnswered = false;
    bool m_isDenied = false;
};

} // namespace tulvane
