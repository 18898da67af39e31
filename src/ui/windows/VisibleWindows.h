#pragma once

#include <QList>

class QWindow;

namespace tulvane {

/// The program's windows on the screen, as a user counts them: neither the indicator, which floats above
/// everything, nor menus, nor the icon in the tray, nor what has been put away into the task bar. Main
/// thread.
[[nodiscard]] QList<QWindow*> visibleWindows();

/// Brings them all before the windows of other programs. The one that has the focus keeps it; else `foremost`
/// gets it. False when there is none.
bool bringVisibleWindowsToFront(const QWindow* foremost = nullptr);

/// Brings the windows back that the user has put away into the task bar, with what they show. False when
/// there is none.
bool restoreMinimizedWindows();

} // namespace tulvane
