#pragma once

#include <QString>

namespace tulvane {

/// Why something is not possible here, and what the user can do about it, in words that the user reads. Both
/// are empty where nothing stands in the way.
struct Obstacle {
    QString reason;
    QString remedy;

    /// Both in one text.
    [[nodiscard]] QString text() const { return remedy.isEmpty() ? reason : reason + u' ' + remedy; }

    [[nodiscard]] friend bool operator==(const Obstacle&, const Obstacle&) = default;
};

} // namespace tulvane
