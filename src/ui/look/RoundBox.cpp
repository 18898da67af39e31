#include <ui/look/RoundBox.h>

#include <QMatrix4x4>
#include <QPainter>
#include <QPainterPath>
#include <QQuickWindow>
#include <QSGRenderNode>
#include <QSGRendererInterface>

#include <algorithm>
#include <cmath>

namespace tulvane {

namespace {

/// What is drawn, in device-independent pixels.
struct Looks {
    QSizeF size;
    qreal radius = 0;
    QColor color;
    qreal line = 0;
    QColor lineColor;
};

/// The same rectangle with its edges on whole pixels.
QRectF onPixels(const QRectF& rect)
{
    const QPointF topLeft(std::round(rect.left()), std::round(rect.top()));
    const QPointF bottomRight(std::round(rect.right()), std::round(rect.bottom()));
    return {topLeft, bottomRight};
}

/// The box's outline, so far inside its edge.
QPainterPath outline(const QRectF& box, qreal radius, qreal inside)
{
    const QRectF rect = box.adjusted(inside, inside, -inside, -inside);
    const qreal round = std::max(0.0, std::min(radius, std::min(box.width(), box.height()) / 2) - inside);
    QPainterPath path;
    if (!rect.isEmpty())
        path.addRoundedRect(rect, round, round);
    return path;
}

class BoxNode final : public QSGRenderNode {
public:
    explicit BoxNode(QQuickWindow* window) : m_window(window) {}

    void show(const Looks& looks)
    {
        m_looks = looks;
        markDirty(DirtyMaterial);
    }

    void render(const RenderState* state) override
    {
        QSGRendererInterface* const renderer = m_window->rendererInterface();
        auto* const painter =
            static_cast<QPainter*>(renderer->getResource(m_window, QSGRendererInterface::PainterResource));
        if (!painter)
            return;
        if (isClipped()) {
            const QRegion* const region = state->clipRegion();
            if (!region || region->isEmpty())
                return;
            // The region is the window's, so it comes before any transformation.
            painter->setClipRegion(*region);
        }
        const qreal scale = painter->device()->devicePixelRatioF();
        const QRectF place = matrix()->mapRect(QRectF(QPointF(), m_looks.size));
        painter->setTransform(QTransform::fromScale(1 / scale, 1 / scale));
        painter->setOpacity(inheritedOpacity());
        paint(*painter, onPixels({place.topLeft() * scale, place.size() * scale}), scale);
    }

    [[nodiscard]] StateFlags changedStates() const override { return {}; }
    [[nodiscard]] RenderingFlags flags() const override { return BoundedRectRendering; }
    // An edge may move by half a pixel.
    [[nodiscard]] QRectF rect() const override
    {
        return QRectF(QPointF(), m_looks.size).adjusted(-1, -1, 1, 1);
    }

private:
    /// Whether an item above clips. The renderer's region alone does not say: it is empty without a clip, and
    /// also where the clip leaves nothing to be seen.
    [[nodiscard]] bool isClipped() const
    {
        for (const QSGNode* node = parent(); node; node = node->parent()) {
            if (node->type() == ClipNodeType)
                return true;
        }
        return false;
    }
    /// `box` is in the screen's pixels.
    void paint(QPainter& painter, const QRectF& box, qreal scale) const
    {
        const qreal line = m_looks.line > 0 ? std::max(1.0, std::round(m_looks.line * scale)) : 0;
        const qreal radius = m_looks.radius * scale;
        painter.setRenderHint(QPainter::Antialiasing);
        // Up to the middle of the line, which covers where both meet.
        painter.fillPath(outline(box, radius, line / 2), m_looks.color);
        if (line > 0) {
            // Not by a pen: with one of a single pixel nothing at all is drawn at 125 per cent.
            QPainterPath ring = outline(box, radius, 0);
            ring.addPath(outline(box, radius, line));
            painter.fillPath(ring, m_looks.lineColor);
        }
    }

    QQuickWindow* m_window;
    Looks m_looks;
};

} // namespace

RoundBox::RoundBox(QQuickItem* parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    connect(&m_border, &RoundBoxBorder::changed, this, &RoundBox::update);
}

void RoundBox::setColor(const QColor& color)
{
    if (m_color == color)
        return;
    m_color = color;
    update();
    Q_EMIT colorChanged();
}

void RoundBox::setRadius(qreal radius)
{
    if (m_radius == radius)
        return;
    m_radius = radius;
    update();
    Q_EMIT radiusChanged();
}

QSGNode* RoundBox::updatePaintNode(QSGNode* node, UpdatePaintNodeData* /*data*/)
{
    const bool hasLine = m_border.width > 0 && m_border.color.alpha() > 0;
    if (width() <= 0 || height() <= 0 || (m_color.alpha() == 0 && !hasLine)) {
        delete node;
        return nullptr;
    }
    auto* const box = node ? static_cast<BoxNode*>(node) : new BoxNode(window());
    box->show({size(), m_radius, m_color, hasLine ? m_border.width : 0, m_border.color});
    return box;
}

void RoundBox::geometryChange(const QRectF& now, const QRectF& before)
{
    QQuickItem::geometryChange(now, before);
    if (now.size() != before.size())
        update();
}

} // namespace tulvane
