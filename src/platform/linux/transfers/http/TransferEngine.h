#pragma once

#include <platform/linux/transfers/TransferFolder.h>
#include <platform/linux/transfers/http/HttpDownload.h>

#include <QObject>

#include <map>
#include <memory>
#include <thread>

namespace tulvane::transfers {

/// Runs the downloads of one folder, each on a thread of its own, and reports on the thread that owns this
/// object (which needs an event loop) what becomes of them. Destroying it stops them; their records stay
/// `running`, so that the next keeper of the folder goes on with them.
class TransferEngine final : public QObject {
    Q_OBJECT

public:
    struct Running {
        QString key;
        QUrl url;
        qint64 received = 0;
        qint64 expected = -1;
    };

    TransferEngine(const TransferFolder& folder, const HttpOptions& options, QObject* parent = nullptr);
    Q_DISABLE_COPY_MOVE(TransferEngine)
    ~TransferEngine() override;

    [[nodiscard]] const TransferFolder& folder() const { return m_folder; }
    /// Begins, goes on with what an earlier try has left, or joins what is running. Returns the key.
    QString start(const TransferRequest& request);
    /// Ends it with `cancelled`; unknown keys are ignored.
    void cancel(const QString& key);
    /// Stops everything and waits; what was running is left for the next one. Nothing is reported afterwards.
    void stop();
    [[nodiscard]] QList<Running> running() const;
    [[nodiscard]] bool isRunning(const QString& key) const { return m_jobs.contains(key); }

Q_SIGNALS:
    void progressed(const QString& key, qint64 received, qint64 expected);
    /// Ended with a response; its file is `folder().finishedFile(record)`, and stays until it is settled.
    void finished(const tulvane::transfers::TransferRecord& record);
    /// Ended without one.
    void failed(const QString& key, const tulvane::TransferError& error);

private:
    struct Job;

    void run(Job& job, const TransferRecord& record);
    void leaveForTheNext(const QString& key, const TransferRequest& request) const;
    void noteProgress(const QString& key, qint64 received, qint64 expected);
    void noteEnd(const QString& key, const DownloadEnd& end);

    TransferFolder m_folder;
    HttpOptions m_options;
    std::map<QString, std::unique_ptr<Job>> m_jobs;
};

} // namespace tulvane::transfers
