#include <platform/linux/x11/windows/OutlineRows.h>

#include <algorithm>
#include <cmath>

namespace tulvane {

std::vector<xcb_rectangle_t> outlineRows(const PanelOutline& outline, double scale)
{
    const int left = qRound(outline.rect.left() * scale);
    const int top = qRound(outline.rect.top() * scale);
    const int width = qRound(outline.rect.right() * scale) - left;
    const int height = qRound(outline.rect.bottom() * scale) - top;
    if (width <= 0 || height <= 0)
        return {};
    const double radius = std::min({outline.radius * scale, width / 2.0, height / 2.0});
    const auto rectangle = [](int x, int y, int across, int down) {
        return xcb_rectangle_t{static_cast<qint16>(x), static_cast<qint16>(y), static_cast<quint16>(across),
                               static_cast<quint16>(down)};
    };
    std::vector<xcb_rectangle_t> rows;
    const int corner = static_cast<int>(std::floor(radius));
    for (int row = 0; row < corner; ++row) {
        const double rise = radius - row - 0.5;
        const int inset = qRound(radius - std::sqrt(radius * radius - rise * rise));
        if (width <= 2 * inset)
            continue;
        rows.push_back(rectangle(left + inset, top + row, width - 2 * inset, 1));
        rows.push_back(rectangle(left + inset, top + height - 1 - row, width - 2 * inset, 1));
    }
    if (height > 2 * corner)
        rows.push_back(rectangle(left, top + corner, width, height - 2 * corner));
    return rows;
}

} // namespace tulvane
