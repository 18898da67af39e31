#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QRectF>

namespace tulvane {

/// What the indicator's content stands on: a rounded body with a hairline edge and a soft shadow, painted
/// once into an image and only copied from then on, because the meter above it moves all the time. Main
/// thread.
class IndicatorBackground : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// Where the body lies within the item, and how round its corners are; device-independent pixels.
    Q_PROPERTY(QRectF body MEMBER m_body WRITE setBody NOTIFY changed)
    Q_PROPERTY(qreal radius MEMBER m_radius NOTIFY changed)
    Q_PROPERTY(QColor upperColor MEMBER m_upperColor NOTIFY changed)
    Q_PROPERTY(QColor lowerColor MEMBER m_lowerColor NOTIFY changed)
    Q_PROPERTY(QColor edgeColor MEMBER m_edgeColor NOTIFY changed)
    Q_PROPERTY(QColor shadowColor MEMBER m_shadowColor NOTIFY changed)
    /// Without blending there is no shadow, and the body fills the corners, which are cut off elsewhere.
    Q_PROPERTY(bool blended MEMBER m_isBlended NOTIFY changed)

public:
    explicit IndicatorBackground(QQuickItem* parent = nullptr);

    void setBody(const QRectF& body);
    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    [[nodiscard]] QImage shadowImage(double scale) const;

    QRectF m_body;
    qreal m_radius = 0;
    QColor m_upperColor;
    QColor m_lowerColor;
    QColor m_edgeColor;
    QColor m_shadowColor;
    bool m_isBlended = true;
};

} // namespace tulvane
