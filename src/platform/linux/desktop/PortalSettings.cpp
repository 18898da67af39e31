#include <platform/linux/desktop/BusAnswer.h>
#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/desktop/PortalSettings.h>

#include <QDBusConnection>
#include <QDBusMessage>

namespace tulvane {

namespace {

const QString portal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalSettings = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceSpace = QStringLiteral("org.freedesktop.appearance");
const QString colorScheme = QStringLiteral("color-scheme");
const QString gnomeSpace = QStringLiteral("org.gnome.desktop.interface");
const QString animations = QStringLiteral("enable-animations");
const QString kdeSpace = QStringLiteral("org.kde.kdeglobals.KDE");
const QString durations = QStringLiteral("AnimationDurationFactor");

/// The portal wraps its values once or twice, depending on its version.
QVariant unwrapped(QVariant value)
{
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace

PortalSettings::PortalSettings(std::shared_ptr<LastingBus> bus)
    : m_bus(std::move(bus)),
      m_watcher(portal, m_bus->connection(), QDBusServiceWatcher::WatchForRegistration)
{
    connect(&m_watcher, &QDBusServiceWatcher::serviceRegistered, this, &PortalSettings::askForAll);
    connect(m_bus.get(), &LastingBus::returned, this, &PortalSettings::listen);
    listen();
}

PortalSettings::~PortalSettings() = default;

void PortalSettings::listen()
{
    QDBusConnection bus = m_bus->connection();
    m_watcher.setConnection(bus);
    bus.connect(portal, portalPath, portalSettings, QStringLiteral("SettingChanged"), this,
                SLOT(note(QString, QString, QDBusVariant)));
    askForAll();
}

void PortalSettings::askForAll()
{
    ask(appearanceSpace, colorScheme);
    ask(gnomeSpace, animations);
    ask(kdeSpace, durations);
}

void PortalSettings::ask(const QString& space, const QString& key)
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(portal, portalPath, portalSettings, QStringLiteral("Read"));
    call << space << key;
    whenAnswered<QDBusVariant>(m_bus->connection().asyncCall(call), this,
                               [this, space, key](const auto& reply) {
                                   if (!reply.isError())
                                       note(space, key, reply.value());
                               });
}

void PortalSettings::note(const QString& space, const QString& key, const QDBusVariant& value)
{
    const QVariant plain = unwrapped(value.variant());
    const auto appearance = m_appearance;
    const auto reducedMotion = m_reducedMotion;
    if (space == appearanceSpace && key == colorScheme) {
        // 1 prefers dark, 2 prefers light; everything else is no preference.
        const uint scheme = plain.toUInt();
        m_appearance = scheme == 1   ? std::optional(Appearance::dark)
                       : scheme == 2 ? std::optional(Appearance::light)
                                     : std::nullopt;
    } else if (space == gnomeSpace && key == animations) {
        m_reducedMotion = !plain.toBool();
    } else if (space == kdeSpace && key == durations) {
        bool isNumber = false;
        const double factor = plain.toString().toDouble(&isNumber);
        if (isNumber)
            m_reducedMotion = factor == 0;
    }
    if (appearance != m_appearance || reducedMotion != m_reducedMotion)
        Q_EMIT changed();
}

} // namespace tulvane
