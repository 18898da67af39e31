#include <app/Relaunch.h>
#include <base/Log.h>
#include <ports/Processes.h>

#include <QCoreApplication>

namespace tulvane {

namespace {

/// The path between double quotes, within which four characters mean something to the shell.
QString quoted(const QString& path)
{
    QString text = QStringLiteral("\"");
    for (const QChar c : path) {
        if (c == u'"' || c == u'\\' || c == u'$' || c == u'`')
            text += u'\\';
        text += c;
    }
    return text + u'"';
}

} // namespace

QString relaunchCommand(qint64 process, const QString& program, const QStringList& arguments)
{
    // Two programs at once would be one too many: the new one would find the old one there and hand over to
    // it.
    QString command = QStringLiteral("while kill -0 ") + QString::number(process) +
                      QStringLiteral(" 2>/dev/null; do sleep 0.1; done; exec ") + quoted(program);
    for (const QString& argument : arguments)
        command += u' ' + argument;
    return command;
}

void relaunch(Processes& processes, const QString& program, const QStringList& arguments,
              const std::function<void()>& terminate)
{
    const QString command = relaunchCommand(QCoreApplication::applicationPid(), program, arguments);
    const auto started = processes.startDetached(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), command});
    if (!started)
        qCCritical(lcApp).noquote() << "Could not schedule relaunch:" << started.error();
    terminate();
}

} // namespace tulvane
