#include <app/cli/CommandLog.h>
#include <base/Log.h>

#include <QString>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

namespace tulvane::cli {

namespace {

LogReader readerOfErrors = LogReader::person; // set before anything logs

/// The journal's number of the level, as syslog counts them.
char priorityOf(QtMsgType level)
{
    switch (level) {
    case QtDebugMsg:
        return '7';
    case QtInfoMsg:
        return '6';
    case QtWarningMsg:
        return '4';
    case QtCriticalMsg:
        return '3';
    case QtFatalMsg:
        return '2';
    }
    return '6';
}

void writeLine(QtMsgType level, const QMessageLogContext& context, const QString& text)
{
    const QByteArray line = logLine(level, context.category, text, readerOfErrors);
    // One write, so that lines of several threads do not mix.
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stderr);
}

} // namespace

LogReader logReader(int descriptor, const QByteArray& journalStream)
{
    struct stat file{};
    if (journalStream.isEmpty() || fstat(descriptor, &file) != 0)
        return LogReader::person;
    const QByteArray own = QByteArray::number(static_cast<qulonglong>(file.st_dev)) + ':' +
                           QByteArray::number(static_cast<qulonglong>(file.st_ino));
    return own == journalStream ? LogReader::journal : LogReader::person;
}

QByteArray logLine(QtMsgType level, const QByteArray& category, const QString& text, LogReader reader)
{
    const QByteArray area = category.mid(category.lastIndexOf('.') + 1);
    QByteArray words = text.toUtf8();
    if (reader == LogReader::person) {
        const char* const mark = level == QtCriticalMsg || level == QtFatalMsg ? "error: " : "";
        return "[" + area + "] " + mark + words + "\n";
    }
    // Each line of a text is an entry of its own there.
    const QByteArray start = QByteArray("<") + priorityOf(level) + ">[" + area + "] ";
    words.replace("\n", QByteArray("\n" + start));
    return start + words + "\n";
}

void writeLogToStandardError(LogAmount amount)
{
    // What the recogniser logs as an error is the reason that the command gives itself, in its one line.
    QLoggingCategory::setFilterRules(amount == LogAmount::everything
                                         ? QStringLiteral("com.dunio.Tulvane.*=true")
                                         : QStringLiteral("*=false\n*.critical=true\n"
                                                          "com.dunio.Tulvane.whisper.critical=false"));
    readerOfErrors = logReader(STDERR_FILENO, qgetenv("JOURNAL_STREAM"));
    qInstallMessageHandler(writeLine);
}

} // namespace tulvane::cli
