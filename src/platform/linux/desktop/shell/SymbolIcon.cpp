#include <platform/linux/desktop/shell/SymbolIcon.h>

#include <QIconEngine>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <memory>
#include <utility>

namespace tulvane {

namespace {

/// The rim's width and strength on a bar of the usual height of 22 pixels.
constexpr qreal rimPart = 1.0 / 22;
constexpr qreal rimOpacity = 0.4;

/// Bars over the bus are sent pictures of these sizes, and take the nearest.
const QList<QSize> sentSizes{{16, 16}, {22, 22}, {24, 24}, {32, 32}, {44, 44}, {48, 48}, {64, 64}};

class SymbolEngine final : public QIconEngine {
public:
    SymbolEngine(const QString& file, IconTone tone)
        : m_renderer(std::make_shared<QSvgRenderer>(file)),
          m_tone(std::move(tone))
    {
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode /*mode*/, QIcon::State /*state*/) override
    {
        const qreal scale = painter->device()->devicePixelRatioF();
        QImage image = drawn(rect.size() * scale);
        painter->drawImage(rect, image);
    }

    [[nodiscard]] QPixmap pixmap(const QSize& size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override
    {
        return QPixmap::fromImage(drawn(size));
    }

    [[nodiscard]] QList<QSize> availableSizes(QIcon::Mode /*mode*/, QIcon::State /*state*/) override
    {
        return sentSizes;
    }

    [[nodiscard]] QIconEngine* clone() const override { return new SymbolEngine(*this); }

private:
    [[nodiscard]] QImage shape(QSize size, const QColor& color) const
    {
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        m_renderer->render(&painter);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(image.rect(), color);
        return image;
    }

    [[nodiscard]] QImage drawn(QSize size) const
    {
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        if (size.isEmpty() || !m_renderer->isValid())
            return image;
        const QImage rim = shape(size, m_tone.rim);
        const qreal width = rimPart * size.height();
        QPainter painter(&image);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        for (const QPointF& side : {QPointF(-1, 0), QPointF(1, 0), QPointF(0, -1), QPointF(0, 1)}) {
            painter.setOpacity(rimOpacity);
            painter.drawImage(side * width, rim);
        }
        painter.setOpacity(1);
        painter.drawImage(0, 0, shape(size, m_tone.symbol));
        return image;
    }

    std::shared_ptr<QSvgRenderer> m_renderer;
    IconTone m_tone;
};

} // namespace

IconTone toneFor(const QStringList& desktops, bool themeIsDark)
{
    const QStringList darkBars{QStringLiteral("GNOME"), QStringLiteral("Unity"), QStringLiteral("Pantheon"),
                               QStringLiteral("X-Cinnamon"), QStringLiteral("Budgie")};
    const bool hasDarkBar = std::ranges::any_of(
        desktops, [&](const QString& name) { return darkBars.contains(name, Qt::CaseInsensitive); });
    const QColor light(0xF5, 0xF5, 0xF7);
    const QColor dark(0x1D, 0x1D, 0x1F);
    return hasDarkBar || themeIsDark ? IconTone{light, dark} : IconTone{dark, light};
}

QIcon symbolIcon(const QString& file, const IconTone& tone)
{
    return QIcon(new SymbolEngine(file, tone));
}

} // namespace tulvane
