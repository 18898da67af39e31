// The portal's shortcuts, over the real portal and KDE's real program behind it.
#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/portal/PortalBackends.h>
#include <platform/linux/portal/PortalHotkeys.h>
#include <ports/KeyModifiers.h>
#include <support/Await.h>
#include <support/wayland/WaylandDesktop.h>

#include <gmock/gmock.h>

namespace tulvane::test {

namespace {

constexpr KeyCombination controlAltD{2, carbon::control | carbon::option};
constexpr int leftAlt = 56;
constexpr int leftControl = 29;
constexpr int letterD = 32;

class KdePortalTest : public testing::Test {
protected:
    void SetUp() override
    {
        TULVANE_NEEDS(WaylandDesktop::Kind::closedKwin); // has the portal
        desktop = std::make_unique<WaylandDesktop>(WaylandDesktop::Kind::kwin);
        hotkeys = std::make_unique<PortalHotkeys>(std::make_shared<LastingBus>(desktop->bus()),
                                                  *XkbKeymap::fromNames(QStringLiteral("no")));
        hotkeys->setEventHandler([this](const HotkeyEvent& event) {
            if (event.kind != HotkeyEventKind::repeated)
                edges.push_back(event.kind == HotkeyEventKind::pressed);
            return HotkeyDelivery::handled;
        });
        hotkeys->setChangeHandler([this] { ++changes; });
    }

    std::unique_ptr<WaylandDesktop> desktop;
    std::unique_ptr<PortalHotkeys> hotkeys;
    std::vector<bool> edges;
    int changes = 0;
};

TEST_F(KdePortalTest, BothEdgesComeAndTheKeyIsWrittenAsTheDesktopWritesIt)
{
    EXPECT_TRUE(hasPortalBackend(QStringLiteral("GlobalShortcuts"), desktop->environment()));
    const auto taken = hotkeys->registerHotkey({1, 1}, controlAltD);
    ASSERT_TRUE(taken);
    ASSERT_TRUE(waitUntil([this] { return changes > 0; }));
    EXPECT_EQ(hotkeys->display(controlAltD).text(), QStringLiteral("Ctrl+Alt+D"));
    // The portal answers before the desktop has the key.
    EXPECT_TRUE(waitUntil([this] {
        desktop->press({leftControl, leftAlt, letterD});
        return waitUntil([this] { return edges.size() >= 2; }, std::chrono::milliseconds(500));
    }));
    EXPECT_THAT(edges, testing::ElementsAre(true, false));
}

} // namespace

} // namespace tulvane::test
