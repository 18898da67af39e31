#include <platform/linux/gnome/IBusAddress.h>

#include <QDir>
#include <QFile>

namespace tulvane {

namespace {

QString valueIn(const QString& text, QLatin1StringView name)
{
    for (const QString& line : text.split(u'\n')) {
        if (line.startsWith(name) && line.sliced(name.size()).startsWith(u'='))
            return line.sliced(name.size() + 1).trimmed();
    }
    return {};
}

/// Its file stays where a service that was killed has left it.
QString addressOfALiving(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QString text = QString::fromUtf8(file.readAll());
    const QString process = valueIn(text, QLatin1StringView("IBUS_DAEMON_PID"));
    if (process.isEmpty() || !QFile::exists(u"/proc/" + process))
        return {};
    return valueIn(text, QLatin1StringView("IBUS_ADDRESS"));
}

} // namespace

QString ibusAddress(const QProcessEnvironment& environment)
{
    if (const QString named = environment.value(QStringLiteral("IBUS_ADDRESS")); !named.isEmpty())
        return named;
    const QString config =
        environment.value(QStringLiteral("XDG_CONFIG_HOME"),
                          environment.value(QStringLiteral("HOME")) + QStringLiteral("/.config"));
    const QDir folder(config + QStringLiteral("/ibus/bus"));
    const QString display = environment.value(QStringLiteral("WAYLAND_DISPLAY"));
    const QString x11 = environment.value(QStringLiteral("DISPLAY")).section(u':', 1).section(u'.', 0, 0);
    // Named after the machine, the host and the display.
    for (const QString& end : {QString(u"-unix-" + display), QString(u"-unix-" + x11)}) {
        if (end.endsWith(u'-'))
            continue;
        for (const QString& name : folder.entryList({u'*' + end}, QDir::Files, QDir::Time)) {
            if (const QString address = addressOfALiving(folder.filePath(name)); !address.isEmpty())
                return address;
        }
    }
    return {};
}

} // namespace tulvane
