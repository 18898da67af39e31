#include <platform/linux/process/EndWatch.h>

#include <unistd.h>

namespace tulvane {

EndWatch::EndWatch(const QProcessEnvironment& environment, const QStringList& command)
{
    m_process.setProcessEnvironment(environment);
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.setStandardErrorFile(QProcess::nullDevice());
    // What ends a terminal's programs ends us, and not the watch.
    m_process.setChildProcessModifier([] { ::setsid(); });
    // A line says that all is well. The end of the input without one says that we are gone.
    const QString script = QStringLiteral("read -r word || exec \"$@\"");
    m_process.start(QStringLiteral("/bin/sh"),
                    QStringList{QStringLiteral("-c"), script, QStringLiteral("watch")} + command);
}

EndWatch::~EndWatch()
{
    m_process.write("well\n");
    m_process.closeWriteChannel();
    constexpr int longest = 500; // ms; it has nothing left to do but to end
    if (!m_process.waitForFinished(longest))
        m_process.kill();
}

} // namespace tulvane
