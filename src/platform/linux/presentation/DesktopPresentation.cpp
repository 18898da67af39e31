#include <platform/linux/presentation/DesktopPresentation.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>
#include <QPalette>

namespace tulvane {

namespace {

const QString portal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalSettings = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceSpace = QStringLiteral("org.freedesktop.appearance");
const QString colorScheme = QStringLiteral("color-scheme");
const QString gnomeSpace = QStringLiteral("org.gnome.desktop.interface");
const QString animations = QStringLiteral("enable-animations");

/// The portal wraps its values once or twice, depending on its version.
QVariant unwrapped(QVariant value)
{
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

Appearance appearanceOfPalette()
{
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness()
               ? Appearance::dark
               : Appearance::light;
}

} // namespace

DesktopPresentation::DesktopPresentation()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.connect(portal, portalPath, portalSettings, QStringLiteral("SettingChanged"), this,
                SLOT(noteSetting(QString, QString, QDBusVariant)));
    ask(appearanceSpace, colorScheme);
    ask(gnomeSpace, animations);
}

DesktopPresentation::~DesktopPresentation() = default;

void DesktopPresentation::ask(const QString& space, const QString& key)
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(portal, portalPath, portalSettings, QStringLiteral("Read"));
    call << space << key;
    auto* const watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, space, key] {
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (!reply.isError())
            noteSetting(space, key, reply.value());
        watcher->deleteLater();
    });
}

void DesktopPresentation::noteSetting(const QString& space, const QString& key, const QDBusVariant& value)
{
    const QVariant plain = unwrapped(value.variant());
    if (space == appearanceSpace && key == colorScheme) {
        // 1 prefers dark, 2 prefers light, 0 has no preference.
        const uint scheme = plain.toUInt();
        m_system = scheme == 1 ? Appearance::dark : scheme == 2 ? Appearance::light : Appearance::none;
    } else if (space == gnomeSpace && key == animations) {
        m_reducedMotion = !plain.toBool();
    } else {
        return;
    }
    tellOfChange();
}

void DesktopPresentation::setAppearance(Appearance appearance)
{
    m_own = appearance;
    tellOfChange();
}

Appearance DesktopPresentation::effectiveAppearance() const
{
    if (m_own != Appearance::none)
        return m_own;
    return m_system == Appearance::none ? appearanceOfPalette() : m_system;
}

void DesktopPresentation::setActivationPolicy(ActivationPolicy policy)
{
    m_policy = policy;
}

void DesktopPresentation::tellOfChange() const
{
    if (m_handler)
        m_handler();
}

} // namespace tulvane
