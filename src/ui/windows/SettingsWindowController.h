#pragma once

#include <ui/windows/SettingsSelection.h>

#include <QObject>
#include <QSize>

#include <functional>
#include <memory>

class QQmlEngine;
class QQuickView;
class QWindow;

namespace tulvane {

class UserDefaults;
class WindowFrame;

/// Owns the main window: built when it is first shown, hidden when it is closed, shown again where it was.
/// Main thread.
class SettingsWindowController final : public QObject {
    Q_OBJECT

public:
    static constexpr QSize smallest{900, 600};
    static constexpr QSize initial{1020, 680};

    struct Dependencies {
        std::function<QQmlEngine&()> engine; ///< asked for when the window is built
        std::function<QObject*()> models;    ///< the `ViewModels` that the window's root is given
        UserDefaults& defaults;              ///< keeps the window's frame
    };

    explicit SettingsWindowController(Dependencies neighbours);
    ~SettingsWindowController() override;

    /// Selects the page and brings the window to the front, with the focus.
    void show(SettingsTab page);
    [[nodiscard]] SettingsSelection& selection() { return m_selection; }
    /// Null until the window has been shown for the first time.
    [[nodiscard]] QQuickView* window() const { return m_window.get(); }

Q_SIGNALS:
    /// Once, before the window is first shown.
    void windowMade(QWindow* window);

private:
    void makeWindow();

    Dependencies m_dependencies;
    SettingsSelection m_selection;
    std::unique_ptr<QQuickView> m_window;
    std::unique_ptr<WindowFrame> m_frame;
};

} // namespace tulvane
