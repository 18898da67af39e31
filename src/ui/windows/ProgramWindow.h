#pragma once

#include <QQuickView>
#include <QSize>
#include <QString>
#include <QVariantMap>

#include <memory>

namespace tulvane {

/// How a window of the program is made: one QML file that fills it.
struct WindowPlan {
    QString name;           ///< the QML type of the root, "MainView"
    QString title;          ///< for the title bar, translated
    QSize smallest;         ///< device-independent pixels
    QVariantMap properties; ///< the root's initial properties
};

/// Ends the program when the QML file is broken, which no user can meet. Main thread.
[[nodiscard]] std::unique_ptr<QQuickView> makeWindow(QQmlEngine& engine, const WindowPlan& plan);

/// Shows the window, or brings it back from the task bar, in front of all others and with the focus.
void bringToFront(QWindow& window);

} // namespace tulvane
