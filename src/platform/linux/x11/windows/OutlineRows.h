#pragma once

#include <ports/IndicatorPanel.h>

#include <xcb/xcb.h>

#include <vector>

namespace tulvane {

/// The outline in the screen's own pixels: a rectangle of height 1 for each row of the round corners, and one
/// for what lies between them. `scale`: pixels to a device-independent one.
[[nodiscard]] std::vector<xcb_rectangle_t> outlineRows(const PanelOutline& outline, double scale);

} // namespace tulvane
