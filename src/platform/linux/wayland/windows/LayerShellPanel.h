#pragma once

#include <platform/linux/wayland/windows/OutputScales.h>
#include <platform/linux/wayland/windows/ShmBuffer.h>
#include <ports/IndicatorPanel.h>
#include <ports/IndicatorSurface.h>

#include <QImage>

#include <wlr-layer-shell-unstable-v1-client.h>

#include <memory>
#include <vector>

namespace tulvane {

/// The indicator on the overlay layer of a Wayland compositor: above full-screen windows, without the
/// keyboard and without clicks. It is a new surface at each show, so that it appears on the screen in use.
/// Main thread.
class LayerShellPanel final : public IndicatorPanel, public IndicatorSurface {
public:
    /// Null where the compositor has no layers.
    [[nodiscard]] static std::unique_ptr<LayerShellPanel> make(std::shared_ptr<WaylandConnection> connection);
    LayerShellPanel(const LayerShellPanel&) = delete;
    LayerShellPanel& operator=(const LayerShellPanel&) = delete;
    ~LayerShellPanel() override;

    // The window is never shown here.
    void prepare(QWindow& window) override;
    void raise(QWindow& /*window*/) override {}
    [[nodiscard]] bool isBlended() const override { return true; }
    void setOpacity(QWindow& /*window*/, double opacity) override { setOpacity(opacity); }
    void cut(QWindow& /*window*/, const std::optional<PanelOutline>& /*outline*/) override {}
    [[nodiscard]] IndicatorSurface* surface() override { return this; }

    [[nodiscard]] int scale() const override { return m_scales.highest(); }
    void show(const QImage& picture, int fromLowerEdge) override;
    void setOpacity(double opacity) override;
    void hide() override;

private:
    struct Globals {
        wl_compositor* compositor;
        wl_shm* shm;
        zwlr_layer_shell_v1* shell;
    };
    LayerShellPanel(std::shared_ptr<WaylandConnection> connection, Globals globals);

    void map(int fromLowerEdge);
    void draw();
    [[nodiscard]] ShmBuffer* freeBuffer(QSize size);

    std::shared_ptr<WaylandConnection> m_connection;
    Globals m_globals;
    OutputScales m_scales;
    wl_surface* m_surface = nullptr;
    zwlr_layer_surface_v1* m_layer = nullptr;
    bool m_isConfigured = false;
    std::vector<std::unique_ptr<ShmBuffer>> m_buffers;
    QImage m_picture;
    double m_opacity = 1;
};

} // namespace tulvane
