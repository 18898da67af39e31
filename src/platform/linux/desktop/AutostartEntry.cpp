#include <base/AtomicFile.h>
#include <base/Translate.h>
#include <platform/linux/desktop/AutostartEntry.h>

#include <QFile>
#include <QStandardPaths>

#include <utility>

namespace tulvane {

namespace {

/// A word of an Exec line, quoted as the desktop-entry format wants it: inside double quotes four characters
/// keep a meaning and take a backslash, which the file's own strings double; a percent sign doubles itself.
QByteArray quoted(const QString& word)
{
    QString text;
    for (const QChar c : word) {
        if (c == u'\\')
            text += QStringLiteral("\\\\\\\\");
        else if (QStringView(u"\"`$").contains(c))
            text += QStringLiteral("\\\\") + c;
        else if (c == u'%')
            text += QStringLiteral("%%");
        else if (c == u'\n')
            text += QStringLiteral("\\n");
        else
            text += c;
    }
    return '"' + text.toUtf8() + '"';
}

/// The value of a key in the entry's first group, which is the entry itself; empty where it does not stand.
QByteArray valueOf(const QByteArray& entry, const QByteArray& key)
{
    bool isWithin = false;
    for (const QByteArray& line : entry.split('\n')) {
        if (line.startsWith('['))
            isWithin = line.trimmed() == "[Desktop Entry]";
        if (!isWithin)
            continue;
        const qsizetype equals = line.indexOf('=');
        if (equals > 0 && line.left(equals).trimmed() == key)
            return line.mid(equals + 1).trimmed();
    }
    return {};
}

} // namespace

QString AutostartEntry::standardFolder()
{
    const QString settings = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return settings.isEmpty() ? QString() : settings + QStringLiteral("/autostart");
}

AutostartEntry::AutostartEntry(QString folder, QString program)
    : m_folder(std::move(folder)),
      m_program(std::move(program))
{
}

QString AutostartEntry::file() const
{
    return m_folder + QStringLiteral("/com.dunio.Tulvane.desktop");
}

bool AutostartEntry::isEnabled() const
{
    QFile entry(file());
    if (m_folder.isEmpty() || !entry.open(QIODevice::ReadOnly))
        return false;
    const QByteArray text = entry.read(64 * 1024);
    return valueOf(text, "Exec") != "" && valueOf(text, "Hidden") != "true" &&
           valueOf(text, "X-GNOME-Autostart-enabled") != "false";
}

Result<void, QString> AutostartEntry::setEnabled(bool enabled)
{
    if (m_folder.isEmpty())
        return failure(translate("There is no folder for programs that start at login."));
    if (enabled)
        return replaceFile(file(), content());
    QFile entry(file());
    if (entry.exists() && !entry.remove())
        return failure(entry.errorString());
    return {};
}

QByteArray AutostartEntry::content() const
{
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Name=Tulvane\n"
           "Icon=com.dunio.Tulvane\n"
           "Exec=" +
           quoted(m_program) +
           " --background\n"
           "X-GNOME-Autostart-enabled=true\n";
}

} // namespace tulvane
