#include <platform/linux/session/X11Text.h>
#include <platform/linux/x11/clipboard/FrontWindow.h>
#include <platform/linux/x11/clipboard/X11Pasteboards.h>
#include <platform/linux/x11/keyboard/X11KeyPosting.h>

namespace tulvane {

struct X11Text::Parts {
    Parts(std::unique_ptr<X11Connection> opened, std::unique_ptr<SelectionOwner> started,
          const PasteRules& rules, Scheduler& scheduler)
        : link(std::move(opened)),
          keeper(std::move(started)),
          pasteboards(*link, *keeper, scheduler, rules),
          keys(*link, scheduler, [this](const PasteTarget& target) { return pasteboards.isInFront(target); })
    {
    }

    std::unique_ptr<X11Connection> link;
    std::unique_ptr<SelectionOwner> keeper;
    X11Pasteboards pasteboards;
    X11KeyPosting keys;
};

X11Text::X11Text(std::unique_ptr<Parts> parts) : m_parts(std::move(parts)) {}
X11Text::~X11Text() = default;

std::unique_ptr<X11Text> X11Text::open(const QByteArray& display, const PasteRules& rules,
                                       Scheduler& scheduler)
{
    auto link = X11Connection::open(display);
    auto keeper = link ? SelectionOwner::start(display) : nullptr;
    if (!keeper)
        return nullptr;
    return std::unique_ptr<X11Text>(
        new X11Text(std::make_unique<Parts>(std::move(link), std::move(keeper), rules, scheduler)));
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
