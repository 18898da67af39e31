#pragma once

#include <platform/linux/x11/connection/X11Connection.h>
#include <ports/PasteTarget.h>

namespace tulvane {

/// Answers where a paste would go. Main thread.
class PasteTargets final {
public:
    /// `link` outlives it.
    PasteTargets(X11Connection& link, PasteRules rules) : m_link(link), m_rules(std::move(rules)) {}

    /// By the window in front, and by whether the layout that keys are posted in has a V at all: without one,
    /// Shift+Insert pastes, from the clipboard in most programs and from the text selected last in terminals.
    [[nodiscard]] PasteTarget current() const;
    /// Whether keys that are posted now reach the target's window.
    [[nodiscard]] bool isInFront(const PasteTarget& target) const;

private:
    [[nodiscard]] bool layoutHasV() const;

    X11Connection& m_link;
    PasteRules m_rules;
};

} // namespace tulvane
