#include <platform/linux/gnome/EngineWatch.h>

#include <unistd.h>

namespace tulvane {

EngineWatch::EngineWatch(const QProcessEnvironment& environment, const QString& engine)
{
    m_process.setProcessEnvironment(environment);
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.setStandardErrorFile(QProcess::nullDevice());
    // What ends a terminal's programs ends us, and not the watch.
    m_process.setChildProcessModifier([] { ::setsid(); });
    // A line says that all is well. The end of the input without one says that we are gone.
    m_process.start(
        QStringLiteral("/bin/sh"),
        {QStringLiteral("-c"), QStringLiteral("read -r word || exec ibus engine \"$0\""), engine});
}

EngineWatch::~EngineWatch()
{
    m_process.write("back\n");
    m_process.closeWriteChannel();
    constexpr int longest = 500; // ms; it has nothing left to do but to end
    if (!m_process.waitForFinished(longest))
        m_process.kill();
}

} // namespace tulvane
