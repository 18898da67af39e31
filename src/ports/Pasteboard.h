#pragma once

#include <ports/PasteTarget.h>
#include <ports/PasteboardItem.h>

#include <QFuture>

#include <functional>

namespace tulvane {

/// A pasteboard that all programs share. Main thread. No call waits for another program.
class Pasteboard {
public:
    /// Whether the target of our last write has read what we wrote.
    enum class Reading {
        untold, ///< this pasteboard cannot tell
        unread,
        read, ///< all of it; stays so when another program writes afterwards
    };

    Pasteboard() = default;
    Pasteboard(const Pasteboard&) = delete;
    Pasteboard& operator=(const Pasteboard&) = delete;
    virtual ~Pasteboard() = default;

    /// Every item in every type, in the pasteboard's order; a type that its owner offers and then does not
    /// deliver is left out. The future always finishes with a result.
    [[nodiscard]] virtual QFuture<PasteboardContents> contents() = 0;

    /// Grows with every change, ours or another program's. Counts our own write at once, and another
    /// program's as soon as it has happened, whether or not the event loop has run since.
    [[nodiscard]] virtual qint64 changeCount() = 0;

    /// Clears the pasteboard and puts these items on it, in one step, so that no program finds it empty in
    /// between. False when the pasteboard did not take them; it is left cleared then. From now on `reading()`
    /// tells about the target: of the other programs, which read too, it says nothing.
    virtual bool replaceFor(const QList<PasteboardItem>& items, const PasteTarget& target) = 0;

    /// The same for every program alike.
    bool replace(const QList<PasteboardItem>& items) { return replaceFor(items, {}); }

    virtual void clear() = 0;

    /// What `changeCount()` was at our last write or clearing. Asked for afterwards, it might have another
    /// program's write in it already, which would then be taken for ours.
    [[nodiscard]] virtual qint64 ownChangeCount() const = 0;

    /// Does as `replace`, or as `clear` where there are no items, but only where `changeCount()` is still
    /// `count`: what another program has written since is newer, and stays. The look and the write are as
    /// near to one step as the system allows. False where it changed nothing, and where `replace` would say
    /// so.
    virtual bool replaceUnlessChanged(const QList<PasteboardItem>& items, qint64 count) = 0;

    [[nodiscard]] virtual Reading reading() const = 0;

    /// Called from the event loop after `reading()` or `changeCount()` may have changed. One handler.
    virtual void setActivityHandler(std::function<void()> handler) = 0;
};

/// The pasteboards that a paste has to do with. Main thread.
class Pasteboards {
public:
    Pasteboards() = default;
    Pasteboards(const Pasteboards&) = delete;
    Pasteboards& operator=(const Pasteboards&) = delete;
    virtual ~Pasteboards() = default;

    /// The program in front now, and how it pastes.
    [[nodiscard]] virtual PasteTarget pasteTarget() = 0;

    /// The pasteboard that is read by a program that pastes from this selection; where the desktop has only
    /// one pasteboard, that one.
    [[nodiscard]] virtual Pasteboard& of(PasteSelection selection) = 0;

    /// A paste may come soon: begins to read what it would replace, so that `contents()` has it sooner. What
    /// another program writes until then is read in its place.
    virtual void readAhead() = 0;

    /// The one that the user's own copy and paste commands use.
    [[nodiscard]] Pasteboard& general() { return of(PasteSelection::clipboard); }
};

} // namespace tulvane
