#pragma once

#include <ports/Obstacle.h>

#include <QByteArray>

#include <optional>

namespace tulvane {

/// Why nothing can be shown on the X display, in English; none where its server answers. Asks the server
/// once, and waits for its answer. Needs no application object.
[[nodiscard]] std::optional<Obstacle> displayObstacle(const QByteArray& display);

} // namespace tulvane
