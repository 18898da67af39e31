#pragma once

#include <base/FileLock.h>
#include <platform/linux/transfers/LineSocket.h>
#include <platform/linux/transfers/http/TransferEngine.h>

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <map>
#include <memory>
#include <set>
#include <vector>

namespace tulvane::transfers {

/// The helper's heart: looks after one transfer folder for all of the user's programs. Goes on with what its
/// predecessors have left, hands each finished file to one program, reports to all of them what happens, and
/// asks to quit when nothing is left to do. Lives on the main thread of the helper.
class TransferServer final : public QObject {
    Q_OBJECT

public:
    struct Options {
        QString folder;
        QString socket;
        HttpOptions http;
        std::chrono::milliseconds linger{2'000}; ///< idle for so long, it quits
        std::chrono::hours keepPaused = TransferFolder::keepPaused;
    };

    explicit TransferServer(const Options& options);
    Q_DISABLE_COPY_MOVE(TransferServer)
    ~TransferServer() override;

    /// Takes the folder, listens, and goes on with what lies there. False when another helper has the folder,
    /// or nothing can listen.
    [[nodiscard]] bool begin();

Q_SIGNALS:
    /// There is nothing left to do.
    void idle();

private:
    struct Client {
        std::unique_ptr<LineSocket> socket;
        bool attached = false;
        bool owesDelivered = false;
    };

    [[nodiscard]] bool lockFolder();
    [[nodiscard]] bool listen();
    void restore();
    void accept();
    void gone(LineSocket* socket);
    void take(Client& client, const QJsonObject& message);
    void takeTasks(Client& client);
    void takeStart(Client& client, const TransferRequest& request);
    void takeCancel(Client& client, const QString& key);
    void takeDiscard(const QString& key);
    void takeTaken(const QString& key);
    void takeKept(const QString& key);
    void noteFailed(const QString& key, const TransferError& error);
    void closeHandover(const QString& key);
    void noteFinished(const TransferRecord& record);
    void offerAll();
    void tellDelivered();
    void tellAll(const QJsonObject& message);
    void considerQuitting();
    [[nodiscard]] Client* clientOf(const LineSocket* socket);

    Options m_options;
    TransferEngine m_engine;
    std::optional<FileLock> m_lock;
    int m_listening = -1;
    std::unique_ptr<QSocketNotifier> m_knocking;
    std::vector<std::unique_ptr<Client>> m_clients;
    std::map<QString, TransferRecord> m_untaken;
    std::map<QString, const LineSocket*> m_offered;
    std::map<QString, const LineSocket*> m_starters;
    std::set<QString> m_discarded; ///< to be removed as soon as they have ended
    QTimer m_linger;
};

} // namespace tulvane::transfers
