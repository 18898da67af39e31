#pragma once

#include <QList>
#include <QString>
#include <QtGlobal>

#include <chrono>
#include <optional>

namespace tulvane {

/// How fast something comes, from how much had come when: the mean of the last few seconds, so that the
/// number does not jump. Any thread.
class TransferRate final {
public:
    static constexpr std::chrono::seconds span{6};
    /// Before so much time has been seen there is no rate.
    static constexpr std::chrono::milliseconds shortest{1000};

    void note(qint64 received, std::chrono::nanoseconds at);
    void clear() { m_seen.clear(); }

    /// Bytes a second; nothing before there is something to go by.
    [[nodiscard]] std::optional<double> bytesPerSecond() const;

private:
    struct Sight {
        qint64 received = 0;
        std::chrono::nanoseconds at{0};
    };

    QList<Sight> m_seen; ///< oldest first
};

/// "40 s", "3 min", "1 h 5 min", in the user's language.
[[nodiscard]] QString durationText(std::chrono::seconds time);

} // namespace tulvane
