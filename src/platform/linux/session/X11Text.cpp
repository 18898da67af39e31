#include <platform/linux/session/X11Text.h>
#include <platform/linux/x11/clipboard/FrontWindow.h>
#include <platform/linux/x11/clipboard/X11Pasteboards.h>
#include <platform/linux/x11/keyboard/X11KeyPosting.h>

#include <xcb/xinput.h>
#include <xcb/xtest.h>

namespace tulvane {

struct X11Text::Parts {
    Parts(std::unique_ptr<X11Link> opened, std::unique_ptr<SelectionOwner> started, const PasteRules& rules,
          Scheduler& scheduler)
        : link(std::move(opened)),
          keeper(std::move(started)),
          pasteboards(*link, *keeper, scheduler, rules),
          keys(*link, scheduler, [this](const PasteTarget& target) { return pasteboards.isInFront(target); })
    {
    }

    std::unique_ptr<X11Link> link;
    std::unique_ptr<SelectionOwner> keeper;
    X11Pasteboards pasteboards;
    X11KeyPosting keys;
};

X11Text::X11Text(std::unique_ptr<Parts> parts) : m_parts(std::move(parts)) {}
X11Text::~X11Text() = default;

std::unique_ptr<X11Text> X11Text::open(const QByteArray& display, const PasteRules& rules,
                                       Scheduler& scheduler)
{
    auto link = X11Link::open(display);
    auto keeper = link ? SelectionOwner::start(display) : nullptr;
    if (!keeper)
        return nullptr;
    return std::unique_ptr<X11Text>(
        new X11Text(std::make_unique<Parts>(std::move(link), std::move(keeper), rules, scheduler)));
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

X11PrivacyPermissions::Abilities X11Text::abilities(const QByteArray& display, SessionKind session)
{
    X11PrivacyPermissions::Abilities abilities{session, false, false, false};
    const auto link = X11Link::open(display);
    if (!link)
        return abilities;
    xcb_connection_t* const connection = link->connection();
    abilities.displayReached = true;
    const auto* test = xcb_get_extension_data(connection, &xcb_test_id);
    abilities.postsKeys = test != nullptr && test->present != 0;
    const auto* input = xcb_get_extension_data(connection, &xcb_input_id);
    if (input != nullptr && input->present != 0) {
        const XcbReply<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
            connection, xcb_input_xi_query_version(connection, 2, 0), nullptr));
        abilities.watchesKeys = version && version->major_version >= 2;
    }
    return abilities;
}

} // namespace tulvane
