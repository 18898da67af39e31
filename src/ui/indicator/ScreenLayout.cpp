#include <ui/indicator/ScreenLayout.h>

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <cmath>

namespace tulvane {

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
    const int lowerEdge = free.y() + free.height() - panelFromLowerEdge;
    return QPoint(static_cast<int>(std::floor(middle - panel.width() / 2.0)), lowerEdge - panel.height());
}

} // namespace tulvane
