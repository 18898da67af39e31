#include <base/Log.h>
#include <base/ReplaceFile.h>
#include <stats/DamagedFile.h>
#include <stats/StatsFile.h>
#include <stats/StatsStore.h>
#include <stats/WordCount.h>

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QThread>

#include <algorithm>
#include <cmath>
#include <map>

namespace tulvane {

QString StatsStore::defaultFile()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return folder.isEmpty() ? QString() : folder + QStringLiteral("/Tulvane/statistics.json");
}

StatsStore::StatsStore(const std::optional<QString>& fileURL, const Calendar& calendar, QObject* parent)
    : QObject(parent),
      m_fileURL(fileURL ? *fileURL : defaultFile()),
      m_calendar(calendar)
{
    load();
}

void StatsStore::load()
{
    const QFileInfo info(m_fileURL);
    // A pipe or a device in the file's place would be waited on.
    if (!info.isFile())
        return;
    QFile file(m_fileURL);
    const auto entries =
        file.open(QIODevice::ReadOnly) ? decodeStatistics(file.readAll()) : std::optional<QList<DailyStat>>();
    const auto days = entries ? merged(*entries) : std::nullopt;
    if (days)
        m_days = *days;
    else
        m_found = Found::damaged;
}

/// One entry a day in this calendar, ascending, whatever zone the file was written in. None when a sum or a
/// day's date is more than the file could hold.
std::optional<QList<DailyStat>> StatsStore::merged(const QList<DailyStat>& entries) const
{
    std::map<qint64, DailyStat> days;
    for (DailyStat entry : entries) {
        entry.date = m_calendar.startOfDay(entry.date);
        const auto [day, isNew] = days.try_emplace(entry.date.toMSecsSinceEpoch(), entry);
        if (!isNew && !day->second.add(entry))
            return std::nullopt;
    }
    QList<DailyStat> list;
    for (const auto& [moment, day] : days)
        list.append(day);
    return encodeStatistics(list) ? std::optional(list) : std::nullopt;
}

void StatsStore::record(const QString& text, const QDateTime& date, double speakingSeconds)
{
    Q_ASSERT(QThread::currentThread() == thread());
    Q_ASSERT(date.isValid());
    const DailyStat dictation{m_calendar.startOfDay(date), 1, countWords(text), countCharacters(text),
                              speakingSeconds > 0 ? speakingSeconds : 0};
    if (dictation.words == 0 && dictation.characters == 0)
        return;
    QList<DailyStat> days = m_days;
    const auto day = std::ranges::find(days, dictation.date, &DailyStat::date);
    if (day == days.end())
        days.append(dictation);
    else if (!day->add(dictation))
        qFatal("A counter of the statistics is full.");
    std::ranges::sort(days, {}, &DailyStat::date);
    if (days.size() > mostDays)
        days.remove(0, days.size() - mostDays);
    publish(days);
    save();
}

void StatsStore::reset()
{
    Q_ASSERT(QThread::currentThread() == thread());
    publish({});
    removeDamagedFiles(m_fileURL);
    m_found = Found::ours;
    save();
}

void StatsStore::publish(const QList<DailyStat>& days)
{
    m_days = days;
    Q_EMIT daysChanged();
}

void StatsStore::save()
{
    const auto saved =
        encodeStatistics(m_days).and_then([this](const QByteArray& bytes) -> Result<void, QString> {
            if (m_fileURL.isEmpty())
                return failure(QStringLiteral("there is no folder for application data"));
            if (m_found == Found::damaged)
                keepDamagedFile(m_fileURL);
            m_found = Found::ours;
            return replaceFile(m_fileURL, bytes);
        });
    if (!saved)
        qCCritical(lcApp, "Could not save statistics: %s", qUtf8Printable(saved.error()));
}

} // namespace tulvane
