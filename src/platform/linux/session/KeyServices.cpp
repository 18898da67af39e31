#include <platform/linux/session/UnsupportedHotkeys.h>
#include <platform/linux/session/KeyServices.h>
#include <platform/linux/x11/keyboard/X11Hotkeys.h>
#include <platform/linux/x11/keyboard/X11ModifierEvents.h>

namespace tulvane {

namespace {

/// Why there can be no hotkeys in this session; empty where X11 serves.
QString obstacle(const QProcessEnvironment& environment)
{
    // A Wayland session answers X11 clients, too, but lets them see only the keys of X11 windows: a hot key
    // would seem to work and fail in most programs.
    const bool isWayland =
        environment.value(QStringLiteral("XDG_SESSION_TYPE")) == QLatin1String("wayland") ||
        !environment.value(QStringLiteral("WAYLAND_DISPLAY")).isEmpty();
    if (isWayland)
        return translate(
            "Hotkeys are not supported in a Wayland session yet. Bind the command “tulvane toggle” to "
            "a key in the desktop's own keyboard settings.");
    if (environment.value(QStringLiteral("DISPLAY")).isEmpty())
        return translate(
            "There is no desktop here whose keys could be heard. Start Tulvane from a desktop session.");
    return {};
}

} // namespace

KeyServices makeKeyServices(const QProcessEnvironment& environment)
{
    if (const QString reason = obstacle(environment); !reason.isEmpty())
        return {std::make_unique<UnsupportedHotkeys>(reason),
                std::make_unique<UnsupportedModifierEvents>(reason)};
    const QString display = environment.value(QStringLiteral("DISPLAY"));
    return {std::make_unique<X11Hotkeys>(display, DesktopFolders::fromEnvironment(environment)),
            std::make_unique<X11ModifierEvents>(display)};
}

} // namespace tulvane
