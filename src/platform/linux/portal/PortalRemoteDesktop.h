#pragma once

#include <base/async/Lifetime.h>
#include <platform/linux/atspi/BusLink.h>
#include <platform/linux/portal/PortalQuestion.h>
#include <platform/linux/remote/RemoteDesktop.h>

#include <QObject>

#include <memory>

class QDBusServiceWatcher;

namespace tulvane {

class LastingBus;
class UserDefaults;

/// Keys by the desktop's portal, which asks the user in a dialog first: at each start of the program, where
/// the portal is old, once where it keeps the answer. So the one session is opened on the user's wish, and
/// kept for the program's life. What the user has once allowed is asked for again at the program's next
/// starts. Main thread.
class PortalRemoteDesktop final : public QObject, public RemoteDesktop {
    Q_OBJECT

public:
    enum class State {
        notAsked,
        asking, ///< the user sees the dialog, or is about to
        granted,
        declined,
        noKeyboard, ///< the user agreed, but not to keys
        ended,      ///< by the user, or with the portal
        failed,     ///< the portal cannot ask
    };
    static inline const QString interface = QStringLiteral("org.freedesktop.portal.RemoteDesktop");
    /// For a portal that keeps the user's answer: what it gave us to be known by, once.
    static inline const QString tokenKey = QStringLiteral("remoteDesktopToken");
    static inline const QString allowedKey = QStringLiteral("remoteDesktopAllowed");

    /// Asks at once where the user has allowed it before. `keysToLetGo`: as the port has them.
    PortalRemoteDesktop(std::shared_ptr<LastingBus> bus, std::shared_ptr<UserDefaults> defaults,
                        QList<quint32> keysToLetGo);
    Q_DISABLE_COPY_MOVE(PortalRemoteDesktop)
    ~PortalRemoteDesktop() override;

    [[nodiscard]] State state() const { return m_state; }
    /// Whether the portal keeps the user's answer, as far as is known yet.
    [[nodiscard]] bool isRemembered() const { return m_version >= firstThatRemembers; }
    /// Has the desktop show its dialog, in the place of one that is there already. Nothing once it was agreed
    /// to.
    void ask();

    /// The session that the user has agreed to, and no other.
    [[nodiscard]] QCoro::Task<QString> open() override;
    /// Nothing: a new session would ask again.
    QCoro::Task<> close(QString session) override;
    [[nodiscard]] QCoro::Task<bool> key(QString session, quint32 evdev, bool isDown) override;
    QCoro::Task<> catchUp(QString session) override;
    [[nodiscard]] QList<quint32> keysToLetGo() const override { return m_keysToLetGo; }

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void closed();

private:
    static constexpr uint firstThatRemembers = 2;

    void learnVersion();
    void noteSession(PortalRequest::Outcome outcome, const QVariantMap& results);
    void noteDevices(PortalRequest::Outcome outcome, const QVariantMap& results);
    void noteStart(PortalRequest::Outcome outcome, const QVariantMap& results);
    PortalRequest& request(void (PortalRemoteDesktop::*answered)(PortalRequest::Outcome, const QVariantMap&));
    void fail(PortalRequest::Outcome outcome);
    void enter(State state);
    /// The session, if there is one, and the question for one.
    void drop();
    void lose();
    /// The keyboard that was agreed to; it is granted once its keys arrive.
    QCoro::Task<> wake();
    void store(const QString& key, const QVariant& value);

    std::shared_ptr<LastingBus> m_bus;
    std::shared_ptr<UserDefaults> m_defaults;
    QList<quint32> m_keysToLetGo;
    std::unique_ptr<QDBusServiceWatcher> m_watcher;
    BusLink m_link;
    State m_state = State::notAsked;
    uint m_version = 1;
    PortalQuestion m_question{this};
    QString m_session; ///< the path of the portal's session; empty while there is none
    Lifetime m_lifetime;
};

} // namespace tulvane
