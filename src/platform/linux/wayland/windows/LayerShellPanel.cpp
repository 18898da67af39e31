#include <platform/linux/wayland/windows/LayerShellPanel.h>

#include <QPainter>
#include <QWindow>

#include <algorithm>

namespace tulvane {

namespace {

/// A compositor seldom holds more than two.
constexpr std::size_t mostBuffers = 4;

} // namespace

std::unique_ptr<LayerShellPanel> LayerShellPanel::make(std::shared_ptr<WaylandConnection> connection)
{
    constexpr std::uint32_t versionWithScale = 3;
    const bool isOffered = connection->offers(wl_compositor_interface.name) &&
                           connection->offers(wl_shm_interface.name) &&
                           connection->offers(zwlr_layer_shell_v1_interface.name);
    if (!isOffered)
        return nullptr;
    const Globals globals{connection->bind<wl_compositor>(wl_compositor_interface, versionWithScale),
                          connection->bind<wl_shm>(wl_shm_interface, 1),
                          connection->bind<zwlr_layer_shell_v1>(zwlr_layer_shell_v1_interface, 1)};
    return std::unique_ptr<LayerShellPanel>(new LayerShellPanel(std::move(connection), globals));
}

LayerShellPanel::LayerShellPanel(std::shared_ptr<WaylandConnection> connection, Globals globals)
    : m_connection(std::move(connection)),
      m_globals(globals),
      m_scales(*m_connection)
{
}

LayerShellPanel::~LayerShellPanel()
{
    hide();
    m_buffers.clear();
    wl_proxy_destroy(reinterpret_cast<wl_proxy*>(m_globals.shell));
    wl_shm_destroy(m_globals.shm);
    wl_compositor_destroy(m_globals.compositor);
    m_connection->flush();
}

void LayerShellPanel::prepare(QWindow& window)
{
    window.setFlags(Qt::ToolTip | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint |
                    Qt::WindowDoesNotAcceptFocus | Qt::WindowTransparentForInput);
}

void LayerShellPanel::map(int fromLowerEdge)
{
    m_surface = wl_compositor_create_surface(m_globals.compositor);
    wl_region* const nowhere = wl_compositor_create_region(m_globals.compositor);
    wl_surface_set_input_region(m_surface, nowhere);
    wl_region_destroy(nowhere);
    static const zwlr_layer_surface_v1_listener events{
        [](void* data, zwlr_layer_surface_v1* layer, std::uint32_t serial, std::uint32_t, std::uint32_t) {
            zwlr_layer_surface_v1_ack_configure(layer, serial);
            auto& panel = *static_cast<LayerShellPanel*>(data);
            panel.m_isConfigured = true;
            panel.draw();
        },
        [](void* data, zwlr_layer_surface_v1*) { static_cast<LayerShellPanel*>(data)->hide(); }};
    // No screen is named: the compositor takes the one in use.
    m_layer = zwlr_layer_shell_v1_get_layer_surface(m_globals.shell, m_surface, nullptr,
                                                    ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, "tulvane-indicator");
    zwlr_layer_surface_v1_add_listener(m_layer, &events, this);
    const QSize size = m_picture.deviceIndependentSize().toSize();
    zwlr_layer_surface_v1_set_size(m_layer, static_cast<std::uint32_t>(size.width()),
                                   static_cast<std::uint32_t>(size.height()));
    zwlr_layer_surface_v1_set_anchor(m_layer, ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM);
    zwlr_layer_surface_v1_set_margin(m_layer, 0, 0, fromLowerEdge, 0);
    zwlr_layer_surface_v1_set_keyboard_interactivity(m_layer,
                                                     ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_NONE);
    wl_surface_commit(m_surface);
    m_connection->flush();
}

void LayerShellPanel::show(const QImage& picture, int fromLowerEdge)
{
    m_picture = picture;
    if (!m_surface)
        map(fromLowerEdge);
    else
        draw();
}

void LayerShellPanel::setOpacity(double opacity)
{
    if (std::exchange(m_opacity, opacity) != opacity)
        draw();
}

void LayerShellPanel::hide()
{
    if (!m_surface)
        return;
    zwlr_layer_surface_v1_destroy(std::exchange(m_layer, nullptr));
    wl_surface_destroy(std::exchange(m_surface, nullptr));
    m_isConfigured = false;
    m_connection->flush();
}

ShmBuffer* LayerShellPanel::freeBuffer(QSize size)
{
    std::erase_if(m_buffers, [=](const auto& buffer) { return !buffer->isBusy() && buffer->size() != size; });
    const auto found = std::ranges::find_if(m_buffers, [](const auto& buffer) { return !buffer->isBusy(); });
    if (found != m_buffers.end())
        return found->get();
    if (m_buffers.size() >= mostBuffers)
        return nullptr;
    auto made = ShmBuffer::make(m_globals.shm, size);
    return made ? m_buffers.emplace_back(std::move(made)).get() : nullptr;
}

void LayerShellPanel::draw()
{
    if (!m_isConfigured || m_picture.isNull())
        return;
    ShmBuffer* const buffer = freeBuffer(m_picture.size());
    if (!buffer)
        return;
    QImage target = buffer->image();
    target.fill(Qt::transparent);
    QPainter painter(&target);
    painter.setOpacity(m_opacity);
    painter.drawImage(QRect(QPoint(), target.size()), m_picture, m_picture.rect());
    painter.end();
    buffer->handOver();
    wl_surface_set_buffer_scale(m_surface, qRound(m_picture.devicePixelRatio()));
    wl_surface_attach(m_surface, buffer->object(), 0, 0);
    wl_surface_damage(m_surface, 0, 0, m_picture.width(), m_picture.height());
    wl_surface_commit(m_surface);
    m_connection->flush();
}

} // namespace tulvane
