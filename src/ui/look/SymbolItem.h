#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QString>

namespace tulvane {

/// One symbol of the program's own set, by its name ("mic.fill"), drawn in one colour and as sharp as the
/// screen. An unknown name draws nothing and is logged. Decoration: screen readers pass over it.
class Symbol : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    /// Width and height in device-independent pixels.
    Q_PROPERTY(qreal size READ size WRITE setSymbolSize NOTIFY sizeChanged)

public:
    explicit Symbol(QQuickItem* parent = nullptr);

    [[nodiscard]] QString name() const { return m_name; }
    void setName(const QString& name);
    [[nodiscard]] QColor color() const { return m_color; }
    void setColor(const QColor& color);
    [[nodiscard]] qreal size() const { return m_size; }
    void setSymbolSize(qreal size);

    void paint(QPainter* painter) override;

    /// The resource that holds the symbol.
    [[nodiscard]] static QString file(const QString& name);

Q_SIGNALS:
    void nameChanged();
    void colorChanged();
    void sizeChanged();

private:
    QString m_name;
    QColor m_color{Qt::black};
    qreal m_size = 0;
};

} // namespace tulvane
