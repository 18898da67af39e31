#include <platform/linux/desktop/shell/GtkSettings.h>

#include <QFile>
#include <QFileInfo>

namespace tulvane {

namespace {

bool isTrue(const QString& value)
{
    return value == u"1" || value.compare(u"true", Qt::CaseInsensitive) == 0;
}

/// The lines of the file's group of settings. (The library's own reader remembers a file by its size and the
/// time of its change, and misses a second change within the clock's grain.)
QStringList linesOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    constexpr qint64 longest = 256 * 1024;
    QStringList lines;
    bool isWithin = false;
    for (const QString& line : QString::fromUtf8(file.read(longest)).split(u'\n')) {
        const QString plain = line.trimmed();
        if (plain.startsWith(u'['))
            isWithin = plain == u"[Settings]";
        else if (isWithin)
            lines.append(plain);
    }
    return lines;
}

} // namespace

GtkSettings::GtkSettings(const QString& folder)
    : m_files({folder + QStringLiteral("/gtk-4.0/settings.ini"),
               folder + QStringLiteral("/gtk-3.0/settings.ini")})
{
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &GtkSettings::note);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &GtkSettings::note);
    watch();
    read();
}

GtkSettings::~GtkSettings() = default;

/// A file that is replaced by another one is watched no more, and one that is new was not watched before.
void GtkSettings::watch()
{
    QStringList places;
    for (const QString& file : m_files) {
        for (const QString& place : {file, QFileInfo(file).path()}) {
            if (QFile::exists(place) && !m_watcher.files().contains(place) &&
                !m_watcher.directories().contains(place))
                places.append(place);
        }
    }
    if (!places.isEmpty())
        m_watcher.addPaths(places);
}

void GtkSettings::note()
{
    watch();
    const auto appearance = m_appearance;
    const auto reducedMotion = m_reducedMotion;
    read();
    if (appearance != m_appearance || reducedMotion != m_reducedMotion)
        Q_EMIT changed();
}

QString GtkSettings::valueOf(const QString& key) const
{
    for (const QString& file : m_files) {
        for (const QString& line : linesOf(file)) {
            const qsizetype equals = line.indexOf(u'=');
            if (equals > 0 && line.left(equals).trimmed() == key)
                return line.mid(equals + 1).trimmed();
        }
    }
    return {};
}

void GtkSettings::read()
{
    const QString prefersDark = valueOf(QStringLiteral("gtk-application-prefer-dark-theme"));
    const QString theme = valueOf(QStringLiteral("gtk-theme-name"));
    const QString animations = valueOf(QStringLiteral("gtk-enable-animations"));
    m_appearance.reset();
    if (isTrue(prefersDark) || theme.endsWith(u"dark", Qt::CaseInsensitive))
        m_appearance = Appearance::dark;
    else if (!prefersDark.isEmpty() || !theme.isEmpty())
        m_appearance = Appearance::light;
    m_reducedMotion = animations.isEmpty() ? std::nullopt : std::optional(!isTrue(animations));
}

} // namespace tulvane
