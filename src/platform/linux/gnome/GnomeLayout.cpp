#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/gnome/GnomeLayout.h>

#include <QDBusConnection>

namespace tulvane {

namespace {

const QString inputSources = QStringLiteral("org.gnome.desktop.input-sources");
const QString writerPath = QStringLiteral("/ca/desrt/dconf/Writer/user");
const QString writerInterface = QStringLiteral("ca.desrt.dconf.Writer");
const QString writerSignal = QStringLiteral("Notify");

} // namespace

GnomeLayout::GnomeLayout(const QProcessEnvironment& environment, std::shared_ptr<LastingBus> bus)
    : m_settings(environment),
      m_bus(std::move(bus))
{
    listen();
    connect(m_bus.get(), &LastingBus::returned, this, [this] {
        listen();
        forget(); // no change was reported meanwhile
    });
}

GnomeLayout::~GnomeLayout() = default;

void GnomeLayout::listen()
{
    m_bus->connection().connect({}, writerPath, writerInterface, writerSignal, this,
                                SLOT(settingsChanged(QString, QStringList, QString)));
}

const std::optional<XkbKeymap>& GnomeLayout::current()
{
    if (!std::exchange(m_isRead, true))
        m_layout = read(m_settings);
    return m_layout;
}

QString GnomeLayout::engine()
{
    if (!m_engine.isEmpty())
        return m_engine;
    QString sources = m_settings.get(inputSources, QStringLiteral("mru-sources")).value_or(QString());
    // Nothing has been changed to yet.
    if (GSettings::textsIn(sources).isEmpty())
        sources = m_settings.get(inputSources, QStringLiteral("sources")).value_or(QString());
    m_engine = engineOf(sources);
    return m_engine;
}

QString GnomeLayout::engineOf(const QString& sources)
{
    const QStringList words = GSettings::textsIn(sources);
    // With a keyboard layout this is what the desktop has, whatever the layout.
    return words.value(0) == QLatin1StringView("ibus") ? words.value(1) : QStringLiteral("xkb:us::eng");
}

std::optional<XkbKeymap> GnomeLayout::read(const GSettings& settings)
{
    // Kind and name by turns: "xkb", "no+nodeadkeys".
    for (const char* list : {"mru-sources", "sources"}) {
        const QStringList words =
            GSettings::textsIn(settings.get(inputSources, QString::fromUtf8(list)).value_or(QString()));
        for (qsizetype i = 0; i + 1 < words.size(); i += 2) {
            if (words[i] != QLatin1StringView("xkb"))
                continue;
            if (auto layout =
                    XkbKeymap::fromNames(words[i + 1].section(u'+', 0, 0), words[i + 1].section(u'+', 1)))
                return layout;
        }
    }
    return XkbKeymap::fromNames({});
}

void GnomeLayout::settingsChanged(const QString& prefix, const QStringList& /*changes*/,
                                  const QString& /*tag*/)
{
    if (prefix.startsWith(QLatin1StringView("/org/gnome/desktop/input-sources/")))
        forget();
}

void GnomeLayout::forget()
{
    m_isRead = false;
    m_engine.clear();
}

} // namespace tulvane
