#pragma once

#include <ports/BackgroundTransfers.h>

#include <QMap>
#include <QObject>
#include <QPromise>
#include <QTemporaryDir>

#include <optional>
#include <vector>

namespace tulvane {

/// Transfers without a network. A test either tells each event itself, or scripts what an address gives and
/// lets the event loop tell.
class FakeBackgroundTransfers final : public QObject, public BackgroundTransfers {
    Q_OBJECT

public:
    /// What a scripted address gives, one per transfer; the last one stays.
    struct Answer {
        int status = 200;
        QByteArray body;
        qint64 cutAfter = -1; ///< the connection is lost after so many bytes of the body
        bool hold = false;    ///< ... and nothing more happens after `cutAfter` bytes
    };

    void setEvents(TransferEvents events) override { m_events = std::move(events); }
    [[nodiscard]] QFuture<QList<TransferTask>> tasks() override;
    [[nodiscard]] TransferId start(const TransferRequest& request) override;
    [[nodiscard]] TransferId resume(const QByteArray& resumeData) override;
    void cancel(TransferId id) override;
    void discard(const QUrl& url) override;
    [[nodiscard]] QList<TransferRemnant> remnants() const override;

    // What was asked for, oldest first.
    QList<TransferRequest> started;
    QList<QByteArray> resumed;
    QList<TransferId> cancelled;
    QList<QUrl> discarded;

    // Telling by hand.
    void tellProgress(TransferId id, qint64 received, qint64 expected);
    /// Writes the body to a file, reports it, and removes what is left of it afterwards, as the real ones
    /// do.
    void tellFinished(TransferId id, int status, const QByteArray& body);
    /// The same with a file that exists already (a sparse one of the right size, say).
    void tellFinishedFile(TransferId id, int status, const QString& file);
    void tellCompleted(TransferId id, const std::optional<TransferError>& error = std::nullopt);
    void tellEventsDelivered();
    /// What `remnants()` answers, besides what scripted transfers have left.
    QList<TransferRemnant> left;
    /// Whether the receiver of the last `tellFinished` has dealt with the file.
    [[nodiscard]] bool wasTaken() const { return m_wasTaken; }
    /// The file that the last `tellFinished` handed over.
    [[nodiscard]] const QString& lastFile() const { return m_lastFile; }
    /// The identifier that the last `start` or `resume` gave.
    [[nodiscard]] TransferId lastTask() const { return m_last; }

    /// What `tasks()` answers, and whether it answers at once or when `answerTasks()` is called.
    void setTasks(const QList<TransferTask>& tasks) { m_tasks = tasks; }
    void holdTasks() { m_holdsTasks = true; }
    void answerTasks();
    [[nodiscard]] int timesAsked() const { return m_timesAsked; }

    // Telling by script.
    void script(const QUrl& url, const QList<Answer>& answers) { m_scripts[url] = answers; }

private:
    struct Playing {
        TransferRequest request;
        qint64 received = 0;
        qint64 expected = -1;
        bool ending = false;
        bool discarding = false;
    };

    void play(TransferId id);
    void end(TransferId id, const std::optional<TransferError>& error);

    TransferEvents m_events;
    TransferId m_last = 0;
    QTemporaryDir m_folder;
    QString m_lastFile;
    bool m_wasTaken = false;
    QList<TransferTask> m_tasks;
    bool m_holdsTasks = false;
    int m_timesAsked = 0;
    std::vector<QPromise<QList<TransferTask>>> m_asking;
    QMap<QUrl, QList<Answer>> m_scripts;
    QMap<TransferId, Playing> m_playing;
    QMap<QUrl, qint64> m_kept;
};

} // namespace tulvane
