#pragma once

#include <ports/TransferError.h>

#include <QFuture>
#include <QList>
#include <QUrl>

#include <functional>
#include <optional>

namespace tulvane {

/// Names a transfer within one BackgroundTransfers object; never reused by it.
using TransferId = qint64;

/// One file to fetch.
struct TransferRequest {
    QUrl url;             ///< the stable address; it is asked again for every resumption
    QByteArray userAgent; ///< the value of the "User-Agent" header
    /// Bytes to expect: for the check of the disk before anything is asked, and a third more is the most that
    /// is written. 0: unknown, and no limit.
    qint64 sizeHint = 0;

    [[nodiscard]] friend bool operator==(const TransferRequest&, const TransferRequest&) = default;
};

/// A transfer that is under way, maybe since before this program started.
struct TransferTask {
    enum class State { running, suspended, cancelling, completed };

    TransferId id = 0;
    QUrl originalUrl;
    qint64 received = 0;  ///< bytes so far, those of earlier tries included
    qint64 expected = -1; ///< bytes of the whole file; below 1 when the server has not said
    State state = State::running;
};

/// Bytes that an ended transfer has left for a later one of its address.
struct TransferRemnant {
    QUrl url;
    qint64 bytes = 0;

    [[nodiscard]] friend bool operator==(const TransferRemnant&, const TransferRemnant&) = default;
};

/// What a BackgroundTransfers object reports. For one transfer: any number of `progress`, then at most one
/// `finished`, then exactly one `completed`. All are called on the main thread, from the event loop, never
/// from within a call into the port.
struct TransferEvents {
    /// Bytes so far and bytes of the whole file (below 1: unknown). At most some ten times per second.
    std::function<void(TransferId, qint64 received, qint64 expected)> progress;
    /// The server's whole response lies in `file`, safely on the disk, whatever its HTTP status says. A
    /// receiver that wants the file moves it away inside the call; what is left is deleted when the call
    /// returns. False: the receiver could not move it, and the transfers keep it for a later `start` of the
    /// address.
    std::function<bool(TransferId, int httpStatus, const QString& file)> finished;
    /// The transfer is over: without an error after `finished`, or when another program has taken the file.
    std::function<void(TransferId, const std::optional<TransferError>&)> completed;
    /// Everything that ended while no program was there has been reported.
    std::function<void()> eventsDelivered;
};

/// Fetches files over HTTP(S) into the user's own storage. Transfers may outlive the program ("background"),
/// in which case a later program finds them in `tasks()`. Main thread; nothing blocks on the network.
class BackgroundTransfers {
public:
    BackgroundTransfers() = default;
    BackgroundTransfers(const BackgroundTransfers&) = delete;
    BackgroundTransfers& operator=(const BackgroundTransfers&) = delete;
    virtual ~BackgroundTransfers() = default;

    /// Sets the receiver of the events, in place of the one before; an empty one receives nothing.
    virtual void setEvents(TransferEvents events) = 0;
    /// What is under way. What ended while no program was there is among it and is reported as `finished` and
    /// `completed` afterwards. Never fails: transfers that cannot be asked for are not there.
    [[nodiscard]] virtual QFuture<QList<TransferTask>> tasks() = 0;
    /// Begins a transfer; failures are reported by `completed`. A transfer of the same address that is under
    /// way is joined, and bytes that an earlier one has left and that are still valid are kept.
    [[nodiscard]] virtual TransferId start(const TransferRequest& request) = 0;
    /// Goes on with what an error's `resumeData` describes. Data that cannot be read ends in `badAnswer`.
    [[nodiscard]] virtual TransferId resume(const QByteArray& resumeData) = 0;
    /// Ends a transfer; `completed` follows with `cancelled` and resume data. Unknown ones are ignored.
    virtual void cancel(TransferId id) = 0;
    /// Removes what transfers of this address have left. One that is under way is ended, and `completed`
    /// follows with `cancelled` and no resume data.
    virtual void discard(const QUrl& url) = 0;
    /// What ended transfers have left, of whatever address. Reads the disk. Bytes that wait for thirty days
    /// are removed by themselves.
    [[nodiscard]] virtual QList<TransferRemnant> remnants() const = 0;
};

} // namespace tulvane
