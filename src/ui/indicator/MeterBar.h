#pragma once

#include <QColor>
#include <QQuickPaintedItem>

namespace tulvane {

/// One bar of the level meter: as wide as its item, round at its ends, standing around the item's middle,
/// with a length that need not end on a pixel, so that it moves smoothly. Main thread.
class MeterBar : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// Device-independent pixels.
    Q_PROPERTY(qreal length READ length WRITE setLength NOTIFY lengthChanged)
    /// At the upper end, running to 65 % of it at the lower one.
    Q_PROPERTY(QColor tint READ tint WRITE setTint NOTIFY tintChanged)

public:
    explicit MeterBar(QQuickItem* parent = nullptr);

    [[nodiscard]] qreal length() const { return m_length; }
    void setLength(qreal length);
    [[nodiscard]] QColor tint() const { return m_tint; }
    void setTint(const QColor& tint);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void lengthChanged();
    void tintChanged();

private:
    qreal m_length = 0;
    QColor m_tint;
};

} // namespace tulvane
