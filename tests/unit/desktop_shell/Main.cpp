#include <QApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

/// Menus are widgets, and need the application object that knows of them.
int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    ::testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
