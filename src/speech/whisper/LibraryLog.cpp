#include <base/Log.h>
#include <speech/whisper/LibraryLog.h>

#include <whisper.h>

#include <mutex>
#include <utility>

namespace tulvane {

namespace {

void receive(ggml_log_level level, const char* text, void* /*userData*/)
{
    LibraryLog::ofThisThread().take(level, text);
}

} // namespace

void LibraryLog::install()
{
    static std::once_flag installed;
    std::call_once(installed, [] { whisper_log_set(receive, nullptr); });
}

LibraryLog& LibraryLog::ofThisThread()
{
    thread_local LibraryLog lines;
    return lines;
}

void LibraryLog::take(ggml_log_level level, const char* text)
{
    if (text == nullptr)
        return;
    if (level != GGML_LOG_LEVEL_CONT) {
        flush();
        m_level = level;
    }
    m_line += text;
    if (m_line.endsWith('\n'))
        flush();
}

void LibraryLog::flush()
{
    const ggml_log_level level = std::exchange(m_level, GGML_LOG_LEVEL_NONE);
    const QString line = QString::fromUtf8(std::exchange(m_line, {})).trimmed();
    if (line.isEmpty())
        return;
    if (level == GGML_LOG_LEVEL_ERROR && m_firstError.isEmpty())
        m_firstError = line;
    if (level == GGML_LOG_LEVEL_WARN || level == GGML_LOG_LEVEL_ERROR)
        qCCritical(lcWhisper).noquote() << line;
    else
        qCDebug(lcWhisper).noquote() << line;
}

} // namespace tulvane
