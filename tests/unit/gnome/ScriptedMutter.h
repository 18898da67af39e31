#pragma once

#include <support/PrivateBus.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QSet>
#include <QStringList>

namespace tulvane::test {

/// A bus of a test's own with a service for remote control as GNOME has it, which keeps what it was asked.
/// Main thread.
class ScriptedMutter final : public QDBusVirtualObject {
public:
    ScriptedMutter();
    ScriptedMutter(const ScriptedMutter&) = delete;
    ScriptedMutter& operator=(const ScriptedMutter&) = delete;
    ~ScriptedMutter() override;

    [[nodiscard]] QString bus() const { return m_bus.address(); }
    /// How many sessions are open.
    [[nodiscard]] qsizetype sessions() const { return m_sessions.size(); }
    /// The desktop, or its user, ends them.
    void endSessions() { m_sessions.clear(); }

    /// What the sessions pressed: "29+" for a key that went down, "29-" for one that went up. The key that
    /// wakes a new keyboard is left out.
    QStringList keys;
    int opened = 0; ///< sessions, ever
    bool refuses = false;
    QSet<QString> failing; ///< of the words of `keys`

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    [[nodiscard]] QDBusMessage answer(const QDBusMessage& message);

    PrivateBus m_bus;
    QDBusConnection m_connection{QString()};
    QSet<QString> m_sessions;
};

} // namespace tulvane::test
