#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/session/Session.h>
#include <platform/linux/session/desktop/GnomeText.h>

namespace tulvane {

std::shared_ptr<GnomeText> GnomeText::open(const Options& options, Scheduler& scheduler)
{
    const QByteArray display = displayName(options.environment);
    auto link = X11Connection::open(display);
    auto keeper = link ? SelectionOwner::start(display) : nullptr;
    if (!keeper)
        return nullptr;
    return std::make_shared<GnomeText>(std::move(link), std::move(keeper), options, scheduler);
}

GnomeText::GnomeText(std::unique_ptr<X11Connection> link, std::unique_ptr<SelectionOwner> keeper,
                     const Options& options, Scheduler& scheduler)
    : m_link(std::move(link)),
      m_keeper(std::move(keeper)),
      m_front(std::make_shared<GnomeFront>(*m_link, options.sessionBusAddress)),
      m_layout(options.environment, LastingBus::session()),
      m_boards(*m_link, *m_keeper, scheduler, m_front, options.rules),
      m_keys(options.remoteDesktop,
             RemoteKeyPosting::Hooks{
                 .isInFront = [this](const PasteTarget& target) { return m_boards.isInFront(target); },
                 .isOffered = [this](const PasteTarget& target) { return m_boards.isOffered(target); },
                 .pasting = [this](const PasteTarget& target) { m_boards.expectReader(target); },
                 .isRead = [this](const PasteTarget& target) { return m_boards.isRead(target); },
                 .layout = [this] { return m_layout.current(); }})
{
}

} // namespace tulvane
