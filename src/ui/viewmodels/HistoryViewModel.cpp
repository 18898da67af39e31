#include <base/Clock.h>
#include <base/Translate.h>
#include <dictation/DictationSession.h>
#include <ports/Pasteboard.h>
#include <stats/StatsFormat.h>
#include <stats/StatsStore.h>
#include <stats/WordCount.h>
#include <ui/viewmodels/HistoryViewModel.h>

#include <QLocale>

#include <algorithm>

namespace tulvane {

HistoryViewModel::HistoryViewModel(const DictationSession& session, const StatsStore& stats,
                                   const Clock& clock, Pasteboards& pasteboards, Scheduler& scheduler,
                                   qsizetype most, QObject* parent)
    : QAbstractListModel(parent),
      m_session(session),
      m_stats(stats),
      m_clock(clock),
      m_pasteboards(pasteboards),
      m_scheduler(scheduler),
      m_most(most)
{
    m_shown = m_session.history().first(std::min(m_most, m_session.history().size()));
    connect(&m_session, &DictationSession::historyChanged, this, &HistoryViewModel::follow);
}

HistoryViewModel::~HistoryViewModel() = default;

int HistoryViewModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

QHash<int, QByteArray> HistoryViewModel::roleNames() const
{
    return {
        {TranscriptRole, "transcript"}, {TimeRole, "time"},     {LengthRole, "length"}, {WordsRole, "words"},
        {CopyLabelRole, "copyLabel"},   {CopiedRole, "copied"}, {DayRole, "day"}};
}

QVariant HistoryViewModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= count())
        return {};
    const TranscriptEntry& entry = m_shown.at(index.row());
    switch (role) {
    case TranscriptRole:
        return textOf(entry).trimmed();
    case TimeRole:
        return timeText(entry.date);
    case LengthRole:
        return translate("%1 s").arg(QLocale().toString(entry.durationSeconds, 'f', 1));
    case WordsRole:
        return translate("%1 words").arg(countWords(entry.text));
    case CopyLabelRole:
        return copyLabel(entry.id);
    case CopiedRole: {
        const auto answer = m_answers.find(entry.id);
        return answer != m_answers.end() && answer->second.taken;
    }
    case DayRole:
        return dayText(entry.date);
    default:
        return {};
    }
}

QString HistoryViewModel::timeText(const QDateTime& date) const
{
    const QString time = QLocale().toString(date.time(), QLocale::ShortFormat);
    const Calendar& calendar = m_stats.calendar();
    const QDate day = calendar.dateOf(date);
    return day == calendar.dateOf(m_clock.now()) ? time : formatDay(day) + u' ' + time;
}

QString HistoryViewModel::dayText(const QDateTime& date) const
{
    const Calendar& calendar = m_stats.calendar();
    const QDate day = calendar.dateOf(date);
    const qint64 back = day.daysTo(calendar.dateOf(m_clock.now()));
    if (back == 0)
        return translate("Today");
    return back == 1 ? translate("Yesterday") : QLocale().toString(day, QLocale::LongFormat);
}

QString HistoryViewModel::textOf(const TranscriptEntry& entry) const
{
    const auto corrected = m_corrections.find(entry.id);
    return corrected == m_corrections.end() ? entry.text : corrected->second;
}

void HistoryViewModel::correct(int row, const QString& text)
{
    if (row < 0 || row >= count())
        return;
    const TranscriptEntry& entry = m_shown.at(row);
    if (text.trimmed().isEmpty() || text == entry.text.trimmed())
        m_corrections.erase(entry.id);
    else
        m_corrections[entry.id] = text;
    Q_EMIT dataChanged(index(row), index(row), {TranscriptRole});
}

void HistoryViewModel::insert(int row)
{
    if (row >= 0 && row < count())
        Q_EMIT insertWanted(textOf(m_shown.at(row)));
}

void HistoryViewModel::forgetCorrections()
{
    std::erase_if(m_corrections, [this](const auto& corrected) {
        return std::ranges::find(m_shown, corrected.first, &TranscriptEntry::id) == m_shown.end();
    });
}

QString HistoryViewModel::copyLabel(const QUuid& id) const
{
    const auto answer = m_answers.find(id);
    if (answer == m_answers.end())
        return translate("Copy");
    return answer->second.taken ? translate("Copied") : translate("Not copied");
}

void HistoryViewModel::copy(int row)
{
    if (row < 0 || row >= count())
        return;
    const QUuid id = m_shown.at(row).id;
    // Replacing clears the pasteboard too, and no program finds it empty in between.
    const bool taken = m_pasteboards.general().replace({PasteboardItem::text(textOf(m_shown.at(row)))});
    m_answers[id] = {taken, m_scheduler.after(copiedTime, [this, id] { forget(id); })};
    tellOfAnswer(id);
}

void HistoryViewModel::forget(const QUuid& id)
{
    m_answers.erase(id);
    tellOfAnswer(id);
}

void HistoryViewModel::tellOfAnswer(const QUuid& id)
{
    const auto entry = std::ranges::find(m_shown, id, &TranscriptEntry::id);
    if (entry == m_shown.end())
        return;
    const QModelIndex changed = index(static_cast<int>(entry - m_shown.begin()));
    Q_EMIT dataChanged(changed, changed, {CopyLabelRole, CopiedRole});
}

void HistoryViewModel::refresh()
{
    if (!m_shown.isEmpty())
        Q_EMIT dataChanged(index(0), index(count() - 1), {TimeRole, DayRole});
}

void HistoryViewModel::follow()
{
    const QList<TranscriptEntry>& all = m_session.history();
    const QList<TranscriptEntry> wanted = all.first(std::min(m_most, all.size()));
    // New entries come at the front, and old ones leave at the end; rows that stay keep their place, and the
    // keyboard its button.
    const auto stays = m_shown.isEmpty()
                           ? wanted.end()
                           : std::ranges::find(wanted, m_shown.first().id, &TranscriptEntry::id);
    const int added = static_cast<int>(stays - wanted.begin());
    const int kept = static_cast<int>(wanted.size()) - added;
    if (kept < count()) {
        beginRemoveRows({}, kept, count() - 1);
        m_shown.resize(kept);
        endRemoveRows();
    }
    if (added > 0) {
        beginInsertRows({}, 0, added - 1);
        m_shown = wanted;
        endInsertRows();
    }
    forgetCorrections();
    Q_EMIT countChanged();
}

} // namespace tulvane
