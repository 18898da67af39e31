#include <support/LogCapture.h>

#include <QMutexLocker>

#include <algorithm>
#include <atomic>
#include <cstdio>

namespace tulvane::test {

namespace {
std::atomic<LogCapture*> current = nullptr;
}

LogCapture::LogCapture()
{
    QLoggingCategory::setFilterRules(QStringLiteral("com.dunio.Tulvane.*=true"));
    current = this;
    m_previous = qInstallMessageHandler(&LogCapture::keep);
}

LogCapture::~LogCapture()
{
    qInstallMessageHandler(m_previous);
    current = nullptr;
    QLoggingCategory::setFilterRules(QString());
}

void LogCapture::keep(QtMsgType level, const QMessageLogContext& context, const QString& text)
{
    LogCapture* const self = current;
    if (self == nullptr)
        return;
    // The process ends after this one, and the reason would not be seen.
    if (level == QtFatalMsg)
        std::fprintf(stderr, "%s\n", qPrintable(text));
    const QMutexLocker lock(&self->m_mutex);
    self->m_lines.append({level, QString::fromUtf8(context.category), text});
}

QList<LogLine> LogCapture::lines() const
{
    const QMutexLocker lock(&m_mutex);
    return m_lines;
}

QStringList LogCapture::texts(const char* area, QtMsgType level) const
{
    const QString category = QStringLiteral("com.dunio.Tulvane.") + QString::fromUtf8(area);
    QStringList texts;
    for (const LogLine& line : lines()) {
        if (line.level == level && line.category == category)
            texts.append(line.text);
    }
    return texts;
}

bool LogCapture::contains(const QString& piece) const
{
    return std::ranges::any_of(lines(), [&](const LogLine& line) { return line.text.contains(piece); });
}

void LogCapture::clear()
{
    const QMutexLocker lock(&m_mutex);
    m_lines.clear();
}

} // namespace tulvane::test
