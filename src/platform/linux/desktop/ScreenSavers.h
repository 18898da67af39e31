#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QSet>
#include <QString>

namespace tulvane {

/// The screen savers and lockers that say over the session bus whether they cover the screen. Asks in the
/// background, starts none, and never waits. One that goes away covers nothing. Main thread.
class ScreenSavers final : public QObject {
    Q_OBJECT

public:
    explicit ScreenSavers(const QDBusConnection& bus);
    ~ScreenSavers() override;

    [[nodiscard]] bool isActive() const { return !m_active.isEmpty(); }

Q_SIGNALS:
    /// `isActive` has another answer.
    void changed();

private Q_SLOTS:
    void note(bool active, const QDBusMessage& signal);

private:
    void ask(const QString& name);
    void setActive(const QString& name, bool active);

    QDBusConnection m_bus;
    QSet<QString> m_active; ///< by name on the bus
};

} // namespace tulvane
