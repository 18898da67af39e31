#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QList>
#include <QMutex>
#include <QStringList>
#include <QThread>

namespace tulvane::test {

/// KDE's service for shortcuts, as far as the program asks it. It answers in a thread of its own, since the
/// program waits. Nobody else has a combination.
class ScriptedKGlobalAccel final : public QDBusVirtualObject {
    Q_OBJECT

public:
    ScriptedKGlobalAccel();
    Q_DISABLE_COPY_MOVE(ScriptedKGlobalAccel)
    ~ScriptedKGlobalAccel() override;

    /// Has its name on the bus at this address; `doesItsWork` says whether it has its object as well.
    void appear(const QString& address, bool doesItsWork = true);
    void doItsWork();
    /// Its process ends, and what it knew of active combinations with it.
    void disappear();
    void press(bool isDown);

    /// The actions whose combination is theirs now.
    [[nodiscard]] QStringList active();
    [[nodiscard]] QStringList calls();

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    [[nodiscard]] QVariantList answer(const QDBusMessage& message);
    [[nodiscard]] QVariantList setKeys(const QVariantList& words);

    QThread m_thread;
    QMutex m_mutex; ///< of what follows
    QString m_connection;
    QList<int> m_defaults;
    QStringList m_active;
    QStringList m_calls;
};

} // namespace tulvane::test
