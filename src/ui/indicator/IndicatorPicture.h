#pragma once

#include <QImage>
#include <QObject>
#include <QSize>
#include <QString>
#include <QTimer>
#include <QVariantMap>

#include <functional>
#include <memory>

class QQmlEngine;
class QQuickItem;
class QQuickRenderControl;
class QQuickWindow;

namespace tulvane {

/// Draws a QML file into pictures, without a window on the screen: a new one after each change, at most sixty
/// a second, and none while it is stopped. Main thread.
class IndicatorPicture final : public QObject {
    Q_OBJECT

public:
    using Drawn = std::function<void(const QImage& picture)>;

    /// `name` is the QML type of the root, `size` in device-independent pixels. Ends the program when the QML
    /// file is broken, which no user can meet.
    IndicatorPicture(QQmlEngine& engine, const QString& name, const QVariantMap& properties, QSize size,
                     Drawn drawn);
    ~IndicatorPicture() override;

    /// Draws at once, and after each change. `scale`: pixels for each device-independent one.
    void start(int scale);
    void stop();
    [[nodiscard]] QQuickItem& root() const { return *m_root; }

private:
    void draw();

    Drawn m_drawn;
    QSize m_size;
    std::unique_ptr<QQuickRenderControl> m_control;
    std::unique_ptr<QQuickWindow> m_window;
    std::unique_ptr<QQuickItem> m_root;
    QTimer m_next;
    QImage m_image;
    bool m_isRunning = false;
};

} // namespace tulvane
