#pragma once

#include <platform/linux/x11/clipboard/PasteTargets.h>
#include <platform/linux/x11/clipboard/X11Pasteboard.h>

namespace tulvane {

/// The clipboard and the text selected last, and which of them the program in front pastes. Main thread.
class X11Pasteboards final : public Pasteboards {
public:
    /// The first three outlive it.
    X11Pasteboards(X11Connection& link, SelectionOwner& owner, Scheduler& scheduler, PasteRules rules);

    X11Pasteboards(const X11Pasteboards&) = delete;
    X11Pasteboards& operator=(const X11Pasteboards&) = delete;
    /// Leaves a clipboard of ours with the desktop's clipboard manager, where there is one; waits for it a
    /// moment.
    ~X11Pasteboards() override;

    [[nodiscard]] PasteTarget pasteTarget() override { return m_targets.current(); }
    /// Whether keys that are posted now reach the target's window.
    [[nodiscard]] bool isInFront(const PasteTarget& target) const { return m_targets.isInFront(target); }
    [[nodiscard]] Pasteboard& of(PasteSelection selection) override { return board(selection); }

    void readAhead() override;

private:
    [[nodiscard]] X11Pasteboard& board(PasteSelection selection)
    {
        return selection == PasteSelection::primary ? m_primary : m_clipboard;
    }

    X11Connection& m_link;
    PasteTargets m_targets;
    X11Pasteboard m_clipboard;
    X11Pasteboard m_primary;
};

} // namespace tulvane
