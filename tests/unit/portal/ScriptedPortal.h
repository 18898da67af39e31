#pragma once

#include <platform/linux/portal/PortalShortcut.h>

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusObjectPath>
#include <QObject>
#include <QStringList>

namespace tulvane::test {

/// A portal with global shortcuts, as a desktop's answers: the test says what the user does.
class ScriptedPortal final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.GlobalShortcuts")

public:
    explicit ScriptedPortal(QDBusConnection bus);
    Q_DISABLE_COPY_MOVE(ScriptedPortal)
    ~ScriptedPortal() override;

    enum class User { agrees, declines, isSilent };
    User user = User::agrees;
    /// Shortcuts of CreateSession count, as on KDE 5; otherwise those of BindShortcuts.
    bool bindsAtSession = false;
    QString trigger = QStringLiteral("Alt+Space");
    QStringList calls;
    QString preferred; ///< of the last binding

    void press(bool isDown);
    void rebind(const QString& newTrigger);
    void endSession();
    [[nodiscard]] int sessions() const
    {
        return static_cast<int>(calls.count(QStringLiteral("CreateSession")));
    }
    [[nodiscard]] bool isOpen() const { return !m_session.isEmpty(); }
    /// The portal's process ends, and another one starts.
    void restart();

public Q_SLOTS:
    QDBusObjectPath CreateSession(const QVariantMap& options);
    QDBusObjectPath ListShortcuts(const QDBusObjectPath& session, const QVariantMap& options);
    QDBusObjectPath BindShortcuts(const QDBusObjectPath& session, const tulvane::PortalShortcuts& shortcuts,
                                  const QString& parent, const QVariantMap& options);

private:
    friend class ScriptedSession;
    [[nodiscard]] QDBusObjectPath answer(const QVariantMap& options, uint response,
                                         const QVariantMap& results);
    [[nodiscard]] QVariantMap bound() const;
    void bind(const PortalShortcuts& shortcuts);
    void signal(const QString& name, const QVariantList& arguments);

    QDBusConnection m_bus;
    std::unique_ptr<QObject> m_sessionObject;
    QString m_session;
    PortalShortcuts m_bound;
};

/// The object of the session, which its owner closes.
class ScriptedSession final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Session")

public:
    explicit ScriptedSession(ScriptedPortal& portal) : m_portal(portal) {}

public Q_SLOTS:
    void Close();

private:
    ScriptedPortal& m_portal;
};

} // namespace tulvane::test
