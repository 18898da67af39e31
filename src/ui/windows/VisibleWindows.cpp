#include <ui/windows/ProgramWindow.h>
#include <ui/windows/VisibleWindows.h>

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>

namespace tulvane {

namespace {

bool isPanel(const QWindow& window)
{
    return window.type() != Qt::Window ||
           (window.flags() & (Qt::BypassWindowManagerHint | Qt::WindowDoesNotAcceptFocus)) != 0;
}

} // namespace

QList<QWindow*> visibleWindows()
{
    QList<QWindow*> windows;
    for (QWindow* const window : QGuiApplication::topLevelWindows()) {
        if (window->isVisible() && window->windowState() != Qt::WindowMinimized && !isPanel(*window))
            windows.append(window);
    }
    return windows;
}

bool bringVisibleWindowsToFront(const QWindow* foremost)
{
    QList<QWindow*> windows = visibleWindows();
    const QWindow* const focused = QGuiApplication::focusWindow();
    const QWindow* const last = focused ? focused : foremost;
    std::ranges::stable_partition(windows, [last](const QWindow* window) { return window != last; });
    for (QWindow* const window : windows)
        bringToFront(*window);
    return !windows.isEmpty();
}

} // namespace tulvane
