#pragma once

#include <ports/IndicatorSurface.h>

#include <QImage>
#include <QList>

namespace tulvane {

/// Keeps the pictures that were shown on it.
class FakeIndicatorSurface final : public IndicatorSurface {
public:
    [[nodiscard]] int scale() const override { return pixelsPerPoint; }
    void show(const QImage& picture, int /*fromLowerEdge*/) override
    {
        last = picture.copy();
        ++shown;
    }
    void setOpacity(double now) override { opacity = now; }
    void hide() override
    {
        last = {};
        ++hidden;
    }

    int pixelsPerPoint = 2;
    QImage last; ///< null while nothing is shown
    int shown = 0;
    int hidden = 0;
    double opacity = 1;
};

} // namespace tulvane
