#include <ui/indicator/IndicatorBackground.h>

#include <QImage>
#include <QLinearGradient>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tulvane {

namespace {

constexpr double shadowDrop = 4;   ///< how far below the body the shadow lies
constexpr double shadowReach = 15; ///< how far it can be seen around itself

/// The distance of a point from a rounded rectangle's edge; negative inside.
double distance(QPointF point, const QRectF& rect, double radius)
{
    const QPointF from = point - rect.center();
    const double x = std::abs(from.x()) - rect.width() / 2 + radius;
    const double y = std::abs(from.y()) - rect.height() / 2 + radius;
    const double outside = std::hypot(std::max(x, 0.0), std::max(y, 0.0));
    return outside + std::min(std::max(x, y), 0.0) - radius;
}

/// Falls softly from 1 well inside to 0 at the end of the reach.
double strength(double distance)
{
    const double part = std::clamp((shadowReach - distance) / (2 * shadowReach), 0.0, 1.0);
    return part * part * (3 - 2 * part);
}

} // namespace

IndicatorBackground::IndicatorBackground(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    connect(this, &IndicatorBackground::changed, this, [this] { update(); });
}

void IndicatorBackground::setBody(const QRectF& body)
{
    if (m_body == body)
        return;
    m_body = body;
    Q_EMIT changed();
}

QImage IndicatorBackground::shadowImage(double scale) const
{
    QImage image((size() * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    const QRectF body = m_body.translated(0, shadowDrop);
    const double most = m_shadowColor.alphaF() * 255;
    for (int y = 0; y < image.height(); ++y) {
        auto* const line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const QPointF point((x + 0.5) / scale, (y + 0.5) / scale);
            const auto alpha = static_cast<int>(most * strength(distance(point, body, m_radius)));
            line[x] =
                qPremultiply(qRgba(m_shadowColor.red(), m_shadowColor.green(), m_shadowColor.blue(), alpha));
        }
    }
    return image;
}

void IndicatorBackground::paint(QPainter* painter)
{
    QLinearGradient filling(m_body.topLeft(), m_body.bottomLeft());
    filling.setColorAt(0, m_upperColor);
    filling.setColorAt(1, m_lowerColor);
    if (!m_isBlended) {
        painter->fillRect(boundingRect(), filling);
    } else {
        const double scale = painter->device()->devicePixelRatioF() * painter->transform().m11();
        painter->drawImage(boundingRect(), shadowImage(scale));
    }
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(filling);
    if (m_isBlended) {
        // The shadow does not shine through the body.
        painter->setCompositionMode(QPainter::CompositionMode_Source);
        painter->drawRoundedRect(m_body, m_radius, m_radius);
        painter->setCompositionMode(QPainter::CompositionMode_SourceOver);
    }
    painter->setPen(QPen(m_edgeColor, 1));
    painter->setBrush(Qt::NoBrush);
    const QRectF line = m_body.adjusted(0.5, 0.5, -0.5, -0.5);
    painter->drawRoundedRect(line, m_radius - 0.5, m_radius - 0.5);
}

} // namespace tulvane
