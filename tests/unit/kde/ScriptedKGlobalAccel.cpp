#include "ScriptedKGlobalAccel.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QMutexLocker>
#include <QUuid>

namespace tulvane::test {

namespace {

const QString service = QStringLiteral("org.kde.kglobalaccel");
const QString component = QStringLiteral("com.dunio.Tulvane");
const QString componentPath = QStringLiteral("/component/com_dunio_Tulvane");

/// A combination as the service writes it.
struct Sequence {
    QList<int> keys;
};

QDBusArgument& operator<<(QDBusArgument& argument, const Sequence& sequence)
{
    argument.beginStructure();
    argument << sequence.keys;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Sequence& sequence)
{
    argument.beginStructure();
    argument >> sequence.keys;
    argument.endStructure();
    return argument;
}

QVariant written(const QList<int>& keys)
{
    QList<Sequence> sequences;
    for (const int key : keys)
        sequences.append({{key, 0, 0, 0}});
    return QVariant::fromValue(sequences);
}

} // namespace

ScriptedKGlobalAccel::ScriptedKGlobalAccel()
{
    qDBusRegisterMetaType<Sequence>();
    qDBusRegisterMetaType<QList<Sequence>>();
    moveToThread(&m_thread);
    m_thread.start();
}

ScriptedKGlobalAccel::~ScriptedKGlobalAccel()
{
    disappear();
    m_thread.quit();
    m_thread.wait();
}

void ScriptedKGlobalAccel::appear(const QString& address, bool doesItsWork)
{
    m_connection = QUuid::createUuid().toString();
    QDBusConnection bus = QDBusConnection::connectToBus(address, m_connection);
    if (doesItsWork)
        doItsWork();
    if (!bus.registerService(service))
        qFatal("no name for the scripted service");
}

void ScriptedKGlobalAccel::doItsWork()
{
    QDBusConnection(m_connection).registerVirtualObject(QStringLiteral("/kglobalaccel"), this);
}

void ScriptedKGlobalAccel::disappear()
{
    QDBusConnection::disconnectFromBus(m_connection);
    const QMutexLocker lock(&m_mutex);
    m_active.clear();
}

void ScriptedKGlobalAccel::press(bool isDown)
{
    QDBusMessage signal = QDBusMessage::createSignal(
        componentPath, QStringLiteral("org.kde.kglobalaccel.Component"),
        isDown ? QStringLiteral("globalShortcutPressed") : QStringLiteral("globalShortcutReleased"));
    signal << component << QStringLiteral("hotkey-1") << qlonglong(0);
    if (active().contains(QStringLiteral("hotkey-1")))
        QDBusConnection(m_connection).send(signal);
}

QStringList ScriptedKGlobalAccel::active()
{
    const QMutexLocker lock(&m_mutex);
    return m_active;
}

QStringList ScriptedKGlobalAccel::calls()
{
    const QMutexLocker lock(&m_mutex);
    return m_calls;
}

bool ScriptedKGlobalAccel::handleMessage(const QDBusMessage& message, const QDBusConnection& connection)
{
    connection.send(message.createReply(answer(message)));
    return true;
}

QVariantList ScriptedKGlobalAccel::answer(const QDBusMessage& message)
{
    const QMutexLocker lock(&m_mutex);
    const QVariantList words = message.arguments();
    const QString call = message.member();
    m_calls.append(call);
    if (call == QStringLiteral("getComponent"))
        return {QVariant::fromValue(QDBusObjectPath(componentPath))};
    if (call == QStringLiteral("defaultShortcutKeys"))
        return {written(m_defaults)};
    if (call == QStringLiteral("globalShortcutsByKey"))
        return {written({})}; // of no program; an empty list of anything
    if (call == QStringLiteral("allMainComponents"))
        return {QStringList()};
    if (call == QStringLiteral("setShortcutKeys"))
        return setKeys(words);
    if (call == QStringLiteral("setInactive"))
        m_active.removeAll(words.value(0).toStringList().value(1));
    return {};
}

QVariantList ScriptedKGlobalAccel::setKeys(const QVariantList& words)
{
    QList<int> keys;
    for (const Sequence& sequence : qdbus_cast<QList<Sequence>>(words.value(1)))
        keys.append(sequence.keys.value(0));
    constexpr uint isDefault = 8;
    if ((words.value(2).toUInt() & isDefault) != 0)
        m_defaults = keys;
    else
        m_active.append(words.value(0).toStringList().value(1));
    return {written(keys)};
}

} // namespace tulvane::test
