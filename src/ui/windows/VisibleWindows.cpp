#include <ui/windows/ProgramWindow.h>
#include <ui/windows/VisibleWindows.h>

#include <QGuiApplication>
#include <QWindow>

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

bool restoreMinimizedWindows()
{
    bool found = false;
    for (QWindow* const window : QGuiApplication::topLevelWindows()) {
        if (!window->isVisible() || window->windowState() != Qt::WindowMinimized || isPanel(*window))
            continue;
        bringToFront(*window);
        found = true;
    }
    return found;
}

bool bringVisibleWindowsToFront(const QWindow* foremost)
{
    const QWindow* const focused = QGuiApplication::focusWindow();
    const QWindow* const last = focused ? focused : foremost;
    QWindow* lastVisible = nullptr;
    const QList<QWindow*> windows = visibleWindows();
    for (QWindow* const window : windows) {
        if (window == last)
            lastVisible = window;
        else
            bringToFront(*window);
    }
    if (lastVisible)
        bringToFront(*lastVisible);
    return !windows.isEmpty();
}

} // namespace tulvane
