#pragma once

#include <platform/linux/caller/BusSocket.h>
#include <ports/RemoteControl.h>

#include <QByteArrayList>

#include <cstdint>
#include <memory>

namespace tulvane {

/// Asks the running program over the session bus and loads no library for it: a desktop's key binding starts
/// a process at each press, and thirty in a second while the key is held. Answers before `ask` returns. It
/// cannot be the running program.
class BusCaller final : public RemoteControl {
public:
    /// By the first of these sockets that takes us. Null where none does.
    [[nodiscard]] static std::unique_ptr<BusCaller> open(const QByteArrayList& sockets);

    explicit BusCaller(std::unique_ptr<BusSocket> socket) : m_socket(std::move(socket)) {}

    [[nodiscard]] Claim claim(Answer /*answer*/) override { return Claim::impossible; }
    void announcePhase(const QString& /*phase*/) override {}
    [[nodiscard]] QFuture<Result<QJsonObject, RemoteError>> ask(RemoteRequest request,
                                                                const QString& argument = {}) override;

private:
    using Answered = Result<QJsonObject, RemoteError>;

    [[nodiscard]] Answered answer(RemoteRequest request, const QString& argument);

    std::unique_ptr<BusSocket> m_socket;
    std::uint32_t m_lastNumber = 1; ///< the first was the greeting
};

} // namespace tulvane
