#pragma once

#include <stats/Calendar.h>
#include <stats/DailyStat.h>

#include <QList>
#include <QObject>
#include <QString>

#include <optional>

namespace tulvane {

/// Per-day usage counters, kept in one JSON file that is read at construction and before every change, and
/// rewritten whole, in one step, after it. Several processes may count into one file: each takes in what the
/// others have saved, and a lock beside the file keeps them apart while they do. Only counts are kept, never
/// the dictated text. A file that cannot be read or understood counts as empty at construction, and later as
/// what it held before, without a message; before a save replaces it, its bytes are kept beside it. Main
/// thread only; saving is synchronous. A counter that would leave 64 bits ends the program.
class StatsStore final : public QObject {
    Q_OBJECT

public:
    /// The oldest days beyond this many are dropped when a dictation is recorded.
    static constexpr qsizetype mostDays = 400;

    /// "Tulvane/statistics.json" in the user's folder for applications' data; empty if there is no such
    /// folder.
    [[nodiscard]] static QString defaultFile();

    /// `fileURL` is a local path; none means the default one.
    explicit StatsStore(const std::optional<QString>& fileURL = std::nullopt,
                        const Calendar& calendar = Calendar::current(), QObject* parent = nullptr);

    /// Counts one dictation of the given final text at the given moment; negative seconds count as none.
    /// A text without any character records nothing. Only counts of the text are kept.
    void record(const QString& text, const QDateTime& date, double speakingSeconds);
    /// Takes in what other processes have counted since; nothing is announced where that is nothing. For
    /// a caller that is about to show the counters.
    void refresh();
    /// Removes all counters, those of a damaged earlier file included, and saves the empty file.
    void reset();

    /// Ascending by date, at most one entry a day.
    [[nodiscard]] const QList<DailyStat>& days() const { return m_days; }
    [[nodiscard]] const QString& fileURL() const { return m_fileURL; }
    [[nodiscard]] const Calendar& calendar() const { return m_calendar; }

Q_SIGNALS:
    /// Every change of `days`, before it is saved.
    void daysChanged();

private:
    /// What stands in the file's place; `damaged` is something that we could not understand.
    struct Found {
        enum class Kind { nothing, ours, damaged };
        Kind kind = Kind::nothing;
        QList<DailyStat> days;
    };

    [[nodiscard]] Found read() const;
    [[nodiscard]] std::optional<QList<DailyStat>> merged(const QList<DailyStat>& entries) const;
    [[nodiscard]] QList<DailyStat> withUnsaved(const Found& found) const;
    void publish(const QList<DailyStat>& days);
    void save(const Found& found);

    QString m_fileURL;
    Calendar m_calendar;
    QList<DailyStat> m_days;
    QList<DailyStat> m_unsaved; ///< counted here, and not in the file yet
};

} // namespace tulvane
