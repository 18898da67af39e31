#include <app/cli/CommandLog.h>
#include <base/Log.h>

#include <QString>

#include <cstdio>

namespace tulvane::cli {

namespace {

void writeLine(QtMsgType level, const QMessageLogContext& context, const QString& text)
{
    QByteArray area(context.category);
    const qsizetype dot = area.lastIndexOf('.');
    area = area.mid(dot + 1);
    const char* const mark = level == QtCriticalMsg || level == QtFatalMsg ? "error: " : "";
    const QByteArray line = "[" + area + "] " + mark + text.toUtf8() + "\n";
    // One write, so that lines of several threads do not mix.
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stderr);
}

} // namespace

void writeLogToStandardError(LogAmount amount)
{
    // What the recogniser logs as an error is the reason that the command gives itself, in its one line.
    QLoggingCategory::setFilterRules(amount == LogAmount::everything
                                         ? QStringLiteral("com.dunio.Tulvane.*=true")
                                         : QStringLiteral("*=false\n*.critical=true\n"
                                                          "com.dunio.Tulvane.whisper.critical=false"));
    qInstallMessageHandler(writeLine);
}

} // namespace tulvane::cli
