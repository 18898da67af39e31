#pragma once

#include <QColor>
#include <QQuickItem>

namespace tulvane {

/// The line around a RoundBox, within its edge; none where it has no width.
class RoundBoxBorder : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    /// In device-independent pixels.
    Q_PROPERTY(qreal width MEMBER width NOTIFY changed)
    Q_PROPERTY(QColor color MEMBER color NOTIFY changed)

public:
    using QObject::QObject;

    qreal width = 0;
    QColor color{Qt::black};

Q_SIGNALS:
    void changed();
};

/// A rectangle with round corners and perhaps a line around it, whose edges lie on the screen's own pixels
/// whatever its scale is: the toolkit's rectangle is put together of pieces that no longer meet at 125 and
/// 150 per cent. Painted straight into the window, so it takes no memory. Main thread.
class RoundBox : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    /// In device-independent pixels; half the shorter side at most.
    Q_PROPERTY(qreal radius READ radius WRITE setRadius NOTIFY radiusChanged)
    Q_PROPERTY(tulvane::RoundBoxBorder* border READ border CONSTANT)

public:
    explicit RoundBox(QQuickItem* parent = nullptr);

    [[nodiscard]] QColor color() const { return m_color; }
    void setColor(const QColor& color);
    [[nodiscard]] qreal radius() const { return m_radius; }
    void setRadius(qreal radius);
    [[nodiscard]] RoundBoxBorder* border() { return &m_border; }

Q_SIGNALS:
    void colorChanged();
    void radiusChanged();

protected:
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;
    void geometryChange(const QRectF& now, const QRectF& before) override;

private:
    QColor m_color{Qt::white};
    qreal m_radius = 0;
    RoundBoxBorder m_border;
};

} // namespace tulvane
