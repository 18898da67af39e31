#pragma once

#include <QByteArray>

#include <optional>

namespace tulvane {

/// One message on sway's socket.
struct SwayMessage {
    quint32 type = 0;
    QByteArray body;

    [[nodiscard]] QByteArray bytes() const;
    /// The first whole message of the bytes, which are shortened by it; none while it has not all come. Bytes
    /// that are no message are dropped.
    [[nodiscard]] static std::optional<SwayMessage> take(QByteArray& bytes);
};

} // namespace tulvane
