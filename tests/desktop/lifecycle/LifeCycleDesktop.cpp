#include "LifeCycleDesktop.h"

#include <support/Await.h>
#include <support/Paths.h>
#include <support/Signals.h>

#include <QDir>
#include <QFile>
#include <QJsonDocument>

#include <csignal>
#include <stdexcept>

namespace tulvane::test {

using namespace std::chrono_literals;

LifeCycleDesktop::LifeCycleDesktop()
    : desktop({.windowManager = VirtualDesktop::WindowManager::openbox,
               .sessionBus = VirtualDesktop::SessionBus::own,
               .openboxKeys = "<keybind key=\"A-F4\"><action name=\"Close\"/></keybind>"})
{
    QDir().mkpath(scratch.file(QStringLiteral("config")));
    QDir().mkpath(scratch.file(QStringLiteral("data")));
}

LifeCycleDesktop::~LifeCycleDesktop()
{
    // Also one that has started itself anew.
    if (const qint64 running = process())
        sendSignal(running, SIGTERM);
    if (m_program && !m_program->waitForFinished(5000)) {
        m_program->kill();
        m_program->waitForFinished(5000);
    }
}

QProcessEnvironment LifeCycleDesktop::environment() const
{
    QProcessEnvironment environment = desktop.environment();
    environment.insert(QStringLiteral("XDG_DATA_HOME"), scratch.file(QStringLiteral("data")));
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), scratch.file(QStringLiteral("config")));
    environment.insert(QStringLiteral("PULSE_SERVER"), sound.address());
    environment.insert(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"), QStringLiteral("1"));
    environment.insert(QStringLiteral("XDG_SESSION_TYPE"), QStringLiteral("x11"));
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    for (auto variable = m_variables.cbegin(); variable != m_variables.cend(); ++variable)
        environment.insert(variable.key(), variable.value());
    return environment;
}

void LifeCycleDesktop::setUp() const
{
    const QString models = data(QStringLiteral("Tulvane/Models"));
    QDir().mkpath(models);
    if (!QFile::copy(demoModelPath(), models + QStringLiteral("/nb-whisper-medium-q5_0.bin")))
        throw std::runtime_error("no demo model");
    writeDomain(QStringLiteral("com.dunio.Tulvane"),
                R"({"hasCompletedOnboarding": true, "appLanguage": "en", "language": "no"})");
}

void LifeCycleDesktop::writeDomain(const QString& domain, const QByteArray& json) const
{
    static_cast<void>(scratch.write(QStringLiteral("config/%1.json").arg(domain), json));
}

QJsonObject LifeCycleDesktop::preferences() const
{
    return QJsonDocument::fromJson(scratch.read(QStringLiteral("config/com.dunio.Tulvane.json"))).object();
}

QString LifeCycleDesktop::data(const QString& file) const
{
    return scratch.file(QStringLiteral("data/") + file);
}

void LifeCycleDesktop::writeData(const QString& file, const QByteArray& content) const
{
    QDir().mkpath(QFileInfo(data(file)).path());
    static_cast<void>(scratch.write(QStringLiteral("data/") + file, content));
}

QProcess& LifeCycleDesktop::launch(const QStringList& arguments)
{
    return launchProgram(QStringLiteral(TULVANE_PROGRAM), arguments);
}

QProcess& LifeCycleDesktop::launchProgram(const QString& program, const QStringList& arguments)
{
    m_log.clear();
    m_program = std::make_unique<QProcess>();
    m_program->setProcessEnvironment(environment());
    m_program->start(program, arguments);
    const bool isUp = waitUntil([&] { return m_program->state() == QProcess::NotRunning || answers(); }, 30s);
    if (!isUp || m_program->state() == QProcess::NotRunning)
        throw std::runtime_error("the program did not start: " + log().toStdString());
    return *m_program;
}

