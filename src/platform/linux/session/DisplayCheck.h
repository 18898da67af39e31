#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace tulvane {

/// Why nothing can be shown on the display, in words for the user; none where its X server answers. Asks the
/// server once, and waits for its answer. Needs no application object.
[[nodiscard]] std::optional<QString> displayObstacle(const QByteArray& display);

} // namespace tulvane
