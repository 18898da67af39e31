#include <support/Await.h>
#include <support/windows/RealDesktop.h>

#include <QGuiApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

VirtualDesktop* theDesktop = nullptr;
ServerView* theView = nullptr;

} // namespace

VirtualDesktop& realDesktop()
{
    return *theDesktop;
}

ServerView& realView()
{
    return *theView;
}

bool showAndWait(QWindow& window, ServerView& view)
{
    window.show();
    return waitUntil([&] { return window.isExposed() && view.isViewable(idOf(window)); });
}

} // namespace tulvane::test

int main(int argc, char** argv)
{
    using tulvane::test::VirtualDesktop;
    // The application object reads its display only once, so the desktop comes first.
    VirtualDesktop desktop({.windowManager = VirtualDesktop::WindowManager::openbox,
                            .sessionBus = VirtualDesktop::SessionBus::own,
                            .openboxKeys = {}});
    tulvane::test::theDesktop = &desktop;
    tulvane::test::ServerView view(desktop.display());
    tulvane::test::theView = &view;
    qputenv("DISPLAY", desktop.display().toLocal8Bit());
    qputenv("QT_QPA_PLATFORM", "xcb");
    const QGuiApplication app(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    ::testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
