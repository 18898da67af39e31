#pragma once

#include <ports/IndicatorPanel.h>

namespace tulvane {

/// Of a desktop that puts no window above everything: the indicator stays an ordinary one. Main thread.
class NullIndicatorPanel final : public IndicatorPanel {
public:
    void prepare(QWindow& /*window*/) override {}
    void raise(QWindow& /*window*/) override {}
    [[nodiscard]] bool isBlended() const override { return false; }
    void setOpacity(QWindow& /*window*/, double /*opacity*/) override {}
    void cut(QWindow& /*window*/, const std::optional<PanelOutline>& /*outline*/) override {}
};

} // namespace tulvane
