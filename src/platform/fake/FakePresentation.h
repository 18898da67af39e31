#pragma once

#include <ports/Presentation.h>

#include <QList>

namespace tulvane {

/// Keeps what it was asked for; the system's side of it is set by the test.
class FakePresentation final : public Presentation {
public:
    void setAppearance(Appearance appearance) override
    {
        m_appearances.append(appearance);
        tellOfChange();
    }
    [[nodiscard]] Appearance effectiveAppearance() const override
    {
        const Appearance own = m_appearances.value(m_appearances.size() - 1, Appearance::none);
        return own == Appearance::none ? m_system : own;
    }
    [[nodiscard]] bool prefersReducedMotion() const override { return m_reducedMotion; }
    void setChangeHandler(std::function<void()> handler) override { m_handler = std::move(handler); }
    void setActivationPolicy(ActivationPolicy policy) override { m_policies.append(policy); }

    void setSystemAppearance(Appearance appearance)
    {
        m_system = appearance;
        tellOfChange();
    }
    void setReducedMotion(bool reduced)
    {
        m_reducedMotion = reduced;
        tellOfChange();
    }

    /// Every appearance that was set, oldest first.
    [[nodiscard]] QList<Appearance> appearances() const { return m_appearances; }
    /// Every policy that was set, oldest first.
    [[nodiscard]] QList<ActivationPolicy> policies() const { return m_policies; }

private:
    void tellOfChange() const
    {
        if (m_handler)
            m_handler();
    }

    QList<Appearance> m_appearances;
    QList<ActivationPolicy> m_policies;
    Appearance m_system = Appearance::light;
    bool m_reducedMotion = false;
    std::function<void()> m_handler;
};

} // namespace tulvane
