#include <platform/linux/process/ChildProcesses.h>

#include <QProcess>

namespace tulvane {

std::optional<int> ChildProcesses::run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, arguments);
    if (!process.waitForStarted(-1))
        return std::nullopt;
    process.waitForFinished(-1);
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

Result<void, QString> ChildProcesses::startDetached(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    process.setStandardInputFile(QProcess::nullDevice());
    if (!process.startDetached())
        return failure(process.errorString());
    return {};
}

} // namespace tulvane
