#include <ui/indicator/IndicatorPicture.h>

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickRenderControl>
#include <QQuickRenderTarget>
#include <QQuickWindow>

#include <chrono>

namespace tulvane {

namespace {

constexpr std::chrono::milliseconds betweenPictures{16};

std::unique_ptr<QQuickItem> made(QQmlEngine& engine, const QString& name, const QVariantMap& properties)
{
    QQmlComponent component(&engine,
                            QUrl(QStringLiteral("qrc:/Tulvane/qml/") + name + QStringLiteral(".qml")));
    auto* const item = qobject_cast<QQuickItem*>(component.createWithInitialProperties(properties));
    if (!item)
        qFatal("The picture %s cannot be built: %s", qUtf8Printable(name),
               qUtf8Printable(component.errorString()));
    return std::unique_ptr<QQuickItem>(item);
}

} // namespace

IndicatorPicture::IndicatorPicture(QQmlEngine& engine, const QString& name, const QVariantMap& properties,
                                   QSize size, Drawn drawn)
    : m_drawn(std::move(drawn)),
      m_size(size),
      m_control(std::make_unique<QQuickRenderControl>()),
      m_window(std::make_unique<QQuickWindow>(m_control.get())),
      m_root(made(engine, name, properties))
{
    m_window->setColor(Qt::transparent);
    m_window->setGeometry(QRect(QPoint(), size));
    m_root->setParentItem(m_window->contentItem());
    m_root->setSize(size);
    m_next.setSingleShot(true);
    connect(&m_next, &QTimer::timeout, this, &IndicatorPicture::draw);
    const auto plan = [this] {
        if (m_isRunning && !m_next.isActive())
            m_next.start(betweenPictures);
    };
    connect(m_control.get(), &QQuickRenderControl::renderRequested, this, plan);
    connect(m_control.get(), &QQuickRenderControl::sceneChanged, this, plan);
}

IndicatorPicture::~IndicatorPicture()
{
    m_root.reset();
    m_window.reset();
}

void IndicatorPicture::start(int scale)
{
    m_isRunning = true;
    // What is drawn later is drawn over what was there: the image is kept as long as it fits.
    if (m_image.size() != m_size * scale) {
        m_image = QImage(m_size * scale, QImage::Format_ARGB32_Premultiplied);
        m_image.fill(Qt::transparent);
        m_image.setDevicePixelRatio(scale);
    }
    m_next.stop();
    draw();
}

void IndicatorPicture::stop()
{
    m_isRunning = false;
    m_next.stop();
}

void IndicatorPicture::draw()
{
    // The renderer draws what has changed alone, and clears below that by itself.
    QQuickRenderTarget target = QQuickRenderTarget::fromPaintDevice(&m_image);
    target.setDevicePixelRatio(m_image.devicePixelRatio());
    m_window->setRenderTarget(target);
    m_control->polishItems();
    m_control->sync();
    m_control->render();
    m_drawn(m_image);
}

} // namespace tulvane
