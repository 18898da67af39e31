#pragma once

class QWindow;

namespace tulvane {

/// Makes a window the pill's panel: never focused, clicks go through it, above everything, on every
/// workspace. Main thread.
class IndicatorPanel {
public:
    IndicatorPanel() = default;
    IndicatorPanel(const IndicatorPanel&) = delete;
    IndicatorPanel& operator=(const IndicatorPanel&) = delete;
    virtual ~IndicatorPanel() = default;

    /// Once, before the window is first shown.
    virtual void prepare(QWindow& window) = 0;
    /// Above everything again, without touching the focus; after each show.
    virtual void raise(QWindow& window) = 0;
    /// Whether the desktop blends the window's alpha with what lies below it. Where it does not, the pill
    /// is cut to its outline and does not fade.
    [[nodiscard]] virtual bool isBlended() const = 0;
};

} // namespace tulvane
