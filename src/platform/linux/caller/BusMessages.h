#pragma once

#include <QByteArray>

#include <cstdint>
#include <optional>

namespace tulvane {

/// A call of a method that takes one text or nothing.
struct BusCall {
    QByteArray destination;
    QByteArray path;
    QByteArray interface;
    QByteArray member;
    std::optional<QByteArray> argument;
};

/// What is read of a message.
struct BusMessage {
    enum class Type : std::uint8_t { call = 1, answer, error, signal };

    Type type = Type::call;
    std::uint32_t answers = 0; ///< the number of the call; 0 for what answers none
    QByteArray errorName;
    std::optional<QByteArray> text; ///< where a text is the first thing in it
};

/// Messages as they go over a bus. Any thread.
namespace busMessages {

/// Longer ones are not for us.
inline constexpr qsizetype longest = 1 << 20;
/// So much of a message tells how long it is.
inline constexpr qsizetype fixedPart = 16;

/// `number` is not 0. Nothing is started by the call.
[[nodiscard]] QByteArray encoded(const BusCall& call, std::uint32_t number);

/// The whole message's length by its first `fixedPart` bytes; nothing where they begin none that can be read.
[[nodiscard]] std::optional<qsizetype> length(const QByteArray& beginning);

/// Nothing where it is not as a message should be.
[[nodiscard]] std::optional<BusMessage> decoded(const QByteArray& message);

} // namespace busMessages

} // namespace tulvane
