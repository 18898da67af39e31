#include <platform/linux/front/RuledPasteTarget.h>
#include <platform/linux/x11/clipboard/BridgedPasteboards.h>
#include <platform/linux/x11/clipboard/FrontWindow.h>

namespace tulvane {

BridgedPasteboards::BridgedPasteboards(X11Connection& link, SelectionOwner& owner, Scheduler& scheduler,
                                       std::shared_ptr<FrontPrograms> front, PasteRules rules)
    : m_link(link),
      m_front(std::move(front)),
      m_rules(std::move(rules)),
      m_clipboard(link, owner, scheduler, QStringLiteral("CLIPBOARD"),
                  X11Pasteboard::Readers::bridgedAndKept),
      m_primary(link, owner, scheduler, QStringLiteral("PRIMARY"), X11Pasteboard::Readers::bridged)
{
}

PasteTarget BridgedPasteboards::pasteTarget()
{
    return ruledPasteTarget(m_front->current(), m_rules);
}

Pasteboard& BridgedPasteboards::of(PasteSelection selection)
{
    switch (selection) {
    case PasteSelection::clipboard:
        return m_clipboard;
    case PasteSelection::primary:
        return m_primary;
    case PasteSelection::both:
        return m_both;
    }
    Q_UNREACHABLE();
}

void BridgedPasteboards::readAhead()
{
    const PasteSelection selection = pasteTarget().selection;
    if (selection != PasteSelection::primary)
        m_clipboard.readAhead();
    if (selection != PasteSelection::clipboard)
        m_primary.readAhead();
}

bool BridgedPasteboards::isInFront(const PasteTarget& target)
{
    const FrontProgram now = m_front->current();
    if (now.window == target.window)
        return true;
    return now.isX11 && FrontWindow::sameTopLevel(m_link, static_cast<xcb_window_t>(now.window),
                                                  static_cast<xcb_window_t>(target.window));
}

bool BridgedPasteboards::isOffered(const PasteTarget& target) const
{
    // Where both are written, the clipboard is the later one.
    return target.selection == PasteSelection::primary ? m_primary.isBridged() : m_clipboard.isBridged();
}

bool BridgedPasteboards::isRead(const PasteTarget& target)
{
    return of(target.selection).reading() == Pasteboard::Reading::read;
}

void BridgedPasteboards::expectReader(const PasteTarget& target)
{
    if (target.selection != PasteSelection::primary)
        m_clipboard.expectReader();
    if (target.selection != PasteSelection::clipboard)
        m_primary.expectReader();
}

} // namespace tulvane
