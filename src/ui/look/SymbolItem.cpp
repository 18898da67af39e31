#include <base/Log.h>
#include <ui/look/SymbolItem.h>

#include <QFile>
#include <QHash>
#include <QPainter>
#include <QSvgRenderer>

#include <memory>

namespace tulvane {

namespace {

/// Parsed once each; a page shows the same few symbols many times.
QSvgRenderer* rendererFor(const QString& name)
{
    static QHash<QString, std::shared_ptr<QSvgRenderer>> renderers;
    auto& renderer = renderers[name];
    if (!renderer) {
        renderer = std::make_shared<QSvgRenderer>(Symbol::file(name));
        if (!renderer->isValid())
            qCWarning(lcApp, "There is no symbol “%s”", qUtf8Printable(name));
    }
    return renderer->isValid() ? renderer.get() : nullptr;
}

} // namespace

Symbol::Symbol(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    setSymbolSize(20);
}

QString Symbol::file(const QString& name)
{
    return QStringLiteral(":/symbols/") + name + QStringLiteral(".svg");
}

void Symbol::setName(const QString& name)
{
    if (m_name == name)
        return;
    m_name = name;
    update();
    Q_EMIT nameChanged();
}

void Symbol::setColor(const QColor& color)
{
    if (m_color == color)
        return;
    m_color = color;
    update();
    Q_EMIT colorChanged();
}

void Symbol::setSymbolSize(qreal size)
{
    if (qFuzzyCompare(m_size, size))
        return;
    m_size = size;
    setImplicitSize(size, size);
    Q_EMIT sizeChanged();
}

void Symbol::paint(QPainter* painter)
{
    QSvgRenderer* const renderer = m_name.isEmpty() ? nullptr : rendererFor(m_name);
    if (!renderer)
        return;
    const qreal scale = painter->device()->devicePixelRatioF() * painter->transform().m11();
    const QSize pixels = (boundingRect().size() * scale).toSize();
    if (pixels.isEmpty())
        return;
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter shape(&image);
    renderer->render(&shape);
    shape.setCompositionMode(QPainter::CompositionMode_SourceIn);
    shape.fillRect(image.rect(), m_color);
    shape.end();
    painter->drawImage(boundingRect(), image);
}

} // namespace tulvane
