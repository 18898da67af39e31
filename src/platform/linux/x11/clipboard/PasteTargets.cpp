#include <platform/linux/x11/clipboard/FrontWindow.h>
#include <platform/linux/x11/clipboard/PasteTargets.h>
#include <platform/linux/x11/keyboard/KeyboardLayout.h>

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>

namespace tulvane {

PasteTarget PasteTargets::current() const
{
    const FrontWindow front = FrontWindow::current(m_link);
    const auto terminal = std::ranges::find_if(m_terminals, [&](const TerminalWindow& entry) {
        return front.classes.contains(entry.windowClass, Qt::CaseInsensitive);
    });
    PasteTarget target{front.window};
    if (terminal != m_terminals.end())
        target = {front.window, terminal->selection, terminal->chord};
    if (target.chord == PasteChord::shiftInsert || layoutHasV())
        return target;
    const bool isTerminal = target.chord == PasteChord::controlShiftV;
    return {front.window, isTerminal ? PasteSelection::primary : PasteSelection::clipboard,
            PasteChord::shiftInsert};
}

bool PasteTargets::isInFront(const PasteTarget& target) const
{
    return FrontWindow::sameTopLevel(m_link, FrontWindow::current(m_link).window,
                                     static_cast<xcb_window_t>(target.window));
}

bool PasteTargets::layoutHasV() const
{
    const auto layout = KeyboardLayout::current(m_link);
    return layout && layout->find(XKB_KEY_v, 0);
}

} // namespace tulvane
