#pragma once

#include <base/Result.h>
#include <base/Scheduler.h>
#include <ports/Desktop.h>
#include <ports/PasteChord.h>

#include <QProcessEnvironment>
#include <QUrl>

namespace tulvane {

struct DesktopOptions {
    QProcessEnvironment environment; ///< which tells the session
    std::shared_ptr<UserDefaults> defaults = {};
    PasteRules terminals = {};
    QString symbols = {};        ///< the folder of NAME.svg for each symbol of the status item
    QString program = {};        ///< the executable that the desktop starts when the user logs in
    QUrl helpPage = {};          ///< our own page about permissions, for desktops without one
    QString transferHelper = {}; ///< the executable that downloads in the background
    QString transferFolder = {}; ///< for partial files, on the models' own file system
};

/// The window system that the toolkit is to use in this session, by the toolkit's name for it. Fails where no
/// window could be shown, in English. Before the application object, which would end the process there. Waits
/// for the display's answer.
[[nodiscard]] Result<QByteArray, Obstacle> windowSystem(const QProcessEnvironment& environment);

/// Every port of the session that the environment names. Fails, in English, where there is a display that
/// cannot be worked on; without any display every port that needs one is a null port. Needs the application
/// object of the windows where there is a display. `scheduler` outlives the desktop. Main thread.
[[nodiscard]] Result<std::unique_ptr<Desktop>, Obstacle> openDesktop(const DesktopOptions& options,
                                                                     Scheduler& scheduler);

} // namespace tulvane
