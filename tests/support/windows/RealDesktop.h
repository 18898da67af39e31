#pragma once

#include <support/ServerView.h>
#include <support/VirtualDesktop.h>

#include <QRasterWindow>

namespace tulvane::test {

/// The desktop that this process's windows are on.
[[nodiscard]] VirtualDesktop& realDesktop();

/// One view of it for all tests. A view that came with each test would get the window ids of the one that had
/// just gone, and what the window manager still does to a window of the last test would hit one of the next.
[[nodiscard]] ServerView& realView();

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
