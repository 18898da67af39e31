#include <platform/linux/desktop/SettingsPages.h>

namespace tulvane {

namespace {

enum class Page { none, sound, keyboard };

/// What the pane is about, by the end of its URL. Nothing on these desktops corresponds to the permission to
/// press keys in other programs.
Page pageOf(const QUrl& pane)
{
    const QString name = pane.query();
    if (name == u"Privacy_Microphone")
        return Page::sound;
    return name == u"Privacy_ListenEvent" ? Page::keyboard : Page::none;
}

struct DesktopPages {
    const char* desktop;
    SettingsCommand sound;
    SettingsCommand keyboard;
};

QList<DesktopPages> knownDesktops()
{
    const auto command = [](const char* program, const char* page) {
        return SettingsCommand{QString::fromUtf8(program), {QString::fromUtf8(page)}};
    };
    const auto alone = [](const char* program) { return SettingsCommand{QString::fromUtf8(program), {}}; };
    return {
        {"GNOME", command("gnome-control-center", "sound"), command("gnome-control-center", "keyboard")},
        {"KDE", command("systemsettings", "kcm_pulseaudio"), command("systemsettings", "kcm_keys")},
        {"XFCE", alone("pavucontrol"), alone("xfce4-keyboard-settings")},
        {"X-Cinnamon", command("cinnamon-settings", "sound"), command("cinnamon-settings", "keyboard")},
        {"MATE", alone("mate-volume-control"), alone("mate-keybinding-properties")},
        {"LXQt", alone("pavucontrol-qt"), alone("lxqt-config-globalkeyshortcuts")},
    };
}

} // namespace

QList<SettingsCommand> settingsPages(const QUrl& pane, const QStringList& desktops)
{
    const Page page = pageOf(pane);
    QList<SettingsCommand> commands;
    if (page == Page::none)
        return commands;
    for (const DesktopPages& known : knownDesktops()) {
        if (desktops.contains(QString::fromUtf8(known.desktop), Qt::CaseInsensitive))
            commands.append(page == Page::sound ? known.sound : known.keyboard);
    }
    // Where the desktop has no page of its own, the sound server's mixer serves everywhere.
    if (page == Page::sound)
        commands.append({QStringLiteral("pavucontrol"), {}});
    return commands;
}

QString helpSection(const QUrl& pane)
{
    switch (pageOf(pane)) {
    case Page::sound:
        return QStringLiteral("microphone");
    case Page::keyboard:
        return QStringLiteral("input-monitoring");
    case Page::none:
        break;
    }
    return QStringLiteral("accessibility");
}

} // namespace tulvane
