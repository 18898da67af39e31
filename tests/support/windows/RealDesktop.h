#pragma once

#include <support/ServerView.h>
#include <support/VirtualDesktop.h>

#include <QRasterWindow>

namespace tulvane::test {

/// The desktop that this process's windows are on.
[[nodiscard]] VirtualDesktop& realDesktop();

/// Waits until the window is there for everybody. Returns whether it came.
[[nodiscard]] bool showAndWait(QWindow& window, ServerView& view);

[[nodiscard]] inline xcb_window_t idOf(QWindow& window)
{
    return static_cast<xcb_window_t>(window.winId());
}

/// A plain window of the program.
class PlainWindow final : public QRasterWindow {
public:
    PlainWindow() { setGeometry(100, 100, 300, 200); }
};

} // namespace tulvane::test
