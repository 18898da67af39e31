#pragma once

#include <platform/linux/x11/windows/StackingOrder.h>
#include <ports/IndicatorPanel.h>

#include <QMetaObject>

#include <memory>

namespace tulvane {

/// An unmanaged window ("override redirect"), which no window manager places, lowers, focuses or hides behind
/// a full-screen program. Its input shape is empty. Does nothing where the windows are not on X11.
class X11IndicatorPanel final : public IndicatorPanel {
public:
    /// `connection`: to the server that the windows are on; null where there is none.
    explicit X11IndicatorPanel(std::shared_ptr<X11Connection> connection);
    Q_DISABLE_COPY_MOVE(X11IndicatorPanel)
    ~X11IndicatorPanel() override;

    void prepare(QWindow& window) override;
    void raise(QWindow& window) override;
    [[nodiscard]] bool isBlended() const override;
    void setOpacity(QWindow& window, double opacity) override;
    void cut(QWindow& window, const std::optional<PanelOutline>& outline) override;

private:
    std::shared_ptr<X11Connection> m_connection;
    std::unique_ptr<StackingOrder> m_watch;
    QMetaObject::Connection m_visibility;
    std::optional<PanelOutline> m_outline; ///< as the window is cut, at this scale
    double m_scale = 1;
};

} // namespace tulvane
