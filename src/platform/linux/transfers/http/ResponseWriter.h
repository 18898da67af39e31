#pragma once

#include <platform/linux/transfers/TransferFolder.h>
#include <platform/linux/transfers/http/ResponsePlan.h>
#include <platform/linux/transfers/http/HttpOptions.h>
#include <platform/linux/transfers/http/PartialFile.h>

#include <QFile>

#include <chrono>
#include <functional>
#include <optional>
#include <span>

namespace tulvane::transfers {

/// Bytes so far and bytes of the whole file (-1: unknown).
using ProgressReport = std::function<void(qint64 received, qint64 expected)>;

/// Puts one answer where it belongs, by its plan, and keeps the record beside it up to date. One thread.
class ResponseWriter final {
public:
    struct Place {
        const TransferFolder& folder;
        TransferRecord& record;
        PartialFile& partial;
        const HttpOptions& options;
        const ProgressReport& report;
    };

    ResponseWriter(const Place& place, const Held& held) : m_place(place), m_held(held) {}

    /// Takes a piece of the body; false when no more is wanted, for the reason in `plan` or `problem`.
    [[nodiscard]] bool receive(const ResponseHead& head, std::span<const std::byte> bytes);
    /// Settles the plan of an answer without a body. Does nothing when a body has come.
    void settle(const ResponseHead& head);

    [[nodiscard]] const std::optional<ResponsePlan>& plan() const { return m_plan; }
    /// Why nothing more could be written.
    [[nodiscard]] const std::optional<TransferError>& problem() const { return m_problem; }
    /// Whether the partial file is the whole file.
    [[nodiscard]] bool isWhole() const;

private:
    [[nodiscard]] bool begin(const ResponseHead& head);
    [[nodiscard]] bool beginBody(const ResponseHead& head);
    [[nodiscard]] bool hasRoom();
    [[nodiscard]] bool writeAside(std::span<const std::byte> bytes);
    [[nodiscard]] bool fail(const TransferError& error);
    void keepRecord();

    Place m_place;
    Held m_held;
    std::optional<ResponsePlan> m_plan;
    std::optional<TransferError> m_problem;
    QFile m_aside;
    qint64 m_nextRoomCheck = 0;
    std::chrono::steady_clock::time_point m_lastReport{};
    std::chrono::steady_clock::time_point m_lastKept = std::chrono::steady_clock::now();
};

} // namespace tulvane::transfers
