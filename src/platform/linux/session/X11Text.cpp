#include <platform/linux/session/X11Text.h>
#include <platform/linux/x11/clipboard/X11Pasteboard.h>
#include <platform/linux/x11/keyboard/FrontWindow.h>
#include <platform/linux/x11/keyboard/PasteRoute.h>
#include <platform/linux/x11/keyboard/X11KeyPosting.h>

namespace tulvane {

namespace {

class X11Pasteboards final : public Pasteboards {
public:
    X11Pasteboards(X11Connection& link, SelectionOwner& keeper, Scheduler& scheduler, TerminalTable terminals)
        : m_link(link),
          m_terminals(std::move(terminals)),
          m_clipboard(link, keeper, scheduler, QStringLiteral("CLIPBOARD")),
          m_primary(link, keeper, scheduler, QStringLiteral("PRIMARY"))
    {
    }

    [[nodiscard]] Pasteboard& general() override { return m_clipboard; }
    [[nodiscard]] Pasteboard& pasteSource() override
    {
        const PasteRoute route = PasteRoute::current(m_link, m_terminals);
        return route.selection == PasteSelection::primary ? m_primary : m_clipboard;
    }

private:
    X11Connection& m_link;
    TerminalTable m_terminals;
    X11Pasteboard m_clipboard;
    X11Pasteboard m_primary;
};

} // namespace

struct X11Text::Parts {
    Parts(std::unique_ptr<X11Connection> opened, std::unique_ptr<SelectionOwner> started,
          const TerminalTable& terminals, Scheduler& scheduler)
        : link(std::move(opened)),
          keeper(std::move(started)),
          pasteboards(*link, *keeper, scheduler, terminals),
          keys(*link, scheduler, terminals)
    {
    }

    std::unique_ptr<X11Connection> link;
    std::unique_ptr<SelectionOwner> keeper;
    X11Pasteboards pasteboards;
    X11KeyPosting keys;
};

X11Text::X11Text(std::unique_ptr<Parts> parts) : m_parts(std::move(parts)) {}
X11Text::~X11Text() = default;

std::unique_ptr<X11Text> X11Text::open(const QByteArray& display, const TerminalTable& terminals,
                                       Scheduler& scheduler)
{
    auto link = X11Connection::open(display);
    auto keeper = link ? SelectionOwner::start(display) : nullptr;
    if (!keeper)
        return nullptr;
    return std::unique_ptr<X11Text>(
        new X11Text(std::make_unique<Parts>(std::move(link), std::move(keeper), terminals, scheduler)));
}

X11Connection& X11Text::connection()
{
    return *m_parts->link;
}

Pasteboards& X11Text::pasteboards()
{
    return m_parts->pasteboards;
}

KeyPosting& X11Text::keys()
{
    return m_parts->keys;
}

std::optional<quint32> X11Text::frontProcess()
{
    return FrontWindow::process(*m_parts->link);
}

} // namespace tulvane
