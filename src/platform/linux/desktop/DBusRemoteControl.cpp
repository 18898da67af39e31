#include <base/Log.h>
#include <platform/linux/caller/RemoteNames.h>
#include <platform/linux/desktop/BusReturn.h>
#include <platform/linux/desktop/DBusRemoteControl.h>
#include <platform/linux/desktop/OwnConnection.h>
#include <platform/linux/desktop/RemoteObject.h>

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QJsonDocument>
#include <QPromise>

namespace tulvane {

namespace {

using Answered = Result<QJsonObject, RemoteError>;

constexpr int longestWait = 5000; // ms

Answered read(const QDBusPendingReply<QString>& reply)
{
    if (reply.isError()) {
        const bool isAbsent = reply.error().type() == QDBusError::ServiceUnknown ||
                              reply.error().name() == u"org.freedesktop.DBus.Error.NameHasNoOwner";
        return failure(isAbsent ? RemoteError::notRunning : RemoteError::noAnswer);
    }
    const QJsonDocument document = QJsonDocument::fromJson(reply.value().toUtf8());
    if (!document.isObject())
        return failure(RemoteError::noAnswer);
    return document.object();
}

} // namespace

DBusRemoteControl::DBusRemoteControl(const QString& address)
    : m_address(address),
      m_connection(std::make_shared<OwnConnection>(address))
{
}

DBusRemoteControl::~DBusRemoteControl()
{
    if (m_object) {
        QDBusConnection bus = m_connection->bus();
        bus.unregisterObject(remoteNames::path);
        bus.unregisterService(remoteNames::service);
    }
}

void DBusRemoteControl::showObject()
{
    m_connection->bus().registerObject(remoteNames::path, m_object.get(),
                                       QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
}

RemoteControl::Claim DBusRemoteControl::claim(Answer answer)
{
    QDBusConnection bus = m_connection->bus();
    if (!bus.isConnected()) {
        qCWarning(lcApp, "No session bus: the program cannot be controlled from outside");
        return Claim::impossible;
    }
    // First the object, then the name: a caller that sees the name finds an object that answers.
    m_object = std::make_unique<RemoteObject>(std::move(answer));
    showObject();
    if (!bus.registerService(remoteNames::service)) {
        bus.unregisterObject(remoteNames::path);
        m_object.reset();
        return Claim::taken;
    }
    m_return = std::make_unique<BusReturn>(m_connection->bus(), m_address,
                                           [this](auto connection) { goOnOver(std::move(connection)); });
    return Claim::granted;
}

void DBusRemoteControl::goOnOver(std::shared_ptr<OwnConnection> connection)
{
    m_connection->bus().unregisterObject(remoteNames::path);
    m_connection = std::move(connection);
    showObject();
    // Not `registerService`, which would wait for the answer.
    QDBusMessage request = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("RequestName"));
    constexpr uint doNotQueue = 4;
    request.setArguments({remoteNames::service, doNotQueue});
    m_connection->bus().asyncCall(request);
    qCInfo(lcApp, "The session bus is back: the program can be controlled from outside again");
}

void DBusRemoteControl::announcePhase(const QString& phase)
{
    if (m_object)
        Q_EMIT m_object->PhaseChanged(phase);
}

QFuture<Answered> DBusRemoteControl::ask(RemoteRequest request, const QString& argument)
{
    const QDBusConnection bus = m_connection->bus();
    if (!bus.isConnected())
        return QtFuture::makeReadyFuture<Answered>(failure(RemoteError::noConnection));
    QDBusMessage call = QDBusMessage::createMethodCall(remoteNames::service, remoteNames::path,
                                                       remoteNames::service, remoteNames::methodOf(request));
    call.setAutoStartService(false);
    if (request == RemoteRequest::activate || request == RemoteRequest::settings)
        call.setArguments({argument});
    const auto promise = std::make_shared<QPromise<Answered>>();
    promise->start();
    auto* const watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, longestWait));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, promise] {
        promise->addResult(read(*watcher));
        promise->finish();
        watcher->deleteLater();
    });
    return promise->future();
}

} // namespace tulvane
