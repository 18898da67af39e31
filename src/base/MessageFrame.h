#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <optional>

namespace tulvane {

/// A message as it travels through a pipe: its length in four bytes, the highest first, and then itself.
[[nodiscard]] QByteArray framed(const QByteArray& message);

/// Takes a pipe's bytes as they come, in pieces of any size, and gives the messages that are whole.
class MessageFrames final {
public:
    /// Longer ones are not believed: the sender has lost its way.
    static constexpr qint64 longest = qint64{1} << 30;

    void add(const QByteArray& bytes) { m_bytes += bytes; }
    /// The oldest message that is whole, once; none while it is not.
    [[nodiscard]] std::optional<QByteArray> next();
    /// Whether a message's length was beyond belief. What comes after it is no message either.
    [[nodiscard]] bool isBroken() const { return m_isBroken; }

private:
    QByteArray m_bytes;
    bool m_isBroken = false;
};

} // namespace tulvane
