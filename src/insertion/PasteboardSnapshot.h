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
    bool complete = true; ///< false when something of it did not come in time

    /// Main thread. The pasteboard must outlive the answer.
    [[nodiscard]] static QCoro::Task<PasteboardSnapshot> capture(Pasteboard& pasteboard);

    /// Whether putting it back is better than leaving what stands there now: not where nothing came of what
    /// the user had.
    [[nodiscard]] bool isWorthRestoring() const { return complete || !items.isEmpty(); }

    /// Whether it holds just this text, in whatever types and with whatever line breaks.
    [[nodiscard]] bool isText(const QString& text) const;

    /// Clears the pasteboard, and puts the items back in one write, where its change count is still `count`;
    /// otherwise another program has written since, and nothing happens. True when the pasteboard took them;
    /// false also where there is nothing to put back.
    bool restore(Pasteboard& pasteboard, qint64 count) const;
};

} // namespace tulvane
