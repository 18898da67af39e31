#include <platform/linux/x11/clipboard/FrontWindow.h>
#include <platform/linux/x11/clipboard/PasteTargets.h>
#include <platform/linux/x11/keyboard/KeyboardDevices.h>
#include <platform/linux/x11/keyboard/KeyboardLayout.h>

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>

namespace tulvane {

PasteTarget PasteTargets::current() const
{
    const FrontWindow front = FrontWindow::current(m_link);
    const auto rule = std::ranges::find_if(m_rules, [&](const PasteRule& one) {
        return front.classes.contains(one.windowClass, Qt::CaseInsensitive);
    });
    PasteTarget target{front.window};
    if (rule != m_rules.end())
        target = {front.window, rule->selection, rule->chord, rule->lineBreaks};
    if (target.chord.key != PasteChord::controlV.key || layoutHasV())
        return target;
    if (target.chord == PasteChord::controlShiftV)
        target.selection = PasteSelection::primary;
    target.chord = PasteChord::shiftInsert;
    return target;
}

bool PasteTargets::isInFront(const PasteTarget& target) const
{
    return FrontWindow::sameTopLevel(m_link, FrontWindow::current(m_link).window,
                                     static_cast<xcb_window_t>(target.window));
}

bool PasteTargets::layoutHasV() const
{
    const auto layout = KeyboardLayout::ofDevice(m_link, KeyboardDevices::current(m_link).posting);
    return layout && layout->find(XKB_KEY_v, 0);
}

} // namespace tulvane
