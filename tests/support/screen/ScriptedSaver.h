#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QString>

namespace tulvane::test {

/// A screen saver on a session bus, which covers the screen when the test says so. Answers from the event
/// loop of the test.
class ScriptedSaver final : public QDBusVirtualObject {
public:
    /// `bus` is an address, `name` the saver's ("org.gnome.ScreenSaver"). Throws std::runtime_error where the
    /// name is taken.
    ScriptedSaver(const QString& bus, const QString& name, bool active = false);
    ScriptedSaver(const ScriptedSaver&) = delete;
    ScriptedSaver& operator=(const ScriptedSaver&) = delete;
    ~ScriptedSaver() override;

    void setActive(bool active);

    [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    QString m_name;
    QString m_path;
    QString m_link; ///< the connection's name in this process
    QDBusConnection m_bus;
    bool m_active;
};

} // namespace tulvane::test
