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
        return true;
    }
    bool reveal(const QString& folder) override
    {
        revealed.append(folder);
        return true;
    }

    QList<QUrl> opened;
    QStringList revealed;
};

} // namespace tulvane
