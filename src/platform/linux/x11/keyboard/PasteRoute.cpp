#include <platform/linux/x11/keyboard/FrontWindow.h>
#include <platform/linux/x11/keyboard/PasteRoute.h>

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>

namespace tulvane {

PasteRoute PasteRoute::current(X11Connection& link, const TerminalTable& terminals)
{
    const FrontWindow front = FrontWindow::current(link);
    const auto terminal = std::ranges::find_if(terminals, [&](const TerminalWindow& entry) {
        return front.classes.contains(entry.windowClass, Qt::CaseInsensitive);
    });
    PasteRoute route;
    if (terminal != terminals.end())
        route = {terminal->chord, terminal->selection};
    if (route.chord == PasteChord::shiftInsert)
        return route;
    const auto layout = KeyboardLayout::current(link);
    if (layout && layout->find(XKB_KEY_v, 0))
        return route;
    const bool isTerminal = route.chord == PasteChord::controlShiftV;
    return {PasteChord::shiftInsert, isTerminal ? PasteSelection::primary : PasteSelection::clipboard};
}

} // namespace tulvane
