#pragma once

#include <ports/Presentation.h>

#include <QString>

#include <functional>

namespace tulvane {

class AppSettings;
class UserDefaults;

/// Connects the life of the process to the program's objects: what happens before anything is shown, once
/// everything stands, when the user starts a program that runs, and at the end. Main thread.
class AppDelegate final {
public:
    /// What the delegate works with; all of it outlives the delegate. What stands in functions may be made
    /// after it.
    struct Dependencies {
        AppSettings& settings; ///< loaded: what the migration brings counts from the next start on
        UserDefaults& defaults;
        Presentation& presentation;
        QString dataFolder; ///< the user's folder for applications' data
        std::function<void()> launchController;
        std::function<bool()> isSetUp; ///< whether nothing is missing for dictating
        std::function<void()> cancelRecording;
        std::function<bool()> bringWindowsToFront; ///< false when none is visible
        std::function<bool()> restoreMinimized;    ///< brings back what was put away; false when nothing was
        std::function<void()> openMainWindow;
        std::function<void()> openOnboarding;
    };

    explicit AppDelegate(Dependencies neighbours);

    /// Before anything is shown, and before anything reads the files that an earlier product may have left:
    /// brings them over, and settles how the program looks.
    void willFinishLaunching();
    /// Once the event loop is about to run.
    void didFinishLaunching() const;
    /// The program goes on without a window.
    [[nodiscard]] static bool shouldTerminateAfterLastWindowClosed() { return false; }
    /// The user has started the running program again: shows what it has to show.
    void shouldHandleReopen() const;
    /// The last thing before the objects go.
    void willTerminate() const;

    /// Follows `showInDock`: at the start, and whenever it has changed. A window that the user has before
    /// him stays there.
    void applyActivationPolicy();

private:
    Dependencies m_dependencies;
    /// What every process begins with.
    ActivationPolicy m_policy = ActivationPolicy::regular;
};

} // namespace tulvane
