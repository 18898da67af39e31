#pragma once

#include <ports/IndicatorPanel.h>

#include <QList>
#include <QWindow>

namespace tulvane {

/// Keeps what was done to the window; whether the desktop blends is set by the test.
class FakeIndicatorPanel final : public IndicatorPanel {
public:
    void prepare(QWindow& window) override
    {
        window.setFlags(Qt::ToolTip | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint |
                        Qt::WindowDoesNotAcceptFocus | Qt::WindowTransparentForInput);
        ++m_preparations;
    }
    void raise(QWindow& /*window*/) override { ++m_raises; }
    [[nodiscard]] bool isBlended() const override { return m_isBlended; }
    void setOpacity(QWindow& /*window*/, double opacity) override { m_opacities.append(opacity); }
    void cut(QWindow& /*window*/, const std::optional<PanelOutline>& outline) override
    {
        m_outline = outline;
    }

    [[nodiscard]] IndicatorSurface* surface() override { return ownSurface; }

    IndicatorSurface* ownSurface = nullptr; ///< of the test
    void setBlended(bool blended) { m_isBlended = blended; }

    [[nodiscard]] int preparations() const { return m_preparations; }
    [[nodiscard]] int raises() const { return m_raises; }
    /// Every opacity that was set, oldest first.
    [[nodiscard]] const QList<double>& opacities() const { return m_opacities; }
    void forgetOpacities() { m_opacities.clear(); }
    [[nodiscard]] const std::optional<PanelOutline>& outline() const { return m_outline; }

private:
    bool m_isBlended = true;
    int m_preparations = 0;
    int m_raises = 0;
    QList<double> m_opacities;
    std::optional<PanelOutline> m_outline;
};

} // namespace tulvane
