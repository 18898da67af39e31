#include <base/Log.h>
#include <platform/linux/atspi/AtspiFocusedElements.h>
#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/gnome/ChosenHotkeys.h>
#include <platform/linux/gnome/GnomeHotkeys.h>
#include <platform/linux/gnome/GnomeShell.h>
#include <platform/linux/gnome/IBusElements.h>
#include <platform/linux/gnome/MutterRemoteDesktop.h>
#include <platform/linux/portal/PortalRemoteDesktop.h>
#include <platform/linux/session/Session.h>
#include <platform/linux/session/desktop/GnomePorts.h>
#include <platform/linux/session/desktop/GnomeText.h>
#include <platform/linux/session/desktop/PortalPorts.h>
#include <platform/linux/session/desktop/X11Ports.h>
#include <ports/KeyModifiers.h>
#include <ports/UserDefaults.h>
#include <ports/VirtualKeys.h>

namespace tulvane {

namespace {

/// The default, and it alone, is stored without having been chosen.
GnomeHotkeys::Choices choicesIn(const std::shared_ptr<UserDefaults>& defaults)
{
    const QString key = QStringLiteral("defaultHotkeyChosen");
    constexpr KeyCombination standard{virtualKeys::space, carbon::option};
    return {.isMade =
                [=](const KeyCombination& combination) {
                    return combination != standard || !defaults || defaults->value(key).toBool();
                },
            .make =
                [=](const KeyCombination& combination) {
                    if (combination == standard && defaults && !defaults->set(key, true))
                        qCWarning(lcHotkey, "Could not store that the hotkey was chosen");
                }};
}

/// The first whose portal has shortcuts. Older ones answer for another desktop's, where that is installed.
constexpr int firstWithShortcuts = 48;

void fillWithHotkeys(Desktop& desktop, const DesktopOptions& options)
{
    // A key that the user has bound to “tulvane toggle” repeats, too.
    const auto own = std::make_shared<CustomBindings>(GSettings(options.environment));
    desktop.runsCommandForHotkey = [own] { return own->haveToggleBesides(GnomeHotkeys::path()); };
    // Both edges of the key, and no process at each press.
    if (gnomeShellVersion(LastingBus::session()->connection()) >= firstWithShortcuts) {
        if (const auto portal = portalHotkeys(options.environment)) {
            desktop.hotkeys = std::make_shared<ChosenHotkeys>(portal, choicesIn(options.defaults));
            return;
        }
    }
    const auto hotkeys = std::make_shared<GnomeHotkeys>(
        options.environment, GnomeHotkeys::commandOf(options.program, QStringLiteral("toggle")),
        choicesIn(options.defaults));
    hotkeys->follow(LastingBus::session());
    desktop.hotkeys = hotkeys;
    desktop.runsCommandForHotkey = [hotkeys, own] {
        return hotkeys->isBound() || own->haveToggleBesides(GnomeHotkeys::path());
    };
}

/// GNOME's own, which asks nothing, or else the portal.
std::shared_ptr<RemoteDesktop> remoteDesktopOf(const DesktopParts& parts, const QString& bus)
{
    if (parts.remoteDesktop)
        return parts.remoteDesktop;
    return std::make_shared<MutterRemoteDesktop>(bus);
}

void fillWithText(Desktop& desktop, const DesktopOptions& options, const QString& bus,
                  const std::shared_ptr<GnomeText>& text)
{
    desktop.pasteboards = std::shared_ptr<Pasteboards>(text, &text->pasteboards());
    desktop.keys = std::shared_ptr<KeyPosting>(text, &text->keys());
    const auto fields = std::make_shared<AtspiFocusedElements>(bus, [text]() -> std::optional<quint32> {
        const quint32 process = text->front().current().process;
        return process != 0 ? std::optional(process) : std::nullopt;
    });
    desktop.elements = std::make_shared<IBusElements>(
        fields,
        std::make_shared<IBusCommit>(options.environment, [text] { return text->layout().engine(); }));
}

} // namespace

Result<void, Obstacle> fillWithGnomePorts(Desktop& desktop, const DesktopOptions& options,
                                          const DesktopParts& parts)
{
    const QString bus = AtspiFocusedElements::usersSessionBus();
    const auto text = GnomeText::open({.environment = options.environment,
                                       .sessionBusAddress = bus,
                                       .rules = options.terminals,
                                       .remoteDesktop = remoteDesktopOf(parts, bus)},
                                      parts.scheduler);
    if (!text)
        return failure(xServerLacks(options.environment));
    fillWithHotkeys(desktop, options);
    fillWithText(desktop, options, bus, text);
    fillWithX11Windows(desktop, options, std::shared_ptr<X11Connection>(text, &text->connection()));
    return {};
}

} // namespace tulvane
