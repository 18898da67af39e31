#pragma once

class QImage;

namespace tulvane {

/// A surface of the desktop's for pictures of the indicator, where the toolkit's window cannot be its panel:
/// never focused, clicks go through it, above everything, blended, at the middle of the lower edge of the
/// screen in use. Main thread; no call waits for another program, and none fails.
class IndicatorSurface {
public:
    IndicatorSurface() = default;
    IndicatorSurface(const IndicatorSurface&) = delete;
    IndicatorSurface& operator=(const IndicatorSurface&) = delete;
    virtual ~IndicatorSurface() = default;

    /// Pixels of a picture for each device-independent one.
    [[nodiscard]] virtual int scale() const = 0;
    /// Shows the picture, or the next one. `fromLowerEdge`: device-independent pixels between its lower edge
    /// and that of what is free of the screen.
    virtual void show(const QImage& picture, int fromLowerEdge) = 0;
    /// 0 (nothing to be seen) to 1.
    virtual void setOpacity(double opacity) = 0;
    virtual void hide() = 0;
};

} // namespace tulvane
