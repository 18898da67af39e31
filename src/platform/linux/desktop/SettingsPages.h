#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>

namespace tulvane {

/// A program with its arguments.
struct SettingsCommand {
    QString program;
    QStringList arguments;

    [[nodiscard]] friend bool operator==(const SettingsCommand&, const SettingsCommand&) = default;
};

/// The programs that show the settings page nearest to this pane, best first; none where the desktop has no
/// such page. `desktops` is the list that the session names in XDG_CURRENT_DESKTOP.
[[nodiscard]] QList<SettingsCommand> settingsPages(const QUrl& pane, const QStringList& desktops);

/// The part of our own page about permissions that speaks of this pane.
[[nodiscard]] QString helpSection(const QUrl& pane);

} // namespace tulvane
