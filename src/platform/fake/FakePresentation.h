#pragma once

#include <platform/Presentation.h>

#include <QList>

namespace tulvane {

/// Keeps what it was asked for.
class FakePresentation final : public Presentation {
public:
    void setAppearance(Appearance appearance) override { m_appearances.append(appearance); }

    /// Every appearance that was set, oldest first.
    [[nodiscard]] QList<Appearance> appearances() const { return m_appearances; }

private:
    QList<Appearance> m_appearances;
};

} // namespace tulvane
