#pragma once

#include <ports/Pasteboard.h>

#include <QCoroTask>
#include <QList>

namespace tulvane {

/// What a pasteboard held, to be put back later. A plain value; it lives for the duration of one paste.
struct PasteboardSnapshot {
    using Item = PasteboardItem;

    QList<Item> items; ///< in the pasteboard's order, every type of each
    qint64 changeCount = 0;
    /// False when the pasteboard's owner stopped answering. Such a snapshot must not be restored: a part of
    /// the user's clipboard is worse than the text that stands there now.
    bool complete = true;

    /// Main thread. The pasteboard must outlive the answer.
    [[nodiscard]] static QCoro::Task<PasteboardSnapshot> capture(Pasteboard& pasteboard);

    /// Whether it holds just this text, in whatever types.
    [[nodiscard]] bool isText(const QString& text) const;

    /// Clears the pasteboard, and puts the items back in one write, where its change count is still `count`;
    /// otherwise somebody has written since, and nothing happens. True when the pasteboard took them; false
    /// also where there is nothing to put back.
    bool restore(Pasteboard& pasteboard, qint64 count) const;
};

} // namespace tulvane
