#pragma once

#include <QString>
#include <QUrl>

namespace tulvane {

/// Hands things to the desktop to show. Main thread; neither call waits for a window.
class Workspace {
public:
    Workspace() = default;
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;
    virtual ~Workspace() = default;

    /// Opens the URL in the program that the user has chosen for it. An "x-apple.systempreferences:" URL
    /// opens the desktop's nearest settings page. False when nothing could be started for it.
    virtual bool open(const QUrl& url) = 0;

    /// Shows the folder in the file manager. False when nothing could be started for it.
    virtual bool reveal(const QString& folder) = 0;
};

} // namespace tulvane
