#include <platform/linux/x11/clipboard/ClipboardHandover.h>
#include <platform/linux/x11/clipboard/X11Pasteboards.h>

namespace tulvane {

X11Pasteboards::X11Pasteboards(X11Connection& link, SelectionOwner& owner, Scheduler& scheduler,
                               PasteRules rules)
    : m_link(link),
      m_targets(link, std::move(rules)),
      m_clipboard(link, owner, scheduler, QStringLiteral("CLIPBOARD")),
      m_primary(link, owner, scheduler, QStringLiteral("PRIMARY"))
{
}

X11Pasteboards::~X11Pasteboards()
{
    const QList<xcb_atom_t> targets = m_clipboard.ownTargets();
    if (!targets.isEmpty())
        ClipboardHandover(m_link).run(targets);
}

void X11Pasteboards::readAhead()
{
    board(pasteTarget().selection).readAhead();
}

} // namespace tulvane
