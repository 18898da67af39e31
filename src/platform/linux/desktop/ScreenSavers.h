#pragma once

#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QSet>
#include <QString>

#include <memory>

namespace tulvane {

class LastingBus;

/// The screen savers and lockers that say over the session bus whether they cover the screen. Asks in the
/// background, starts none, and never waits. One that goes away covers nothing; while
/// the bus is gone, what they last said holds. Main thread.
class ScreenSavers final : public QObject {
    Q_OBJECT

public:
    explicit ScreenSavers(std::shared_ptr<LastingBus> bus);
    ~ScreenSavers() override;

    [[nodiscard]] bool isActive() const { return !m_active.isEmpty(); }

Q_SIGNALS:
    /// `isActive` has another answer.
    void changed();

private Q_SLOTS:
    void note(bool active, const QDBusMessage& signal);

private:
    void listen();
    void ask(const QString& name);
    void setActive(const QString& name, bool active);

    std::shared_ptr<LastingBus> m_bus;
    QDBusServiceWatcher m_watcher;
    QSet<QString> m_active; ///< by name on the bus
};

} // namespace tulvane
