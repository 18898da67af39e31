#include <platform/linux/keys/DesktopShortcuts.h>
#include <platform/linux/keys/ShortcutFiles.h>

#include <QDir>
#include <QFile>

namespace tulvane {

namespace {

using Reader = QList<SymbolicHotkey> (*)(const QByteArray&, const KeyLookup&);

struct Source {
    QString file;
    Reader read;
};

/// Which file holds the combinations; without a reader where no such file is known.
Source sourceOf(const DesktopFolders& folders, const QString& windowManager)
{
    const QStringList desktops = folders.currentDesktop.split(u':');
    const auto isDesktop = [&](const char* name) {
        return desktops.contains(QString::fromUtf8(name), Qt::CaseInsensitive);
    };
    if (isDesktop("KDE"))
        return {QStringLiteral("kglobalshortcutsrc"), readKdeShortcuts};
    if (isDesktop("XFCE"))
        return {QStringLiteral("xfce4/xfconf/xfce-perchannel-xml/xfce4-keyboard-shortcuts.xml"),
                readXfceShortcuts};
    if (windowManager.compare(QLatin1String("Openbox"), Qt::CaseInsensitive) != 0)
        return {{}, nullptr};
    if (isDesktop("LXDE"))
        return {QStringLiteral("openbox/lxde-rc.xml"), readOpenboxShortcuts};
    return {QStringLiteral("openbox/rc.xml"), readOpenboxShortcuts};
}

} // namespace

DesktopFolders DesktopFolders::fromEnvironment(const QProcessEnvironment& environment)
{
    const QString home = environment.value(QStringLiteral("HOME"), QDir::homePath());
    QString configHome = environment.value(QStringLiteral("XDG_CONFIG_HOME"));
    if (configHome.isEmpty())
        configHome = home + QStringLiteral("/.config");
    QString configDirs = environment.value(QStringLiteral("XDG_CONFIG_DIRS"));
    if (configDirs.isEmpty())
        configDirs = QStringLiteral("/etc/xdg");
    return {environment.value(QStringLiteral("XDG_CURRENT_DESKTOP")), configHome,
            configDirs.split(u':', Qt::SkipEmptyParts)};
}

std::optional<QList<SymbolicHotkey>>
readDesktopShortcuts(const DesktopFolders& folders, const QString& windowManager, const KeyLookup& keyOf)
{
    const Source source = sourceOf(folders, windowManager);
    if (source.read == nullptr)
        return std::nullopt;
    for (const QString& folder : QStringList(folders.configHome) + folders.configDirs) {
        QFile file(folder + QLatin1Char('/') + source.file);
        if (file.open(QIODevice::ReadOnly))
            return source.read(file.readAll(), keyOf);
    }
    return std::nullopt;
}

} // namespace tulvane
