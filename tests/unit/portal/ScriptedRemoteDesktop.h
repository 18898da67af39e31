#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace tulvane::test {

/// A portal with remote control, as a desktop's answers: the test says what the user does. Main thread.
class ScriptedRemoteDesktop final : public QDBusVirtualObject {
public:
    enum class User { agrees, declines, isSilent };

    explicit ScriptedRemoteDesktop(QDBusConnection bus, uint version = 1);
    ScriptedRemoteDesktop(const ScriptedRemoteDesktop&) = delete;
    ScriptedRemoteDesktop& operator=(const ScriptedRemoteDesktop&) = delete;
    ~ScriptedRemoteDesktop() override;

    User user = User::agrees;
    uint devices = 1;      ///< that the user agrees to
    bool isBroken = false; ///< every question is answered with a failure
    QString nextToken;     ///< which the program is given to be known by; none where empty
    QStringList calls;
    QVariantMap selection; ///< the options of the last SelectDevices
    /// "29+" for a key that went down, "29-" for one that went up. The key that wakes a new keyboard is left
    /// out.
    QStringList keys;

    [[nodiscard]] bool isOpen() const { return !m_session.isEmpty(); }
    /// How many dialogs there were.
    [[nodiscard]] qsizetype dialogs() const { return calls.count(QStringLiteral("Start")); }
    /// The user answers the dialog that waits.
    void answer(bool agrees);
    /// The user, or the desktop, ends the session.
    void endSession();
    /// Its process ends; another one starts with `start`.
    void quit();
    void start();

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    [[nodiscard]] QDBusMessage reply(const QDBusMessage& message);
    [[nodiscard]] QDBusMessage request(const QDBusMessage& message);
    [[nodiscard]] QDBusMessage noteKey(const QDBusMessage& message);
    void respond(const QString& path, uint response, const QVariantMap& results);

    QDBusConnection m_bus;
    uint m_version;
    QString m_session;
    QString m_waiting; ///< the request whose dialog waits
};

} // namespace tulvane::test
