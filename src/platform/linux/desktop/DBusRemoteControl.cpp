#include <base/Log.h>
#include <platform/linux/caller/RemoteNames.h>
#include <platform/linux/desktop/DBusRemoteControl.h>
#include <platform/linux/desktop/RemoteObject.h>

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QJsonDocument>
#include <QPromise>
#include <QUuid>

namespace tulvane {

namespace {

using Answered = Result<QJsonObject, RemoteError>;

constexpr int longestWait = 5000; // ms

/// A connection of its own, so that several in one process do not share the name on the bus.
QDBusConnection connectTo(const QString& address, const QString& name)
{
    return address.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, name)
                             : QDBusConnection::connectToBus(address, name);
}

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
    : m_name(QUuid::createUuid().toString()),
      m_bus(connectTo(address, m_name))
{
}

DBusRemoteControl::~DBusRemoteControl()
{
    if (m_object) {
        m_bus.unregisterObject(remoteNames::path);
        m_bus.unregisterService(remoteNames::service);
    }
    QDBusConnection::disconnectFromBus(m_name);
}

RemoteControl::Claim DBusRemoteControl::claim(Answer answer)
{
    if (!m_bus.isConnected()) {
        qCWarning(lcApp, "No session bus: the program cannot be controlled from outside");
        return Claim::impossible;
    }
    // First the object, then the name: a caller that sees the name finds an object that answers.
    m_object = std::make_unique<RemoteObject>(std::move(answer));
    m_bus.registerObject(remoteNames::path, m_object.get(),
                         QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
    if (m_bus.registerService(remoteNames::service))
        return Claim::granted;
    m_bus.unregisterObject(remoteNames::path);
    m_object.reset();
    return Claim::taken;
}

void DBusRemoteControl::announcePhase(const QString& phase)
{
    if (m_object)
        Q_EMIT m_object->PhaseChanged(phase);
}

QFuture<Answered> DBusRemoteControl::ask(RemoteRequest request, const QString& argument)
{
    if (!m_bus.isConnected())
        return QtFuture::makeReadyFuture<Answered>(failure(RemoteError::noConnection));
    QDBusMessage call = QDBusMessage::createMethodCall(remoteNames::service, remoteNames::path,
                                                       remoteNames::service, remoteNames::methodOf(request));
    call.setAutoStartService(false);
    if (request == RemoteRequest::activate || request == RemoteRequest::settings)
        call.setArguments({argument});
    const auto promise = std::make_shared<QPromise<Answered>>();
    promise->start();
    auto* const watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call, longestWait));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, promise] {
        promise->addResult(read(*watcher));
        promise->finish();
        watcher->deleteLater();
    });
    return promise->future();
}

} // namespace tulvane
