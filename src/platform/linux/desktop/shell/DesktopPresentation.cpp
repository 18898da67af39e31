#include <platform/linux/desktop/shell/DesktopPresentation.h>

#include <QGuiApplication>
#include <QPalette>
#include <QStandardPaths>

namespace tulvane {

namespace {

Appearance appearanceOfPalette()
{
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness()
               ? Appearance::dark
               : Appearance::light;
}

} // namespace

QString DesktopPresentation::standardFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
}

DesktopPresentation::DesktopPresentation(const std::shared_ptr<LastingBus>& bus, const QString& folder,
                                         HideEntries hideEntries)
    : m_portal(bus),
      m_files(folder),
      m_hideEntries(std::move(hideEntries))
{
    QObject::connect(&m_portal, &PortalSettings::changed, &m_portal, [this] { tellOfChange(); });
    QObject::connect(&m_files, &GtkSettings::changed, &m_files, [this] { tellOfChange(); });
}

DesktopPresentation::~DesktopPresentation() = default;

void DesktopPresentation::setAppearance(Appearance appearance)
{
    m_own = appearance;
    tellOfChange();
}

Appearance DesktopPresentation::effectiveAppearance() const
{
    if (m_own != Appearance::none)
        return m_own;
    if (const auto said = m_portal.appearance())
        return *said;
    if (const auto written = m_files.appearance())
        return *written;
    return appearanceOfPalette();
}

bool DesktopPresentation::prefersReducedMotion() const
{
    return m_portal.reducedMotion().value_or(m_files.reducedMotion().value_or(false));
}

void DesktopPresentation::setActivationPolicy(ActivationPolicy policy)
{
    if (m_hideEntries)
        m_hideEntries(policy == ActivationPolicy::accessory);
}

void DesktopPresentation::tellOfChange() const
{
    if (m_handler)
        m_handler();
}

} // namespace tulvane
