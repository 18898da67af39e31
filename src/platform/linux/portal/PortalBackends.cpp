#include <platform/linux/portal/PortalBackends.h>

#include <QDir>
#include <QFile>
#include <QHash>
#include <QStringList>

#include <algorithm>

namespace tulvane {

namespace {

/// The settings of a file in the form of desktop entries, whatever their group.
QHash<QString, QString> settingsIn(const QString& path)
{
    QHash<QString, QString> settings;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return settings;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n')) {
        const qsizetype sign = line.indexOf(u'=');
        if (sign > 0 && !line.startsWith(u'#'))
            settings.insert(line.first(sign).trimmed(), line.sliced(sign + 1).trimmed());
    }
    return settings;
}

QStringList wordsOf(const QString& text)
{
    return text.split(u';', Qt::SkipEmptyParts);
}

/// The folders that may hold "xdg-desktop-portal", best first.
QStringList foldersOf(const QProcessEnvironment& environment)
{
    QStringList folders;
    const auto add = [&](const QString& list) {
        for (const QString& folder : list.split(u':', Qt::SkipEmptyParts))
            folders.append(folder + QStringLiteral("/xdg-desktop-portal"));
    };
    const QString home = environment.value(QStringLiteral("HOME"));
    add(environment.value(QStringLiteral("XDG_CONFIG_HOME"), home + QStringLiteral("/.config")));
    add(environment.value(QStringLiteral("XDG_CONFIG_DIRS"), QStringLiteral("/etc/xdg")));
    add(environment.value(QStringLiteral("XDG_DATA_HOME"), home + QStringLiteral("/.local/share")));
    add(environment.value(QStringLiteral("XDG_DATA_DIRS"), QStringLiteral("/usr/local/share:/usr/share")));
    return folders;
}

/// The programs that the desktop, or the user, names for the interface: newer portals go by these alone.
/// Empty where no file speaks of it.
QStringList chosenBackends(const QString& interface, const QStringList& desktops, const QStringList& folders)
{
    QStringList names;
    for (const QString& desktop : desktops)
        names.append(desktop.toLower() + QStringLiteral("-portals.conf"));
    names.append(QStringLiteral("portals.conf"));
    for (const QString& folder : folders) {
        for (const QString& name : names) {
            const auto settings = settingsIn(folder + u'/' + name);
            const QString chosen = settings.value(interface, settings.value(QStringLiteral("default")));
            if (!chosen.isEmpty())
                return wordsOf(chosen);
        }
    }
    return {};
}

} // namespace

bool hasPortalBackend(const QString& interface, const QProcessEnvironment& environment)
{
    const QString name = QStringLiteral("org.freedesktop.impl.portal.") + interface;
    const QStringList desktops =
        environment.value(QStringLiteral("XDG_CURRENT_DESKTOP")).split(u':', Qt::SkipEmptyParts);
    const QStringList folders = foldersOf(environment);
    const QStringList chosen = chosenBackends(name, desktops, folders);
    for (const QString& folder : folders) {
        const QDir portals(folder + QStringLiteral("/portals"));
        for (const QString& file : portals.entryList({QStringLiteral("*.portal")}, QDir::Files)) {
            const auto settings = settingsIn(portals.filePath(file));
            if (!wordsOf(settings.value(QStringLiteral("Interfaces"))).contains(name))
                continue;
            const bool isForThis =
                std::ranges::any_of(wordsOf(settings.value(QStringLiteral("UseIn"))), [&](const auto& each) {
                    return desktops.contains(each, Qt::CaseInsensitive);
                });
            if (chosen.contains(file.chopped(7)) || (chosen.isEmpty() && isForThis))
                return true;
        }
    }
    return false;
}

} // namespace tulvane
