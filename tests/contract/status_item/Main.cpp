#include "StatusBars.h"

#include <support/VirtualDesktop.h>

#include <QApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

VirtualDesktop* theDesktop = nullptr;

} // namespace

VirtualDesktop& statusDesktop()
{
    return *theDesktop;
}

} // namespace tulvane::test

int main(int argc, char** argv)
{
    using tulvane::test::VirtualDesktop;
    // The application object looks for its display and for the session bus only once, so the desktop comes
    // first.
    VirtualDesktop desktop({.windowManager = VirtualDesktop::WindowManager::openbox,
                            .sessionBus = VirtualDesktop::SessionBus::own,
                            .openboxKeys = {}});
    tulvane::test::theDesktop = &desktop;
    const QString bus = QStringLiteral("DBUS_SESSION_BUS_ADDRESS");
    qputenv("DISPLAY", desktop.display().toLocal8Bit());
    qputenv("DBUS_SESSION_BUS_ADDRESS", desktop.environment().value(bus).toLocal8Bit());
    qputenv("QT_QPA_PLATFORM", "xcb");
    const QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    ::testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
