#include <base/Log.h>
#include <platform/linux/portal/AppScope.h>

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QFile>
#include <QRegularExpression>
#include <QThread>

namespace tulvane {

namespace {

struct UnitProperty {
    QString name;
    QDBusVariant value;
};
struct AuxiliaryUnit {
    QString name;
    QList<UnitProperty> properties;
};

QDBusArgument& operator<<(QDBusArgument& argument, const UnitProperty& property)
{
    argument.beginStructure();
    argument << property.name << property.value;
    argument.endStructure();
    return argument;
}
const QDBusArgument& operator>>(const QDBusArgument& argument, UnitProperty& property)
{
    argument.beginStructure();
    argument >> property.name >> property.value;
    argument.endStructure();
    return argument;
}
QDBusArgument& operator<<(QDBusArgument& argument, const AuxiliaryUnit& unit)
{
    argument.beginStructure();
    argument << unit.name << unit.properties;
    argument.endStructure();
    return argument;
}
const QDBusArgument& operator>>(const QDBusArgument& argument, AuxiliaryUnit& unit)
{
    argument.beginStructure();
    argument >> unit.name >> unit.properties;
    argument.endStructure();
    return argument;
}

const QString manager = QStringLiteral("org.freedesktop.systemd1");
constexpr int limit = 1000; // milliseconds
constexpr int step = 2;     // likewise

QString ownCgroups()
{
    QFile file(QStringLiteral("/proc/self/cgroup"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// As unit names bear it: a dash would divide it.
QString escaped(QString application)
{
    return application.replace(u'-', QStringLiteral("\\x2d"));
}

} // namespace

bool isUnitOf(const QString& application, const QString& cgroups)
{
    // "app-gnome-com.dunio.Tulvane-4711.scope", "app-com.dunio.Tulvane@autostart.service"
    const QRegularExpression unit(
        QStringLiteral("/app-(?:[^/]+-)?%1(?:-[^/-]+\\.scope|(?:@[^/]*)?\\.service)(?:/|$)")
            .arg(QRegularExpression::escape(escaped(application))),
        QRegularExpression::MultilineOption);
    return unit.match(cgroups).hasMatch();
}

bool joinAppScope(const QDBusConnection& bus, const QString& application)
{
    if (isUnitOf(application, ownCgroups()))
        return true;
    if (!bus.isConnected() || !bus.interface()->isServiceRegistered(manager))
        return false;
    qDBusRegisterMetaType<UnitProperty>();
    qDBusRegisterMetaType<QList<UnitProperty>>();
    qDBusRegisterMetaType<AuxiliaryUnit>();
    qDBusRegisterMetaType<QList<AuxiliaryUnit>>();
    const auto process = static_cast<uint>(QCoreApplication::applicationPid());
    const QList<UnitProperty> properties{
        {QStringLiteral("Description"), QDBusVariant(QStringLiteral("Tulvane"))},
        {QStringLiteral("PIDs"), QDBusVariant(QVariant::fromValue(QList<uint>{process}))}};
    QDBusMessage call = QDBusMessage::createMethodCall(manager, QStringLiteral("/org/freedesktop/systemd1"),
                                                       QStringLiteral("org.freedesktop.systemd1.Manager"),
                                                       QStringLiteral("StartTransientUnit"));
    call << QStringLiteral("app-%1-%2.scope").arg(escaped(application)).arg(process) << QStringLiteral("fail")
         << QVariant::fromValue(properties) << QVariant::fromValue(QList<AuxiliaryUnit>());
    const QDBusMessage answer = bus.call(call, QDBus::Block, limit);
    if (answer.type() != QDBusMessage::ReplyMessage) {
        qCInfo(lcApp, "The service manager gave the program no unit: %ls",
               qUtf16Printable(answer.errorMessage()));
        return false;
    }
    // The unit is made after the answer.
    for (int waited = 0; waited < limit / 10 && !isUnitOf(application, ownCgroups()); waited += step)
        QThread::msleep(step);
    return true;
}

} // namespace tulvane
