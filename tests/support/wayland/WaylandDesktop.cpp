#include <support/Paths.h>
#include <support/wayland/WaylandDesktop.h>

#include <QDeadlineTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QMap>

#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

namespace tulvane::test {

namespace {

constexpr int patience = 90000;

[[noreturn]] void fail(const QString& what)
{
    throw std::runtime_error(what.toStdString());
}

QString script()
{
    return sourceFolder() + QStringLiteral("/tools/desktop_kit/wayland_desktop.py");
}

QString nameOf(WaylandDesktop::Kind kind)
{
    switch (kind) {
    case WaylandDesktop::Kind::sway:
        return QStringLiteral("sway");
    case WaylandDesktop::Kind::kwin:
        return QStringLiteral("kwin");
    case WaylandDesktop::Kind::closedKwin:
        return QStringLiteral("kwin-closed");
    case WaylandDesktop::Kind::gnome:
        return QStringLiteral("gnome");
    }
    Q_UNREACHABLE();
}

QProcessEnvironment withoutByteCode()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PYTHONDONTWRITEBYTECODE"), QStringLiteral("1"));
    return environment;
}

void endWithTheTest(QProcess& process)
{
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
}

} // namespace

QStringList WaylandDesktop::missing(Kind kind)
{
    static QMap<Kind, QStringList> known;
    if (known.contains(kind))
        return known[kind];
    QProcess process;
    process.setProcessEnvironment(withoutByteCode());
    process.start(QStringLiteral("/usr/bin/python3"), {script(), nameOf(kind), QStringLiteral("--missing")});
    if (!process.waitForFinished() || process.exitCode() != 0)
        return {QStringLiteral("python3")};
    known[kind] = QString::fromUtf8(process.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    return known[kind];
}

WaylandDesktop::WaylandDesktop(Kind kind) : WaylandDesktop(kind, Options{}) {}

WaylandDesktop::WaylandDesktop(Kind kind, const Options& options)
    : m_home(m_folder.file(QStringLiteral("home")))
{
    // The desktop's user goes through this folder, which is ours.
    QFile::setPermissions(m_folder.path(), QFile::Permissions(0x7755));
    QStringList words{script(), nameOf(kind), m_home, QStringLiteral("--layout"), options.layout};
    if (options.x11)
        words.append(QStringLiteral("--x11"));
    if (options.sound)
        words.append(QStringLiteral("--sound"));
    m_script.setProcessEnvironment(withoutByteCode());
    m_script.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    endWithTheTest(m_script);
    m_script.start(QStringLiteral("/usr/bin/python3"), words);
    const QJsonObject first = message();
    if (first[QStringLiteral("event")] != QStringLiteral("ready"))
        fail(nameOf(kind) + QStringLiteral(" did not start: ") + first[QStringLiteral("reason")].toString());
    const QJsonObject environment = first[QStringLiteral("environment")].toObject();
    for (auto each = environment.begin(); each != environment.end(); ++each)
        m_environment.insert(each.key(), each.value().toString());
    if (const int user = first[QStringLiteral("user")].toInt(); ::getuid() != static_cast<uid_t>(user))
        m_prefix = {QStringLiteral("setpriv"), QStringLiteral("--reuid=%1").arg(user),
                    QStringLiteral("--regid=%1").arg(user), QStringLiteral("--clear-groups")};
}

WaylandDesktop::~WaylandDesktop()
{
    stop();
}

void WaylandDesktop::stop()
{
    for (const auto& program : m_programs)
        program->terminate();
    for (const auto& program : m_programs) {
        if (!program->waitForFinished(3000))
            program->kill();
        program->waitForFinished();
    }
    m_programs.clear();
    m_script.closeWriteChannel();
    if (m_script.state() != QProcess::NotRunning && !m_script.waitForFinished(patience))
        m_script.kill();
    m_script.waitForFinished();
}

QProcess& WaylandDesktop::start(const QString& program, const QStringList& arguments,
                                const QProcessEnvironment& more)
{
    const QStringList words = m_prefix + QStringList{program} + arguments;
    QProcess& process = *m_programs.emplace_back(std::make_unique<QProcess>());
    QProcessEnvironment environment = m_environment;
    environment.insert(more);
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(m_home);
    endWithTheTest(process);
    process.start(words.first(), words.sliced(1));
    if (!process.waitForStarted())
        fail(program + QStringLiteral(" did not start"));
    return process;
}

QByteArray WaylandDesktop::run(const QString& program, const QStringList& arguments)
{
    QProcess& process = start(program, arguments);
    const bool ended = process.waitForFinished(patience);
    const QByteArray output = process.readAllStandardOutput();
    if (!ended || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        fail(program + QStringLiteral(" failed: ") + QString::fromUtf8(process.readAllStandardError()));
    m_programs.pop_back();
    return output;
}

void WaylandDesktop::picture(const QString& file)
{
    ask({{QStringLiteral("do"), QStringLiteral("picture")}, {QStringLiteral("file"), file}});
}

QString WaylandDesktop::perform(const QString& what, const QStringList& with)
{
    return ask({{QStringLiteral("do"), QStringLiteral("do")},
                {QStringLiteral("what"), what},
                {QStringLiteral("with"), QJsonArray::fromStringList(with)}})[QStringLiteral("output")]
        .toString();
}

void WaylandDesktop::keyRequest(const QString& what, const QList<int>& keys)
{
    QJsonArray codes;
    for (const int key : keys)
        codes.append(key);
    ask({{QStringLiteral("do"), what}, {QStringLiteral("keys"), codes}});
}

QJsonObject WaylandDesktop::ask(QJsonObject request)
{
    request[QStringLiteral("id")] = ++m_lastId;
    m_script.write(QJsonDocument(request).toJson(QJsonDocument::Compact) + '\n');
    const QJsonObject answer = message();
    if (!answer[QStringLiteral("ok")].toBool())
        fail(QStringLiteral("the desktop: ") + answer[QStringLiteral("reason")].toString());
    return answer;
}

QJsonObject WaylandDesktop::message()
{
    const QDeadlineTimer deadline(patience);
    while (!m_script.canReadLine()) {
        if (!m_script.waitForReadyRead(static_cast<int>(deadline.remainingTime())))
            fail(QStringLiteral("the desktop's script does not answer"));
    }
    return QJsonDocument::fromJson(m_script.readLine()).object();
}

} // namespace tulvane::test
