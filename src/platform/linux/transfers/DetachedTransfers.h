#pragma once

#include <platform/linux/transfers/LineSocket.h>
#include <platform/linux/transfers/TransferFolder.h>
#include <ports/BackgroundTransfers.h>

#include <QObject>
#include <QPromise>
#include <QStringList>
#include <QTimer>

#include <map>
#include <memory>
#include <vector>

namespace tulvane {

/// Transfers that a helper program carries out, detached from this one: it survives this program's end, and a
/// later program finds its work again. The helper is started when there is something to do, one per user and
/// folder, and ends by itself. When it dies it is started again, and goes on.
class DetachedTransfers final : public QObject, public BackgroundTransfers {
    Q_OBJECT

public:
    struct Options {
        QString helper{};                               ///< the helper's executable
        QString folder{};                               ///< for partial files, on the models' own file system
        QStringList helperArguments{};                  ///< besides what names folder and socket
        std::chrono::milliseconds startTimeout{10'000}; ///< for the helper to answer
    };

    explicit DetachedTransfers(const Options& options);
    Q_DISABLE_COPY_MOVE(DetachedTransfers)
    ~DetachedTransfers() override;

    void setEvents(TransferEvents events) override { m_events = std::move(events); }
    [[nodiscard]] QFuture<QList<TransferTask>> tasks() override;
    [[nodiscard]] TransferId start(const TransferRequest& request) override;
    [[nodiscard]] TransferId resume(const QByteArray& resumeData) override;
    void cancel(TransferId id) override;
    void discard(const QUrl& url) override;
    [[nodiscard]] QList<TransferRemnant> remnants() const override { return m_folder.remnants(); }

private:
    struct Local {
        TransferId id = 0;
        TransferRequest request;
        qint64 received = 0;
        qint64 expected = -1;
        bool cancelling = false;
        bool discarding = false;
        bool taken = false;
        /// Asked for again before this one has quite ended; begins when it has.
        TransferId nextId = 0;
    };

    [[nodiscard]] bool connectNow();
    void connectOrLaunch();
    void launch();
    [[nodiscard]] bool launchOnce();
    void pollForHelper();
    void greet();
    void giveUp(const TransferError& error);
    void giveUpForRoom(qint64 free);
    void completeAll(const std::function<TransferError(const Local&)>& errorFor);
    void lost();
    void take(const QJsonObject& message);
    void tell(const QJsonObject& message);
    void takeHello(const QJsonObject& message);
    void takeTasks(const QJsonObject& message);
    void takeProgress(const QString& key, const QJsonObject& message);
    void takeFinished(const QString& key, const QJsonObject& message);
    void request(const TransferRequest& request);
    void completeLater(TransferId id, const TransferError& error);
    void complete(const QString& key, const std::optional<TransferError>& error);
    [[nodiscard]] QList<TransferTask> localTasks() const;
    void answerTasks(const QList<TransferTask>& list);

    Options m_options;
    transfers::TransferFolder m_folder;
    TransferEvents m_events;
    std::map<QString, Local> m_locals;
    TransferId m_last = 0;
    std::vector<QPromise<QList<TransferTask>>> m_asking;
    std::unique_ptr<transfers::LineSocket> m_socket;
    bool m_greeted = false;
    int m_losses = 0;
    QTimer m_polling;
    qint64 m_pollsLeft = 0;
};

} // namespace tulvane
