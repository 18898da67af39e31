#include <platform/linux/x11/clipboard/X11Pasteboards.h>

namespace tulvane {

X11Pasteboards::X11Pasteboards(X11Link& link, SelectionOwner& owner, Scheduler& scheduler, PasteRules rules)
    : m_targets(link, std::move(rules)),
      m_clipboard(link, owner, scheduler, QStringLiteral("CLIPBOARD")),
      m_primary(link, owner, scheduler, QStringLiteral("PRIMARY"))
{
}

void X11Pasteboards::readAhead()
{
    board(pasteTarget().selection).readAhead();
}

} // namespace tulvane
