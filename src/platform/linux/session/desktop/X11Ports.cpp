#include <platform/linux/atspi/AtspiFocusedElements.h>
#include <platform/linux/desktop/shell/DesktopPresentation.h>
#include <platform/linux/desktop/shell/TrayStatusItem.h>
#include <platform/linux/session/Session.h>
#include <platform/linux/session/X11Text.h>
#include <platform/linux/session/desktop/X11IconDock.h>
#include <platform/linux/session/desktop/X11Ports.h>
#include <platform/linux/x11/connection/X11Connection.h>
#include <platform/linux/x11/keyboard/X11Hotkeys.h>
#include <platform/linux/x11/keyboard/X11ModifierEvents.h>
#include <platform/linux/x11/windows/TaskBarEntries.h>
#include <platform/linux/x11/windows/X11IndicatorPanel.h>
#include <platform/linux/x11/windows/X11KeyboardGrab.h>
#include <ports/UserDefaults.h>

namespace tulvane {

namespace {

void fillWithKeys(Desktop& desktop, const QProcessEnvironment& environment)
{
    const QString display = QString::fromLocal8Bit(displayName(environment));
    desktop.hotkeys = std::make_shared<X11Hotkeys>(display, DesktopFolders::fromEnvironment(environment));
    desktop.modifierEvents = std::make_shared<X11ModifierEvents>(display);
}

void fillWithText(Desktop& desktop, const std::shared_ptr<X11Text>& text)
{
    desktop.pasteboards = std::shared_ptr<Pasteboards>(text, &text->pasteboards());
    desktop.keys = std::shared_ptr<KeyPosting>(text, &text->keys());
    desktop.elements = std::make_shared<AtspiFocusedElements>(AtspiFocusedElements::usersSessionBus(),
                                                              [text] { return text->frontProcess(); });
}

/// What shows the program, mostly on the windows' own connection.
void fillWithShownParts(Desktop& desktop, const DesktopOptions& options,
                        const std::shared_ptr<X11Connection>& connection)
{
    desktop.keyboard = std::make_shared<X11KeyboardGrab>();
    const auto entries = std::make_shared<TaskBarEntries>();
    desktop.presentation =
        std::make_shared<DesktopPresentation>(LastingBus::session(), DesktopPresentation::standardFolder(),
                                              [entries](bool hidden) { entries->setHidden(hidden); });
    desktop.statusItem = std::make_shared<TrayStatusItem>(
        options.symbols, desktopName(options.environment).split(u':', Qt::SkipEmptyParts),
        std::make_unique<X11IconDock>());
    desktop.makeIndicatorPanel = [connection] { return std::make_unique<X11IndicatorPanel>(connection); };
}

void fillWithServer(Desktop& desktop, const std::shared_ptr<X11Connection>& connection)
{
    desktop.beep = [connection] { connection->ringBell(); };
    desktop.setEndHandler = [connection](const std::function<void()>& ended) {
        QObject::connect(connection.get(), &X11Connection::closed, connection.get(), ended);
    };
}

} // namespace

Obstacle xServerLacks(const QProcessEnvironment& environment)
{
    return {QStringLiteral("The X server %1 lacks what Tulvane needs: `tulvane doctor` says more.")
                .arg(QString::fromLocal8Bit(displayName(environment))),
            {}};
}

void fillWithX11Windows(Desktop& desktop, const DesktopOptions& options,
                        const std::shared_ptr<X11Connection>& connection)
{
    fillWithShownParts(desktop, options, connection);
    fillWithServer(desktop, connection);
}

Result<void, Obstacle> fillWithXWaylandPorts(Desktop& desktop, const DesktopOptions& options,
                                             const DesktopParts& parts)
{
    const std::shared_ptr<X11Text> text =
        X11Text::open(displayName(options.environment), options.terminals, parts.scheduler);
    if (!text)
        return failure(xServerLacks(options.environment));
    fillWithText(desktop, text);
    // One connection for all of it, so that the server sees what we do in the order in which we do it.
    fillWithX11Windows(desktop, options, std::shared_ptr<X11Connection>(text, &text->connection()));
    return {};
}

Result<void, Obstacle> fillWithX11Ports(Desktop& desktop, const DesktopOptions& options,
                                        const DesktopParts& parts)
{
    fillWithKeys(desktop, options.environment);
    return fillWithXWaylandPorts(desktop, options, parts);
}

} // namespace tulvane
