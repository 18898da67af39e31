#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QString>

namespace tulvane::test {

/// A login manager on a bus, with one session, "7", which is also every caller's own. Answers from the event
/// loop of the test.
class ScriptedLoginManager final : public QDBusVirtualObject {
public:
    /// Throws std::runtime_error where there is one already.
    explicit ScriptedLoginManager(const QString& bus, bool locked = false);
    ScriptedLoginManager(const ScriptedLoginManager&) = delete;
    ScriptedLoginManager& operator=(const ScriptedLoginManager&) = delete;
    ~ScriptedLoginManager() override;

    /// The property; `invalidated`: it is named as changed, without its value.
    enum class Telling { withValue, invalidated };
    void setLockedHint(bool locked, Telling telling = Telling::withValue);
    /// The signals "Lock" and "Unlock".
    void requestLock() { signal("Lock"); }
    void requestUnlock() { signal("Unlock"); }

    [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    void signal(const char* name);

    QString m_link; ///< the connection's name in this process
    QDBusConnection m_bus;
    bool m_locked;
};

} // namespace tulvane::test
