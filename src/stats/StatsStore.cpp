#include <base/AtomicFile.h>
#include <base/FileLock.h>
#include <base/Log.h>
#include <base/PrivateFolder.h>
#include <stats/DamagedFile.h>
#include <stats/StatsFile.h>
#include <stats/StatsStore.h>
#include <stats/WordCount.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QThread>

#include <algorithm>
#include <chrono>
#include <map>
#include <optional>

namespace tulvane {

using namespace std::chrono_literals;

namespace {

// A change takes some milliseconds. After this long, counting without the lock is better than not counting.
constexpr auto lockLimit = 3s;

/// Held while the file is read, changed and written, so that no other process's change falls in between.
std::optional<FileLock> lockForChange(const QString& file)
{
    if (file.isEmpty())
        return std::nullopt;
    makePrivateFolder(QFileInfo(file).path());
    Result<FileLock, LockError> lock = FileLock::acquire(file + QStringLiteral(".lock"), lockLimit);
    if (lock)
        return std::move(*lock);
    // Where there can be no lock file there can be no statistics either, which the save then says.
    if (lock.error().isHeld())
        qCWarning(lcApp, "Another program does not let go of the statistics");
    return std::nullopt;
}

void count(const DailyStat& dictations, QList<DailyStat>& days)
{
    const auto day = std::ranges::find(days, dictations.date, &DailyStat::date);
    if (day == days.end())
        days.append(dictations);
    else if (!day->add(dictations))
        qFatal("A counter of the statistics is full.");
}

} // namespace

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
    m_days = read().days;
}

StatsStore::Found StatsStore::read() const
{
    const QFileInfo info(m_fileURL);
    // A pipe or a device in the file's place would be waited on.
    if (!info.isFile())
        return {};
    QFile file(m_fileURL);
    const auto entries =
        file.open(QIODevice::ReadOnly) ? decodeStatistics(file.readAll()) : std::optional<QList<DailyStat>>();
    const auto days = entries ? merged(*entries) : std::nullopt;
    return days ? Found{Found::Kind::ours, *days} : Found{Found::Kind::damaged, {}};
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
    const std::optional<FileLock> lock = lockForChange(m_fileURL);
    const Found found = read();
    QList<DailyStat> days = withUnsaved(found);
    count(dictation, days);
    count(dictation, m_unsaved);
    std::ranges::sort(days, {}, &DailyStat::date);
    if (days.size() > mostDays)
        days.remove(0, days.size() - mostDays);
    publish(days);
    save(found);
}

/// What is known now: what the file holds with what this process could not save, or, where the file has gone
/// or was damaged meanwhile, what this process remembers, which is both.
QList<DailyStat> StatsStore::withUnsaved(const Found& found) const
{
    if (found.kind != Found::Kind::ours)
        return m_days;
    QList<DailyStat> days = found.days;
    for (const DailyStat& dictations : m_unsaved)
        count(dictations, days);
    return days;
}

void StatsStore::refresh()
{
    Q_ASSERT(QThread::currentThread() == thread());
    // Files are replaced in one step, so a look needs no lock.
    const QList<DailyStat> days = withUnsaved(read());
    if (days != m_days)
        publish(days);
}

void StatsStore::reset()
{
    Q_ASSERT(QThread::currentThread() == thread());
    const std::optional<FileLock> lock = lockForChange(m_fileURL);
    publish({});
    removeDamagedFiles(m_fileURL);
    m_unsaved.clear();
    save({});
}

void StatsStore::publish(const QList<DailyStat>& days)
{
    m_days = days;
    Q_EMIT daysChanged();
}

void StatsStore::save(const Found& found)
{
    const auto saved =
        encodeStatistics(m_days).and_then([&](const QByteArray& bytes) -> Result<void, QString> {
            if (m_fileURL.isEmpty())
                return failure(QStringLiteral("there is no folder for application data"));
            if (found.kind == Found::Kind::damaged)
                keepDamagedFile(m_fileURL);
            return replaceFile(m_fileURL, bytes);
        });
    if (saved)
        m_unsaved.clear();
    else
        qCCritical(lcApp, "Could not save statistics: %s", qUtf8Printable(saved.error()));
}

} // namespace tulvane
