#pragma once

#include <platform/linux/transfers/http/HttpCall.h>
#include <platform/linux/transfers/http/ResponseWriter.h>

#include <stop_token>

namespace tulvane::transfers {

/// How a download ended. Its record is saved: `finished` without an error, `paused` with one.
struct DownloadEnd {
    TransferRecord record;
    qint64 received = 0;
    std::optional<TransferError> error;
};

/// Brings one file into a folder, going on with what lies there already where that is certain to be the same
/// file. Lives on the thread that runs it.
class HttpDownload final {
public:
    HttpDownload(const TransferFolder& folder, const TransferRecord& record, const HttpOptions& options,
                 ProgressReport report);

    /// Blocks until the end. `report` is called from within.
    [[nodiscard]] DownloadEnd run(const std::stop_token& stop);

private:
    /// What one try comes to: over (with or without an error), or to be tried again.
    struct Try {
        enum class Kind { done, failed, broken, again };
        Kind kind = Kind::failed;
        std::optional<TransferError> error;
    };

    [[nodiscard]] Result<void, TransferError> begin();
    [[nodiscard]] Result<void, TransferError> checkRoom() const;
    [[nodiscard]] Result<void, TransferError> dropUnsafeBytes();
    [[nodiscard]] bool canGoOn() const;
    [[nodiscard]] Try tryAll(const std::stop_token& stop);
    [[nodiscard]] Try tryOnce(const std::stop_token& stop);
    [[nodiscard]] Try judge(const HttpCallEnd& end, const ResponseWriter& writer);
    [[nodiscard]] Try judgeComplete(const HttpCallEnd& end, const ResponseWriter& writer);
    [[nodiscard]] Try finish(int httpStatus, bool aside);
    /// What is at hand when the file is asked for from this byte on.
    [[nodiscard]] Held expected(qint64 from) const;
    [[nodiscard]] HttpCall call(const Held& held) const;
    [[nodiscard]] DownloadEnd ended(const Try& last);
    void pauseWithoutRoom(DownloadEnd& end);

    TransferFolder m_folder;
    TransferRecord m_record;
    HttpOptions m_options;
    ProgressReport m_report;
    PartialFile m_partial;
    std::chrono::steady_clock::time_point m_deadline;
    bool m_distrustsBytes = false;
    int m_restarts = 0;
    bool m_askedAfterRefusal = false;
};

} // namespace tulvane::transfers
