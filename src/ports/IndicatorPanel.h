#pragma once

#include <QRectF>

#include <optional>

class QWindow;

namespace tulvane {

class IndicatorSurface;

/// A rectangle with round corners, in device-independent pixels of the window that it lies in.
struct PanelOutline {
    QRectF rect;
    double radius = 0;

    [[nodiscard]] bool operator==(const PanelOutline&) const = default;
};

/// Makes a window the indicator's panel: never focused, clicks go through it, above everything, on every
/// workspace. A panel serves one window, which outlives it. Main thread; no call waits for another program,
/// and none fails: what the desktop cannot do is left out.
class IndicatorPanel {
public:
    IndicatorPanel() = default;
    IndicatorPanel(const IndicatorPanel&) = delete;
    IndicatorPanel& operator=(const IndicatorPanel&) = delete;
    virtual ~IndicatorPanel() = default;

    /// Once, before the window is first shown.
    virtual void prepare(QWindow& window) = 0;
    /// Above everything again, without touching the focus; after each show. While the window stays visible
    /// it also comes back above what is put over it later, unless that insists.
    virtual void raise(QWindow& window) = 0;
    /// Whether the desktop blends the window's alpha with what lies below it. Where it does not, the
    /// indicator is cut to its outline and does not fade.
    [[nodiscard]] virtual bool isBlended() const = 0;
    /// 0 (nothing to be seen) to 1; without effect where nothing is blended.
    virtual void setOpacity(QWindow& window, double opacity) = 0;
    /// Only what lies within the outline is there from now on; all of the window without one.
    virtual void cut(QWindow& window, const std::optional<PanelOutline>& outline) = 0;
    /// Where the toolkit's window cannot be the panel: what shows pictures of it in its stead. The window is
    /// then never shown, and not even made. Null where the window serves. Of the panel.
    [[nodiscard]] virtual IndicatorSurface* surface() { return nullptr; }
};

} // namespace tulvane
