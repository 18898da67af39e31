#pragma once

#include <QObject>
#include <QSize>

#include <functional>
#include <memory>

class QQmlEngine;
class QQuickView;

namespace tulvane {

class ViewModels;
class UserDefaults;
class WindowFrame;

/// Owns the window that leads through the setup: built when it is first shown, hidden when it is closed. The
/// permissions are read once a second while it is on the screen. Main thread.
class OnboardingWindowController final : public QObject {
    Q_OBJECT

public:
    static constexpr QSize initial{620, 720};
    /// The content scrolls where the screen is lower than the window.
    static constexpr int lowest = 480;

    struct Dependencies {
        std::function<QQmlEngine&()> engine; ///< asked for when the window is built
        std::function<ViewModels&()> models; ///< likewise; outlive this object
        UserDefaults& defaults;              ///< keeps the window's frame
    };

    explicit OnboardingWindowController(Dependencies neighbours);
    ~OnboardingWindowController() override;

    /// Brings the window to the front, with the focus.
    void show();
    /// Hides it, as the user's own closing of it does.
    void close();
    /// Null until the window has been shown for the first time.
    [[nodiscard]] QQuickView* window() const { return m_window.get(); }

private:
    void makeWindow();
    void followVisibility(bool isVisible);

    Dependencies m_dependencies;
    std::unique_ptr<QQuickView> m_window;
    std::unique_ptr<WindowFrame> m_frame;
    bool m_isWatching = false;
};

} // namespace tulvane
