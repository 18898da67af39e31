#include "ScriptedKWin.h"

#include <QDBusMessage>
#include <QFile>
#include <QRegularExpression>
#include <QUuid>

namespace tulvane::test {

void ScriptedKWin::appear(const QString& address, bool takesScripts)
{
    m_connection = QUuid::createUuid().toString();
    QDBusConnection bus = QDBusConnection::connectToBus(address, m_connection);
    if (takesScripts)
        takeScripts();
    if (!bus.registerService(QStringLiteral("org.kde.KWin")))
        qFatal("no name for the scripted KWin");
}

void ScriptedKWin::takeScripts()
{
    QDBusConnection(m_connection)
        .registerObject(QStringLiteral("/Scripting"), this, QDBusConnection::ExportAllSlots);
}

void ScriptedKWin::disappear()
{
    QDBusConnection::disconnectFromBus(m_connection);
    m_isRunning = false;
}

int ScriptedKWin::loadScript(const QString& file, const QString&)
{
    if (keepsAScript)
        return -1;
    QFile opened(file);
    if (!opened.open(QIODevice::ReadOnly))
        return -1;
    static const QRegularExpression call(QStringLiteral("callDBus\\(\"([^\"]+)\", \"([^\"]+)\""));
    const auto found = call.match(QString::fromUtf8(opened.readAll()));
    m_program = found.captured(1);
    m_object = found.captured(2);
    m_script = std::make_unique<ScriptedScript>(*this);
    QDBusConnection(m_connection)
        .registerObject(QStringLiteral("/Scripting/Script7"), m_script.get(),
                        QDBusConnection::ExportAllSlots);
    return 7;
}

bool ScriptedKWin::unloadScript(const QString&)
{
    ++unloads;
    keepsAScript = false;
    return true;
}

void ScriptedKWin::activate(const QString& resourceClass, int process) const
{
    if (m_isRunning)
        callFrom(QDBusConnection(m_connection), resourceClass, process);
}

void ScriptedKWin::callFrom(QDBusConnection bus, const QString& resourceClass, int process) const
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        m_program, m_object, QStringLiteral("com.dunio.Tulvane.Front"), QStringLiteral("front"));
    call << QStringLiteral("{window}") << resourceClass << process << false << false;
    bus.send(call);
}

} // namespace tulvane::test
