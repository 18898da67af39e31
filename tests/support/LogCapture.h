#pragma once

#include <QList>
#include <QLoggingCategory>
#include <QMutex>
#include <QString>
#include <QStringList>

namespace tulvane::test {

/// One captured log line.
struct LogLine {
    QtMsgType level = QtDebugMsg;
    QString category; ///< the whole name, e.g. "com.dunio.Tulvane.whisper"
    QString text;
};

/// While it lives, every log line of the process is kept here instead of being printed, debug level included.
/// Lines may come from any thread. At most one at a time.
class LogCapture final {
public:
    LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;
    ~LogCapture();

    [[nodiscard]] QList<LogLine> lines() const;
    /// The texts of one category ("whisper") at one level, oldest first.
    [[nodiscard]] QStringList texts(const char* area, QtMsgType level) const;
    /// Whether some line's text contains the given piece.
    [[nodiscard]] bool contains(const QString& piece) const;
    void clear();

private:
    static void keep(QtMsgType level, const QMessageLogContext& context, const QString& text);

    mutable QMutex m_mutex;
    QList<LogLine> m_lines;
    QtMessageHandler m_previous = nullptr;
};

} // namespace tulvane::test
