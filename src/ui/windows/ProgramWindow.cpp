#include <ui/windows/ProgramWindow.h>

#include <QIcon>
#include <QQmlEngine>

namespace tulvane {

std::unique_ptr<QQuickView> makeWindow(QQmlEngine& engine, const WindowPlan& plan)
{
    auto view = std::make_unique<QQuickView>(&engine, nullptr);
    view->setTitle(plan.title);
    view->setIcon(QIcon(QStringLiteral(":/icons/com.dunio.Tulvane.svg")));
    view->setMinimumSize(plan.smallest);
    view->setResizeMode(QQuickView::SizeRootObjectToView);
    view->setInitialProperties(plan.properties);
    view->setSource(QUrl(QStringLiteral("qrc:/Tulvane/qml/") + plan.name + QStringLiteral(".qml")));
    if (view->status() != QQuickView::Ready)
        qFatal("The window %s cannot be built.", qUtf8Printable(plan.name));
    return view;
}

void bringToFront(QWindow& window)
{
    if (window.windowState() == Qt::WindowMinimized)
        window.showNormal();
    else
        window.show();
    window.raise();
    window.requestActivate();
}

} // namespace tulvane
