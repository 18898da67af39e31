#pragma once

#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/desktop/PortalSettings.h>
#include <platform/linux/desktop/shell/GtkSettings.h>
#include <ports/Presentation.h>

#include <QString>

namespace tulvane {

/// Light or dark, with or without animations, as the desktop's settings portal says; where it does not, as
/// the settings files of the desktop's toolkit say; where there are none either, as the palette of the
/// desktop's theme looks. Main thread; asks in the background and never waits.
class DesktopPresentation final : public Presentation {
public:
    /// Takes the windows' entries out of the task bar, or brings them back there.
    using HideEntries = std::function<void(bool hidden)>;

    /// `folder`: the user's folder for settings. Without `hideEntries` the task bar is left as it is.
    explicit DesktopPresentation(const std::shared_ptr<LastingBus>& bus = LastingBus::session(),
                                 const QString& folder = standardFolder(), HideEntries hideEntries = {});
    ~DesktopPresentation() override;

    [[nodiscard]] static QString standardFolder();

    void setAppearance(Appearance appearance) override;
    [[nodiscard]] Appearance effectiveAppearance() const override;
    [[nodiscard]] bool prefersReducedMotion() const override;
    void setChangeHandler(std::function<void()> handler) override { m_handler = std::move(handler); }
    void setActivationPolicy(ActivationPolicy policy) override;

private:
    void tellOfChange() const;

    Appearance m_own = Appearance::none;
    PortalSettings m_portal;
    GtkSettings m_files;
    HideEntries m_hideEntries;
    std::function<void()> m_handler;
};

} // namespace tulvane
