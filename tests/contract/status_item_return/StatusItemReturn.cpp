#include <platform/linux/desktop/shell/TrayStatusItem.h>
#include <support/Await.h>
#include <support/Paths.h>
#include <support/ReturningBus.h>
#include <support/VirtualDesktop.h>
#include <support/tray/TrayHost.h>

#include <QApplication>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

using namespace std::chrono_literals;

struct World {
    ReturningBus bus;
    VirtualDesktop desktop{{.windowManager = VirtualDesktop::WindowManager::openbox,
                            .sessionBus = VirtualDesktop::SessionBus::none,
                            .openboxKeys = {},
                            .busAddress = bus.address()}};
};

World* theWorld = nullptr;

TEST(StatusItem, IsShownOverABusThatHasComeBackWithItsMenu)
{
    auto bar = std::make_unique<TrayHost>(theWorld->desktop);
    TrayStatusItem item(sourceFolder() + QStringLiteral("/resources/symbols"), {}, nullptr);
    int clicks = 0;
    const QString start = QStringLiteral("Start");
    item.setMenu(
        {{.kind = MenuEntry::Kind::action, .name = start, .text = start, .activate = [&] { ++clicks; }}});
    item.setDescription(QStringLiteral("Ready"));
    item.setSymbol(QStringLiteral("mic"));
    bar->waitForIcon();
    for (int round = 0; round < 2; ++round) {
        theWorld->bus.kill();
        EXPECT_TRUE(waitUntil([&] { return !item.isShown(); })) << "what is not seen is not shown";
        bar->kill();
        theWorld->bus.start();
        bar = std::make_unique<TrayHost>(theWorld->desktop);
        EXPECT_TRUE(waitUntil([&] { return bar->hasIcon() && item.isShown(); }, 20s));
        EXPECT_EQ(bar->icon()[QStringLiteral("ToolTip")].toArray().at(2).toString(), u"Ready");
        ASSERT_TRUE(bar->waitForLine(start));
        bar->click(start);
        EXPECT_TRUE(waitUntil([&] { return clicks == round + 1; }));
    }
}

} // namespace

} // namespace tulvane::test

int main(int argc, char** argv)
{
    // Both are looked for only once, when the application object is made.
    tulvane::test::World world;
    tulvane::test::theWorld = &world;
    qputenv("DISPLAY", world.desktop.display().toLocal8Bit());
    qputenv("DBUS_SESSION_BUS_ADDRESS", world.bus.address().toLocal8Bit());
    qputenv("QT_QPA_PLATFORM", "xcb");
    const QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
