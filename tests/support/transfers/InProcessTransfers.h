#pragma once

#include <platform/linux/transfers/http/TransferEngine.h>
#include <ports/BackgroundTransfers.h>

#include <map>

namespace tulvane {

/// Transfers that live and end with this object, over threads of this process: the engine of the helper
/// without the helper. The program itself never fetches so; a test learns from it whether the process or the
/// engine is to blame.
class InProcessTransfers final : public QObject, public BackgroundTransfers {
    Q_OBJECT

public:
    /// `folder` holds the partial files; it must lie on the file system that the files are moved to.
    explicit InProcessTransfers(const QString& folder, const transfers::HttpOptions& options = {});

    void setEvents(TransferEvents events) override { m_events = std::move(events); }
    [[nodiscard]] QFuture<QList<TransferTask>> tasks() override;
    [[nodiscard]] TransferId start(const TransferRequest& request) override;
    [[nodiscard]] TransferId resume(const QByteArray& resumeData) override;
    void cancel(TransferId id) override;
    void discard(const QUrl& url) override;
    [[nodiscard]] QList<TransferRemnant> remnants() const override { return m_engine.folder().remnants(); }

private:
    struct Local {
        TransferId id = 0;
        bool discarding = false;
        bool ending = false; ///< cancelled, or its file is being handed over
        /// Asked for again before this one has quite ended; begins when it has.
        TransferId nextId = 0;
        TransferRequest next;
    };

    void deliver(const transfers::TransferRecord& record);
    void complete(const QString& key, const std::optional<TransferError>& error);
    void completeLater(TransferId id, const TransferError& error);

    transfers::TransferEngine m_engine;
    TransferEvents m_events;
    std::map<QString, Local> m_locals;
    TransferId m_last = 0;
};

} // namespace tulvane
