#include <base/Log.h>
#include <platform/linux/portal/PortalRequest.h>

#include <QCoreApplication>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

namespace tulvane {

namespace {

const QString requestInterface = QStringLiteral("org.freedesktop.portal.Request");

} // namespace

QString PortalRequest::freshToken()
{
    static int count = 0;
    return QStringLiteral("tulvane_%1_%2").arg(QCoreApplication::applicationPid()).arg(++count);
}

QString PortalRequest::sessionIn(const QVariantMap& results)
{
    const QVariant handle = results.value(QStringLiteral("session_handle"));
    return handle.canConvert<QDBusObjectPath>() ? handle.value<QDBusObjectPath>().path() : handle.toString();
}

PortalRequest::PortalRequest(QDBusConnection bus, QObject* parent) : QObject(parent), m_bus(std::move(bus)) {}

void PortalRequest::send(const QString& interface, const QString& method, QVariantList arguments,
                         QVariantMap options)
{
    const QString token = freshToken();
    options.insert(QStringLiteral("handle_token"), token);
    arguments.append(options);
    // Listened for before the question, or a fast answer would be missed.
    const QString sender = m_bus.baseService().mid(1).replace(u'.', u'_');
    listenAt(path + QStringLiteral("/request/%1/%2").arg(sender, token));
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, interface, method);
    call.setArguments(arguments);
    auto* const watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<QDBusObjectPath> reply(*watcher);
        watcher->deleteLater();
        if (reply.isError()) {
            qCInfo(lcApp, "The desktop's portal: %ls", qUtf16Printable(reply.error().message()));
            respond(2, {});
        } else if (reply.value().path() != m_path) {
            listenAt(reply.value().path()); // as portals before 0.9 name it
        }
    });
}

void PortalRequest::listenAt(const QString& requestPath)
{
    m_path = requestPath;
    m_bus.connect(service, requestPath, requestInterface, QStringLiteral("Response"), this,
                  SLOT(respond(uint, QVariantMap)));
}

void PortalRequest::respond(uint response, const QVariantMap& results)
{
    if (std::exchange(m_isAnswered, true))
        return;
    const Outcome outcome = response == 0   ? Outcome::granted
                            : response == 1 ? Outcome::cancelled
                                            : Outcome::failed;
    Q_EMIT answered(outcome, results);
}

} // namespace tulvane
