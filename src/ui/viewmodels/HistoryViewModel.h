#pragma once

#include <base/Scheduler.h>
#include <dictation/TranscriptEntry.h>

#include <QAbstractListModel>
#include <QList>
#include <QtQml/qqmlregistration.h>

#include <chrono>
#include <map>
#include <memory>

namespace tulvane {

class Clock;
class DictationSession;
class Pasteboards;
class StatsStore;

/// The newest dictations of this run of the program, as rows that can be copied, corrected
/// and inserted again. Main thread.
class HistoryViewModel final : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role {
        TranscriptRole = Qt::UserRole + 1,
        TimeRole,      ///< time of day, after its date where that is not today
        LengthRole,    ///< of the recorded audio, in seconds
        WordsRole,     ///< how many, in words
        CopyLabelRole, ///< what the copy button says
        CopiedRole,    ///< whether the text has just been copied
        DayRole,       ///< "Today", "Yesterday" or the date
    };

    /// How long a button says that its text was copied.
    static constexpr std::chrono::milliseconds copiedTime{1500};

    /// Lists at most so many entries. All collaborators outlive this object.
    HistoryViewModel(const DictationSession& session, const StatsStore& stats, const Clock& clock,
                     Pasteboards& pasteboards, Scheduler& scheduler, qsizetype most, QObject* parent);
    ~HistoryViewModel() override;

    [[nodiscard]] int count() const { return static_cast<int>(m_shown.size()); }
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// Puts the row's text, and nothing else, on the general pasteboard. The button says for a while whether
    /// the pasteboard took it.
    Q_INVOKABLE void copy(int row);
    /// From now on this is the row's text, for reading, copying and inserting: in memory only, like the text
    /// that it takes the place of. An empty one brings back what was dictated.
    Q_INVOKABLE void correct(int row, const QString& text);
    /// Asks for the row's text to be inserted into the window that was in front before ours.
    Q_INVOKABLE void insert(int row);
    /// Writes the times anew: what was today may be yesterday by now.
    Q_INVOKABLE void refresh();

Q_SIGNALS:
    void countChanged();
    void insertWanted(const QString& text);

private:
    /// What the last press of a copy button came to, until its time is over.
    struct Answer {
        bool taken = false;
        std::unique_ptr<Scheduler::Token> end;
    };

    void follow();
    void forget(const QUuid& id);
    void tellOfAnswer(const QUuid& id);
    [[nodiscard]] QString timeText(const QDateTime& date) const;
    [[nodiscard]] QString dayText(const QDateTime& date) const;
    /// As it was corrected; else as it was dictated.
    [[nodiscard]] QString textOf(const TranscriptEntry& entry) const;
    void forgetCorrections();
    [[nodiscard]] QString copyLabel(const QUuid& id) const;

    const DictationSession& m_session;
    const StatsStore& m_stats;
    const Clock& m_clock;
    Pasteboards& m_pasteboards;
    Scheduler& m_scheduler;
    qsizetype m_most;
    QList<TranscriptEntry> m_shown;
    std::map<QUuid, QString> m_corrections;
    std::map<QUuid, Answer> m_answers;
};

} // namespace tulvane
