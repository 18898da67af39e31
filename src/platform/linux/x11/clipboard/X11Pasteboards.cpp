#include <platform/linux/x11/clipboard/X11Pasteboards.h>

namespace tulvane {

X11Pasteboards::X11Pasteboards(X11Link& link, SelectionOwner& owner, Scheduler& scheduler,
                               TerminalTable terminals)
    : m_targets(link, std::move(terminals)),
      m_clipboard(link, owner, scheduler, QStringLiteral("CLIPBOARD")),
      m_primary(link, owner, scheduler, QStringLiteral("PRIMARY"))
{
}

} // namespace tulvane
