#pragma once

#include <QByteArray>
#include <QString>

#include <ggml.h>

namespace tulvane {

/// Turns the library's log messages into whole lines of the program's log. A message that does not end its
/// line is kept until its continuations have ended it, or until the next message that is not a continuation.
/// One object belongs to one thread.
class LibraryLog final {
public:
    LibraryLog() = default;
    LibraryLog(const LibraryLog&) = delete;
    LibraryLog& operator=(const LibraryLog&) = delete;
    ~LibraryLog() { flush(); }

    /// Sends all that the library logs, on whatever thread, to the program's log. Once per process; calling
    /// it again does nothing. Any thread.
    static void install();
    /// The calling thread's lines.
    [[nodiscard]] static LibraryLog& ofThisThread();

    /// One message; a null text is ignored.
    void take(ggml_log_level level, const char* text);
    /// Writes what is still waiting for its end.
    void flush();

    /// The first line at error level since the last clearing: the later ones only pass it on.
    [[nodiscard]] const QString& firstError() const { return m_firstError; }
    void clearFirstError() { m_firstError.clear(); }

private:
    ggml_log_level m_level = GGML_LOG_LEVEL_NONE;
    QByteArray m_line;
    QString m_firstError;
};

} // namespace tulvane
