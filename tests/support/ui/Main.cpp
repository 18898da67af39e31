#include <support/ui/QmlComplaints.h>

#include <QGuiApplication>
#include <QQuickWindow>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

/// The software renderer frees the pictures of a window that has gone when it draws the next one.
void freeTheLastWindowsPictures()
{
    QQuickWindow empty;
    empty.show();
    while (!empty.isExposed())
        QCoreApplication::processEvents();
    static_cast<void>(empty.grabWindow());
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QGuiApplication app(argc, argv);
    ::testing::InitGoogleMock(&argc, argv);
    tulvane::test::QmlComplaints::install();
    const int status = RUN_ALL_TESTS();
    freeTheLastWindowsPictures();
    return status;
}
