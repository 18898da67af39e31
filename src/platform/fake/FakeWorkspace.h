#pragma once

#include <ports/Workspace.h>

#include <QList>
#include <QStringList>

namespace tulvane {

/// Keeps what it was asked to show.
class FakeWorkspace final : public Workspace {
public:
    bool open(const QUrl& url) override
    {
        opened.append(url);
        return !refuses;
    }
    bool reveal(const QString& folder) override
    {
        revealed.append(folder);
        return !refuses;
    }

    bool refuses = false; ///< no program can be started
    QList<QUrl> opened;   ///< oldest first, those that were refused as well
    QStringList revealed; ///< the same of folders
};

} // namespace tulvane
