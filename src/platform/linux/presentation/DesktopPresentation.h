#pragma once

#include <platform/Presentation.h>

#include <QDBusVariant>
#include <QObject>
#include <QString>

namespace tulvane {

/// Light or dark, with or without animations, as the desktop's settings portal says; where there is no
/// portal, as the palette of the desktop's theme looks. Main thread; asks in the background and never waits.
class DesktopPresentation final : public QObject, public Presentation {
    Q_OBJECT

public:
    DesktopPresentation();
    ~DesktopPresentation() override;

    void setAppearance(Appearance appearance) override;
    [[nodiscard]] Appearance effectiveAppearance() const override;
    [[nodiscard]] bool prefersReducedMotion() const override { return m_reducedMotion; }
    void setChangeHandler(std::function<void()> handler) override { m_handler = std::move(handler); }
    void setActivationPolicy(ActivationPolicy policy) override;

private Q_SLOTS:
    void noteSetting(const QString& space, const QString& key, const QDBusVariant& value);

private:
    void ask(const QString& space, const QString& key);
    void tellOfChange() const;

    Appearance m_own = Appearance::none;
    Appearance m_system = Appearance::none; ///< `none`: the portal has not said
    bool m_reducedMotion = false;
    ActivationPolicy m_policy = ActivationPolicy::regular;
    std::function<void()> m_handler;
};

} // namespace tulvane
