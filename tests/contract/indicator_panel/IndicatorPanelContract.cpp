// What every adapter of the port must hold to.
#include <platform/fake/FakeIndicatorPanel.h>
#include <platform/linux/x11/windows/X11IndicatorPanel.h>
#include <support/windows/RealDesktop.h>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

template <class Panel>
std::unique_ptr<IndicatorPanel> make()
{
    if constexpr (std::is_same_v<Panel, X11IndicatorPanel>)
        return std::make_unique<Panel>(X11Connection::open(realDesktop().display().toLocal8Bit()));
    else
        return std::make_unique<Panel>();
}

template <class Panel>
class IndicatorPanelContract : public testing::Test {
protected:
    std::unique_ptr<IndicatorPanel> m_panel = make<Panel>();
    PlainWindow m_window;
};

using Panels = testing::Types<FakeIndicatorPanel, X11IndicatorPanel>;
TYPED_TEST_SUITE(IndicatorPanelContract, Panels);

} // namespace

TYPED_TEST(IndicatorPanelContract, TheWindowTakesNeitherFocusNorClicksNorAFrame)
{
    this->m_panel->prepare(this->m_window);
    const Qt::WindowFlags flags = this->m_window.flags();
    for (const auto flag : {Qt::FramelessWindowHint, Qt::BypassWindowManagerHint,
                            Qt::WindowDoesNotAcceptFocus, Qt::WindowTransparentForInput})
        EXPECT_TRUE(flags.testFlag(flag)) << flag;
    EXPECT_FALSE(this->m_window.isVisible()); // preparing does not show it
}

TYPED_TEST(IndicatorPanelContract, EverythingMayBeAskedAtAnyTimeAndAgain)
{
    this->m_panel->prepare(this->m_window);
    for (const bool isShown : {false, true, false, true}) {
        this->m_window.setVisible(isShown);
        static_cast<void>(this->m_panel->isBlended());
        this->m_panel->setOpacity(this->m_window, 0);
        this->m_panel->cut(this->m_window, PanelOutline{{10, 10, 60, 48}, 24});
        this->m_panel->raise(this->m_window);
        this->m_panel->raise(this->m_window);
        this->m_panel->cut(this->m_window, PanelOutline{{10, 10, 0, 0}, 24});
        this->m_panel->cut(this->m_window, std::nullopt);
        this->m_panel->setOpacity(this->m_window, 1);
        EXPECT_EQ(this->m_window.isVisible(), isShown);
    }
}

TYPED_TEST(IndicatorPanelContract, APanelMayGoBeforeOrAfterItsWindowIsHidden)
{
    this->m_panel->prepare(this->m_window);
    this->m_window.show();
    this->m_panel->raise(this->m_window);
    this->m_panel.reset();
    this->m_window.hide();
    EXPECT_FALSE(this->m_window.isVisible());
}

} // namespace tulvane::test
