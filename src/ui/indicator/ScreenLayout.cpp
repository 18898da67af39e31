#include <ui/indicator/ScreenLayout.h>

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <cmath>

namespace tulvane {

namespace {

/// From the lower edge of what is free to the indicator, and from there to the panel's own lower edge.
constexpr int belowIndicator = 72;
constexpr int panelMargin = 28;

} // namespace

ScreenLayout ScreenLayout::current()
{
    ScreenLayout layout;
    const QScreen* const main = QGuiApplication::primaryScreen();
    if (main)
        layout.screens.append({main->geometry(), main->availableGeometry()});
    for (const QScreen* screen : QGuiApplication::screens()) {
        if (screen != main)
            layout.screens.append({screen->geometry(), screen->availableGeometry()});
    }
    layout.pointer = QCursor::pos();
    return layout;
}

const ScreenPlace* ScreenLayout::chosen() const
{
    const auto holder = std::ranges::find_if(
        screens, [this](const ScreenPlace& screen) { return screen.frame.contains(pointer); });
    if (holder != screens.end())
        return &*holder;
    return screens.isEmpty() ? nullptr : &screens.first();
}

std::optional<QPoint> ScreenLayout::panelPlace(QSize panel) const
{
    const ScreenPlace* const screen = chosen();
    if (!screen)
        return std::nullopt;
    const QRect free = screen->visibleFrame;
    const double middle = free.x() + free.width() / 2.0;
    const int lowerEdge = free.y() + free.height() - (belowIndicator - panelMargin);
    return QPoint(static_cast<int>(std::floor(middle - panel.width() / 2.0)), lowerEdge - panel.height());
}

} // namespace tulvane
