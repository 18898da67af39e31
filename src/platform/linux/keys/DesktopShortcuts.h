#pragma once

#include <platform/linux/keys/Accelerator.h>
#include <ports/GlobalHotkeys.h>

#include <QList>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <optional>

namespace tulvane {

/// Where a desktop keeps its settings, and which one it is.
struct DesktopFolders {
    QString currentDesktop; ///< $XDG_CURRENT_DESKTOP
    QString configHome;
    QStringList configDirs; ///< the system's, best first

    [[nodiscard]] static DesktopFolders fromEnvironment(const QProcessEnvironment& environment);
};

/// The key combinations in the settings of the desktop that is running; none where they cannot be read.
/// `windowManager` is the name that the window manager gives itself. Reads files; call it when asked, not
/// often.
[[nodiscard]] std::optional<QList<SymbolicHotkey>>
readDesktopShortcuts(const DesktopFolders& folders, const QString& windowManager, const KeyLookup& keyOf);

} // namespace tulvane
