#pragma once

#include <ports/BackgroundTransfers.h>

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <optional>

namespace tulvane::transfers {

/// What is known about one file that is being fetched, kept beside its partial file so that another process,
/// or this one after a crash, can go on. Any thread.
struct TransferRecord {
    enum class State {
        running,  ///< to be gone on with by the folder's keeper
        paused,   ///< cancelled or failed; waits to be asked for again
        finished, ///< the response is complete and waits to be taken
    };

    static constexpr int greatestHttpStatus = 999; ///< three digits

    QUrl url;
    QByteArray userAgent;
    qint64 sizeHint = 0;
    QByteArray etag;      ///< the strong validator of the bytes at hand; empty: they cannot be resumed
    qint64 size = -1;     ///< bytes of the whole file, as the server said; -1: not said
    qint64 safeBytes = 0; ///< so many bytes are known to be on the disk itself
    QByteArray boot;      ///< since when the machine was running when that was written
    State state = State::running;
    int httpStatus = 0; ///< of the finished response
    bool aside = false; ///< the finished response is the one put aside, not the partial file

    /// Names the record's files: the same address has the same key, so it has one partial file.
    [[nodiscard]] QString key() const { return keyOf(url); }
    [[nodiscard]] static QString keyOf(const QUrl& url);
    [[nodiscard]] static TransferRecord of(const TransferRequest& request);

    [[nodiscard]] QByteArray toJson() const;
    /// None when the text is not a whole and sensible record.
    [[nodiscard]] static std::optional<TransferRecord> fromJson(const QByteArray& json);

    [[nodiscard]] friend bool operator==(const TransferRecord&, const TransferRecord&) = default;
};

/// This run of the machine. After a restart of the machine, bytes that were written but not yet flushed may
/// be missing or zero, though the file's length counts them.
[[nodiscard]] QByteArray currentBoot();

} // namespace tulvane::transfers
