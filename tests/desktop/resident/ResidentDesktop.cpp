#include "ResidentDesktop.h"

#include <support/Await.h>
#include <support/Paths.h>
#include <support/Speech.h>

#include <QDir>
#include <QFile>
#include <QJsonDocument>

#include <stdexcept>

namespace tulvane::test {

using namespace std::chrono_literals;

ResidentDesktop::ResidentDesktop(const QByteArray& openboxKeys)
    : desktop({.windowManager = VirtualDesktop::WindowManager::openbox,
               .sessionBus = VirtualDesktop::SessionBus::own,
               .openboxKeys = openboxKeys}),
      keys(desktop.display())
{
    const QString models = scratch.file(QStringLiteral("data/Tulvane/Models"));
    QDir().mkpath(models);
    if (!QFile::copy(demoModelPath(), models + QStringLiteral("/nb-whisper-medium-q5_0.bin")))
        throw std::runtime_error("no demo model");
    for (const auto& [key, value] :
         {std::pair{"hotkeyMode", "toggle"}, std::pair{"language", "no"},
          std::pair{"hasCompletedOnboarding", "true"}, std::pair{"appLanguage", "en"}}) {
        const auto set = tulvane({QStringLiteral("settings"), QStringLiteral("set"), QString::fromLatin1(key),
                                  QString::fromLatin1(value)});
        if (set.status != 0)
            throw std::runtime_error(set.err.toStdString());
    }
}

ResidentDesktop::~ResidentDesktop()
{
    if (!m_program || m_program->state() == QProcess::NotRunning)
        return;
    m_program->terminate();
    if (!m_program->waitForFinished(5000))
        m_program->kill();
    m_program->waitForFinished(5000);
}

QProcessEnvironment ResidentDesktop::environment() const
{
    QProcessEnvironment environment = desktop.environment();
    environment.insert(QStringLiteral("XDG_DATA_HOME"), scratch.file(QStringLiteral("data")));
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), scratch.file(QStringLiteral("config")));
    environment.insert(QStringLiteral("PULSE_SERVER"), sound.address());
    environment.insert(QStringLiteral("XDG_SESSION_TYPE"), QStringLiteral("x11"));
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    return environment;
}

QProcess& ResidentDesktop::launch(const QStringList& before)
{
    m_program = std::make_unique<QProcess>();
    m_program->setProcessEnvironment(environment());
    QStringList line = before;
    line << QStringLiteral(TULVANE_PROGRAM) << QStringLiteral("--background");
    m_program->start(line.takeFirst(), line);
    if (!m_program->waitForStarted())
        throw std::runtime_error(m_program->errorString().toStdString());
    const bool answers =
        waitUntil([&] { return m_program->state() == QProcess::NotRunning || !status().isEmpty(); }, 30s);
    if (!answers || m_program->state() == QProcess::NotRunning)
        throw std::runtime_error("the program did not start: " +
                                 m_program->readAllStandardError().toStdString());
    return *m_program;
}

std::unique_ptr<QProcess> ResidentDesktop::begin(const QStringList& arguments) const
{
    auto process = std::make_unique<QProcess>();
    process->setProcessEnvironment(environment());
    process->start(QStringLiteral(TULVANE_PROGRAM), arguments);
    return process;
}

CommandLineRun ResidentDesktop::tulvane(const QStringList& arguments) const
{
    const auto process = begin(arguments);
    process->closeWriteChannel();
    if (!process->waitForFinished(30000))
        throw std::runtime_error("the command line did not end");
    return {process->exitStatus() == QProcess::NormalExit ? process->exitCode() : -1,
            QString::fromUtf8(process->readAllStandardOutput()),
            QString::fromUtf8(process->readAllStandardError())};
}

QJsonObject ResidentDesktop::status() const
{
    const auto run = tulvane({QStringLiteral("status"), QStringLiteral("--json")});
    return QJsonDocument::fromJson(run.out.toUtf8()).object();
}

bool ResidentDesktop::waitForPhase(const QString& phase) const
{
    return waitUntil([&] { return status()[QStringLiteral("phase")] == phase; });
}

void ResidentDesktop::openEntry()
{
    m_entry = &desktop.start(QStringLiteral("/usr/bin/python3"), {QStringLiteral(TULVANE_ENTRY)});
    const bool isFocused = waitUntil([&] {
        readEntry();
        return m_entryIsFocused;
    });
    if (!isFocused)
        throw std::runtime_error("the entry did not get the focus");
}

void ResidentDesktop::readEntry()
{
    m_entry->waitForReadyRead(1);
    while (m_entry->canReadLine()) {
        const QJsonValue line = QJsonDocument::fromJson("[" + m_entry->readLine() + "]")[0];
        m_entryIsFocused = m_entryIsFocused || line.isNull();
        if (line.isString())
            m_entryText = line.toString();
    }
}

QString ResidentDesktop::entryText()
{
    readEntry();
    return m_entryText;
}

bool ResidentDesktop::waitForEntry(const QString& text)
{
    return waitUntil([&] { return entryText() == text; });
}

void ResidentDesktop::pressHotkey()
{
    keys.press(DeviceKey::leftAlt);
    keys.tap(DeviceKey::space);
    keys.release(DeviceKey::leftAlt);
}

void ResidentDesktop::speak(const char* text)
{
    const auto player = sound.play(speakSentence(QString::fromUtf8(text), QStringLiteral("nb")), 16000);
    if (!waitUntil([&] { return player->state() == QProcess::NotRunning; }))
        throw std::runtime_error("the player did not end");
    // What was played last is still on its way through the server's buffers.
    runEventLoopFor(500ms);
}

} // namespace tulvane::test
