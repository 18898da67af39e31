#pragma once

#include <QList>
#include <QPoint>
#include <QRect>
#include <QSize>

#include <optional>

namespace tulvane {

/// One display, in device-independent pixels of the desktop, counted from its top left.
struct ScreenPlace {
    QRect frame;
    QRect visibleFrame; ///< the frame without task bars and docks
};

/// The displays as they are at one moment.
struct ScreenLayout {
    QList<ScreenPlace> screens; ///< the main screen first
    QPoint pointer;             ///< where the mouse pointer is

    /// Between the panel's lower edge and that of what is free of the screen.
    static constexpr int panelFromLowerEdge = 44;

    /// As the desktop has them now. Main thread; needs a QGuiApplication.
    [[nodiscard]] static ScreenLayout current();

    /// The screen that holds the pointer, else the main screen; null when there is none at all.
    [[nodiscard]] const ScreenPlace* chosen() const;
    /// Where the indicator's panel of this size goes on the chosen screen: its top left. In the middle, a
    /// little above the lower edge of what is free.
    [[nodiscard]] std::optional<QPoint> panelPlace(QSize panel) const;
};

} // namespace tulvane