void LifeCycleDesktop::quit()
{
    m_program->terminate();
    if (!waitUntil([&] { return m_program->state() == QProcess::NotRunning; }))
        throw std::runtime_error("the program did not end");
}

std::unique_ptr<QProcess> LifeCycleDesktop::begin(const QStringList& arguments) const
{
    auto process = std::make_unique<QProcess>();
    process->setProcessEnvironment(environment());
    process->start(QStringLiteral(TULVANE_PROGRAM), arguments);
    return process;
}

QString LifeCycleDesktop::tulvane(const QStringList& arguments) const
{
    QProcess process;
    process.setProcessEnvironment(environment());
    process.start(QStringLiteral(TULVANE_PROGRAM), arguments);
    process.closeWriteChannel();
    if (!waitUntil([&] { return process.state() == QProcess::NotRunning; }, 30s))
        throw std::runtime_error("the command line did not end");
    return QString::fromUtf8(process.readAllStandardOutput() + process.readAllStandardError());
}

QJsonObject LifeCycleDesktop::status() const
{
    return QJsonDocument::fromJson(tulvane({QStringLiteral("status"), QStringLiteral("--json")}).toUtf8())
        .object();
}

bool LifeCycleDesktop::waitForPhase(const QString& phase) const
{
    return waitUntil([&] { return status()[QStringLiteral("phase")] == phase; });
}

qint64 LifeCycleDesktop::process() const
{
    QProcess asked;
    asked.setProcessEnvironment(desktop.environment());
    asked.start(QStringLiteral("dbus-send"),
                {QStringLiteral("--session"), QStringLiteral("--print-reply=literal"),
                 QStringLiteral("--dest=org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                 QStringLiteral("org.freedesktop.DBus.GetConnectionUnixProcessID"),
                 QStringLiteral("string:com.dunio.Tulvane")});
    asked.waitForFinished(10000);
    return QString::fromUtf8(asked.readAllStandardOutput()).trimmed().section(u' ', -1).toLongLong();
}

QString LifeCycleDesktop::log()
{
    if (m_program)
        m_log += m_program->readAllStandardError();
    return QString::fromUtf8(m_log);
}

QString LifeCycleDesktop::xdotool(const QStringList& arguments) const
{
    QProcess process;
    process.setProcessEnvironment(desktop.environment());
    process.start(QStringLiteral("xdotool"), arguments);
    process.waitForFinished(10000);
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

QString LifeCycleDesktop::focus(const QString& name)
{
    return QString::fromUtf8(
               desktop.run(QStringLiteral("/usr/bin/python3"), {QStringLiteral(TULVANE_FOCUS_CONTROL), name}))
        .trimmed();
}

bool LifeCycleDesktop::shows(const QString& name) const
{
    QProcess process;
    process.setProcessEnvironment(desktop.environment());
    process.start(QStringLiteral("/usr/bin/python3"),
                  {QStringLiteral(TULVANE_FOCUS_CONTROL), QStringLiteral("--see"), name});
    return process.waitForFinished(30000) && process.exitCode() == 0;
}

QStringList LifeCycleDesktop::windowTitles() const
{
    QStringList titles;
    const QString found =
        xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--class"),
                 QStringLiteral("tulvane"), QStringLiteral("getwindowname"), QStringLiteral("%@")});
    for (const QString& title : found.split(u'\n', Qt::SkipEmptyParts)) {
        if (title != QStringLiteral("tulvane-desktop"))
            titles.append(title);
    }
    return titles;
}

bool LifeCycleDesktop::waitForWindow(const QString& title) const
{
    return waitUntil([&] { return windowTitles().contains(title); });
}

void LifeCycleDesktop::closeWindow() const
{
    static_cast<void>(xdotool({QStringLiteral("key"), QStringLiteral("alt+F4")}));
}

bool LifeCycleDesktop::waitForNoWindow() const
{
    return waitUntil([&] { return windowTitles().isEmpty(); });
}

} // namespace tulvane::test
