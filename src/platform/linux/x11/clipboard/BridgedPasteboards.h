#pragma once

#include <platform/linux/front/BothSelections.h>
#include <platform/linux/front/FrontProgram.h>
#include <platform/linux/x11/clipboard/X11Pasteboard.h>

#include <memory>

namespace tulvane {

/// The selections of a Wayland desktop whose compositor shares them with X11 programs, whatever window is in
/// front, and which of them the program in front pastes. The compositor keeps what is left there when this
/// goes. Main thread.
class BridgedPasteboards final : public Pasteboards {
public:
    /// The first three outlive it.
    BridgedPasteboards(X11Connection& link, SelectionOwner& owner, Scheduler& scheduler,
                       std::shared_ptr<FrontPrograms> front, PasteRules rules);

    [[nodiscard]] PasteTarget pasteTarget() override;
    [[nodiscard]] Pasteboard& of(PasteSelection selection) override;
    void readAhead() override;

    /// Whether keys that are posted now reach the target's window.
    [[nodiscard]] bool isInFront(const PasteTarget& target);
    /// Whether the target can read our last write by now.
    [[nodiscard]] bool isOffered(const PasteTarget& target) const;
    [[nodiscard]] bool isRead(const PasteTarget& target);
    /// The keys that make the target paste go out now: what is read after them is read for it.
    void expectReader(const PasteTarget& target);

private:
    X11Connection& m_link;
    std::shared_ptr<FrontPrograms> m_front;
    PasteRules m_rules;
    X11Pasteboard m_clipboard;
    X11Pasteboard m_primary;
    BothSelections m_both{m_clipboard, m_primary};
};

} // namespace tulvane
