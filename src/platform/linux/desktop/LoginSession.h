#pragma once

#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QVariantMap>

#include <chrono>
#include <memory>

namespace tulvane {

class LastingBus;

/// The user's login session, as the login manager of the system bus knows it: whether it is locked. A request
/// to lock it counts, too, until a locker has had the time to say that it is there. Asks in the background
/// and never waits. Main thread.
class LoginSession final : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds requestTime{10'000};

    /// `id` as in XDG_SESSION_ID; empty for the session that the login manager finds this process in.
    LoginSession(std::shared_ptr<LastingBus> bus, const QString& id,
                 std::chrono::milliseconds timeForLocker = requestTime);
    ~LoginSession() override;

    [[nodiscard]] bool isLocked() const { return m_hint || m_request.isActive(); }
    /// A locker that was there is gone: what asked for it is fulfilled.
    void endRequest();

Q_SIGNALS:
    /// `isLocked` may have another answer.
    void changed();

private Q_SLOTS:
    void noteChanges(const QString& interface, const QVariantMap& values, const QStringList& invalid);
    void noteLockRequest();
    void noteUnlockRequest();

private:
    void listen();
    void find();
    void follow(const QString& path);
    void askForHint();
    void setHint(bool locked);

    std::shared_ptr<LastingBus> m_bus;
    QDBusServiceWatcher m_watcher;
    QString m_id;
    QString m_path; ///< empty until it is found
    QTimer m_request;
    bool m_hint = false;
};

} // namespace tulvane
