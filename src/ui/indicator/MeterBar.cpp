#include <ui/indicator/MeterBar.h>

#include <QLinearGradient>
#include <QPainter>

namespace tulvane {

namespace {

constexpr float lowerStrength = 0.65F;

} // namespace

MeterBar::MeterBar(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
}

void MeterBar::setLength(qreal length)
{
    if (m_length == length)
        return;
    m_length = length;
    update();
    Q_EMIT lengthChanged();
}

void MeterBar::setTint(const QColor& tint)
{
    if (m_tint == tint)
        return;
    m_tint = tint;
    update();
    Q_EMIT tintChanged();
}

void MeterBar::paint(QPainter* painter)
{
    const QRectF bar(0, (height() - m_length) / 2, width(), m_length);
    QColor lower = m_tint;
    lower.setAlphaF(m_tint.alphaF() * lowerStrength);
    QLinearGradient filling(bar.topLeft(), bar.bottomLeft());
    filling.setColorAt(0, m_tint);
    filling.setColorAt(1, lower);
    painter->setPen(Qt::NoPen);
    painter->setBrush(filling);
    painter->drawRoundedRect(bar, width() / 2, width() / 2);
}

} // namespace tulvane
