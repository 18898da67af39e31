#include <base/Log.h>
#include <platform/linux/desktop/BusAnswer.h>
#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/portal/PortalRemoteDesktop.h>
#include <ports/UserDefaults.h>

#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QTimer>

#include <utility>

namespace tulvane {

namespace {

using std::chrono::milliseconds;

const QString tokenName = QStringLiteral("restore_token");
constexpr uint keyboard = 1;
/// Until the user takes it back.
constexpr uint forGood = 2;
constexpr milliseconds callLimit{2500};
/// For an answer that comes after the end of its session.
constexpr milliseconds answerTime{1000};

QVariant asPath(const QString& session)
{
    return QVariant::fromValue(QDBusObjectPath(session));
}

} // namespace

PortalRemoteDesktop::PortalRemoteDesktop(std::shared_ptr<LastingBus> bus,
                                         std::shared_ptr<UserDefaults> defaults, QList<quint32> keysToLetGo)
    : m_bus(std::move(bus)),
      m_defaults(std::move(defaults)),
      m_keysToLetGo(std::move(keysToLetGo)),
      m_watcher(std::make_unique<QDBusServiceWatcher>(PortalRequest::service, m_bus->connection(),
                                                      QDBusServiceWatcher::WatchForUnregistration))
{
    connect(m_watcher.get(), &QDBusServiceWatcher::serviceUnregistered, this, &PortalRemoteDesktop::lose);
    connect(m_bus.get(), &LastingBus::lost, this, &PortalRemoteDesktop::lose);
    connect(m_bus.get(), &LastingBus::returned, this, [this] {
        m_watcher->setConnection(m_bus->connection());
        learnVersion();
    });
    learnVersion();
    if (m_defaults && m_defaults->value(allowedKey).toBool())
        ask();
}

PortalRemoteDesktop::~PortalRemoteDesktop()
{
    m_lifetime.end();
    m_link.close();
    drop();
}

void PortalRemoteDesktop::learnVersion()
{
    QDBusMessage get = QDBusMessage::createMethodCall(PortalRequest::service, PortalRequest::path,
                                                      QStringLiteral("org.freedesktop.DBus.Properties"),
                                                      QStringLiteral("Get"));
    get << interface << QStringLiteral("version");
    whenAnswered<QDBusVariant>(m_bus->connection().asyncCall(get), this, [this](const auto& answer) {
        if (!answer.isError())
            m_version = answer.value().variant().toUInt();
        Q_EMIT changed();
    });
}

PortalRequest& PortalRemoteDesktop::request(void (PortalRemoteDesktop::*answered)(PortalRequest::Outcome,
                                                                                  const QVariantMap&))
{
    return m_question.begin(m_bus->connection(), [this, answered](auto outcome, const QVariantMap& results) {
        (this->*answered)(outcome, results);
    });
}

void PortalRemoteDesktop::ask()
{
    // The dialog may be lost from sight: another one takes its place.
    const bool isOnItsWay = m_state == State::asking && m_session.isEmpty();
    if (m_state == State::granted || isOnItsWay)
        return;
    drop();
    enter(State::asking);
    // Another one each time: the desktop's part may keep the name of a session that a crash of the portal
    // ended.
    request(&PortalRemoteDesktop::noteSession)
        .send(interface, QStringLiteral("CreateSession"), {},
              {{QStringLiteral("session_handle_token"), PortalRequest::freshToken()}});
}

void PortalRemoteDesktop::noteSession(PortalRequest::Outcome outcome, const QVariantMap& results)
{
    if (outcome != PortalRequest::Outcome::granted) {
        fail(outcome);
        return;
    }
    m_session = PortalRequest::sessionIn(results);
    m_bus->connection().connect(PortalRequest::service, m_session, PortalRequest::sessionInterface,
                                QStringLiteral("Closed"), this, SLOT(closed()));
    // Portals that keep no answer leave out what they do not know.
    QVariantMap options{{QStringLiteral("types"), keyboard}, {QStringLiteral("persist_mode"), forGood}};
    const QString token = m_defaults ? m_defaults->value(tokenKey).toString() : QString();
    if (!token.isEmpty())
        options.insert(tokenName, token);
    request(&PortalRemoteDesktop::noteDevices)
        .send(interface, QStringLiteral("SelectDevices"), {asPath(m_session)}, options);
}

void PortalRemoteDesktop::noteDevices(PortalRequest::Outcome outcome, const QVariantMap& /*results*/)
{
    if (outcome != PortalRequest::Outcome::granted) {
        fail(outcome);
        return;
    }
    const QString noParentWindow;
    request(&PortalRemoteDesktop::noteStart)
        .send(interface, QStringLiteral("Start"), {asPath(m_session), noParentWindow}, {});
}

void PortalRemoteDesktop::noteStart(PortalRequest::Outcome outcome, const QVariantMap& results)
{
    if (outcome != PortalRequest::Outcome::granted) {
        fail(outcome);
        return;
    }
    m_question.end();
    store(tokenKey, results.value(tokenName));
    if (m_session.isEmpty()) {
        lose();
        return;
    }
    if ((results.value(QStringLiteral("devices")).toUInt() & keyboard) == 0) {
        drop();
        store(allowedKey, {});
        enter(State::noKeyboard);
        return;
    }
    store(allowedKey, true);
    qCInfo(lcInsertion, "The desktop's portal lets Tulvane press keys");
    wake();
}

void PortalRemoteDesktop::fail(PortalRequest::Outcome outcome)
{
    const bool isDeclined = outcome == PortalRequest::Outcome::cancelled;
    qCWarning(lcInsertion, "The desktop's portal does not let Tulvane press keys: %s",
              isDeclined ? "declined" : "failed");
    drop();
    // Who declines is not to be asked at each start.
    if (isDeclined)
        store(allowedKey, {});
    enter(isDeclined ? State::declined : State::failed);
}

void PortalRemoteDesktop::enter(State state)
{
    m_state = state;
    Q_EMIT changed();
}

void PortalRemoteDesktop::drop()
{
    m_question.end();
    const QString session = std::exchange(m_session, {});
    if (session.isEmpty())
        return;
    QDBusConnection bus = m_bus->connection();
    bus.disconnect(PortalRequest::service, session, PortalRequest::sessionInterface, QStringLiteral("Closed"),
                   this, SLOT(closed()));
    bus.send(QDBusMessage::createMethodCall(PortalRequest::service, session, PortalRequest::sessionInterface,
                                            QStringLiteral("Close")));
}

void PortalRemoteDesktop::closed()
{
    qCInfo(lcInsertion, "The session of the desktop's portal was ended");
    if (m_state != State::asking) {
        lose();
        return;
    }
    // A desktop closes what the user has declined, and may do so before it says that they have.
    m_session.clear();
    QTimer::singleShot(answerTime, this, [this] {
        if (m_state == State::asking && m_session.isEmpty())
            lose();
    });
}

void PortalRemoteDesktop::lose()
{
    // Nothing is closed that is no more there.
    m_session.clear();
    m_question.end();
    if (m_state == State::asking || m_state == State::granted)
        enter(State::ended);
}

void PortalRemoteDesktop::store(const QString& key, const QVariant& value)
{
    if (!m_defaults || m_defaults->value(key) == value)
        return;
    const auto stored = value.isValid() ? m_defaults->set(key, value) : m_defaults->remove(key);
    if (!stored)
        qCWarning(lcInsertion, "Could not store what the desktop's portal has answered");
}

QCoro::Task<> PortalRemoteDesktop::wake()
{
    const Lifetime::Guard alive = m_lifetime.guard();
    const QString session = m_session;
    (void)co_await tap(session, emptyKey);
    if (!alive)
        co_return;
    (void)co_await m_link.pause(settlingTime);
    if (alive && m_state == State::asking && !session.isEmpty() && session == m_session)
        enter(State::granted);
}

QCoro::Task<QString> PortalRemoteDesktop::open()
{
    co_return m_state == State::granted ? m_session : QString();
}

QCoro::Task<> PortalRemoteDesktop::close(QString /*session*/)
{
    co_return;
}

QCoro::Task<bool> PortalRemoteDesktop::key(QString session, quint32 evdev, bool isDown)
{
    if (session.isEmpty() || session != m_session)
        co_return false;
    QDBusMessage message = QDBusMessage::createMethodCall(PortalRequest::service, PortalRequest::path,
                                                          interface, QStringLiteral("NotifyKeyboardKeycode"));
    message << asPath(session) << QVariantMap() << static_cast<int>(evdev) << static_cast<uint>(isDown);
    const auto answer = co_await m_link.call(m_bus->connection(), message, callLimit);
    if (answer && answer->type() != QDBusMessage::ReplyMessage)
        qCWarning(lcInsertion, "Portal: %ls", qUtf16Printable(answer->errorMessage()));
    co_return answer && answer->type() == QDBusMessage::ReplyMessage;
}

QCoro::Task<> PortalRemoteDesktop::catchUp(QString /*session*/)
{
    co_await m_link.call(m_bus->connection(),
                         QDBusMessage::createMethodCall(PortalRequest::service, PortalRequest::path,
                                                        QStringLiteral("org.freedesktop.DBus.Peer"),
                                                        QStringLiteral("Ping")),
                         callLimit);
}

} // namespace tulvane
