#include "ScriptedPortal.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QTimer>

namespace tulvane::test {

namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
const QString sessionInterface = QStringLiteral("org.freedesktop.portal.Session");

} // namespace

void ScriptedSession::Close()
{
    m_portal.calls.append(QStringLiteral("Close"));
    m_portal.m_session.clear();
}

ScriptedPortal::ScriptedPortal(QDBusConnection bus) : m_bus(std::move(bus))
{
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<PortalShortcuts>();
    qRegisterMetaType<PortalShortcuts>("tulvane::PortalShortcuts"); // as the slot names it
    if (!m_bus.registerObject(path, this, QDBusConnection::ExportAllSlots) || !m_bus.registerService(service))
        qFatal("the portal has no place");
}

ScriptedPortal::~ScriptedPortal()
{
    m_bus.unregisterService(service);
}

void ScriptedPortal::restart()
{
    m_bus.unregisterService(service);
    m_session.clear();
    m_bound.clear();
    m_bus.registerService(service);
}

QDBusObjectPath ScriptedPortal::answer(const QVariantMap& options, uint response, const QVariantMap& results)
{
    const QString sender = message().service().mid(1).replace(u'.', u'_');
    const QString request = path + QStringLiteral("/request/%1/%2")
                                       .arg(sender, options.value(QStringLiteral("handle_token")).toString());
    if (user != User::isSilent)
        QTimer::singleShot(0, this, [this, request, response, results] {
            QDBusMessage signal = QDBusMessage::createSignal(
                request, QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"));
            signal << response << results;
            m_bus.send(signal);
        });
    return QDBusObjectPath(request);
}

QDBusObjectPath ScriptedPortal::CreateSession(const QVariantMap& options)
{
    calls.append(QStringLiteral("CreateSession"));
    m_session = path + QStringLiteral("/session/%1/%2")
                           .arg(QString::number(calls.size()),
                                options.value(QStringLiteral("session_handle_token")).toString());
    m_bound.clear();
    m_sessionObject = std::make_unique<ScriptedSession>(*this);
    m_bus.registerObject(m_session, m_sessionObject.get(), QDBusConnection::ExportAllSlots);
    if (bindsAtSession)
        bind(qdbus_cast<PortalShortcuts>(options.value(QStringLiteral("shortcuts"))));
    return answer(options, 0, {{QStringLiteral("session_handle"), m_session}});
}

QDBusObjectPath ScriptedPortal::ListShortcuts(const QDBusObjectPath& session, const QVariantMap& options)
{
    calls.append(QStringLiteral("ListShortcuts"));
    return answer(options, session.path() == m_session ? 0 : 2, bound());
}

QDBusObjectPath ScriptedPortal::BindShortcuts(const QDBusObjectPath& session,
                                              const PortalShortcuts& shortcuts, const QString&,
                                              const QVariantMap& options)
{
    calls.append(QStringLiteral("BindShortcuts"));
    const bool isGranted = user == User::agrees && session.path() == m_session;
    if (isGranted)
        bind(shortcuts);
    return answer(options, isGranted ? 0 : 1, bound());
}

void ScriptedPortal::bind(const PortalShortcuts& shortcuts)
{
    m_bound = shortcuts;
    preferred = shortcuts.value(0).properties.value(QStringLiteral("preferred_trigger")).toString();
}

QVariantMap ScriptedPortal::bound() const
{
    PortalShortcuts shortcuts = m_bound;
    for (PortalShortcut& each : shortcuts)
        each.properties = {{QStringLiteral("trigger_description"), trigger}};
    return {{QStringLiteral("shortcuts"), QVariant::fromValue(shortcuts)}};
}

void ScriptedPortal::signal(const QString& name, const QVariantList& arguments)
{
    QDBusMessage signal = QDBusMessage::createSignal(path, interface, name);
    signal.setArguments(QVariantList{QVariant::fromValue(QDBusObjectPath(m_session))} + arguments);
    m_bus.send(signal);
}

void ScriptedPortal::press(bool isDown)
{
    signal(isDown ? QStringLiteral("Activated") : QStringLiteral("Deactivated"),
           {QStringLiteral("dictate"), QVariant::fromValue(qulonglong(0)), QVariantMap()});
}

void ScriptedPortal::rebind(const QString& newTrigger)
{
    trigger = newTrigger;
    signal(QStringLiteral("ShortcutsChanged"), {bound().value(QStringLiteral("shortcuts"))});
}

void ScriptedPortal::endSession()
{
    m_bus.send(QDBusMessage::createSignal(m_session, sessionInterface, QStringLiteral("Closed"))
               << QVariantMap());
    m_session.clear();
}

} // namespace tulvane::test
