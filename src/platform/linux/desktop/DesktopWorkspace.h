#pragma once

#include <ports/Workspace.h>

#include <QString>
#include <QStringList>

namespace tulvane {

/// The desktop that the session names, by the programs of the freedesktop conventions.
class DesktopWorkspace final : public Workspace {
public:
    /// `desktops` as in XDG_CURRENT_DESKTOP; `helpPage` is our own page about permissions, shown where the
    /// desktop has no settings page.
    DesktopWorkspace(QStringList desktops, QUrl helpPage);

    bool open(const QUrl& url) override;
    bool reveal(const QString& folder) override;

private:
    [[nodiscard]] bool openSettings(const QUrl& pane) const;

    QStringList m_desktops;
    QUrl m_helpPage;
};

} // namespace tulvane
