#pragma once

#include <platform/linux/transfers/TransferFolder.h>
#include <platform/linux/transfers/http/HttpOptions.h>
#include <platform/linux/transfers/http/PartialFile.h>
#include <platform/linux/transfers/http/ResponsePlan.h>

#include <QFile>

#include <chrono>
#include <functional>
#include <optional>
#include <span>

namespace tulvane::transfers {

/// Bytes so far and bytes of the whole file (-1: unknown).
using ProgressReport = std::function<void(qint64 received, qint64 expected)>;

/// Puts one response where it belongs, by its plan, and keeps the record beside it up to date. One thread.
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
    /// The whole response has come: settles the plan of one without a body, and of one that was held back.
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
    [[nodiscard]] bool leavesReserve(qint64 growth);
    [[nodiscard]] bool openAside();
    [[nodiscard]] bool holdBack(const ResponseHead& head, std::span<const std::byte> bytes);
    [[nodiscard]] bool writeBody(std::span<const std::byte> bytes);
    [[nodiscard]] bool writeAside(std::span<const std::byte> bytes);
    [[nodiscard]] bool fail(const TransferError& error);
    void keepRecord();

    Place m_place;
    Held m_held;
    std::optional<ResponsePlan> m_plan;
    std::optional<TransferError> m_problem;
    QFile m_aside;
    QByteArray m_heldBack;
    std::chrono::steady_clock::time_point m_lastReport{};
    std::chrono::steady_clock::time_point m_lastKept = std::chrono::steady_clock::now();
};

} // namespace tulvane::transfers
