#include "SettingsPortal.h"

#include <platform/fake/FakePresentation.h>
#include <platform/linux/desktop/shell/DesktopPresentation.h>
#include <support/Await.h>
#include <support/ReturningBus.h>
#include <support/ScratchFolder.h>
#include <support/windows/RealDesktop.h>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

using namespace std::chrono_literals;

QString busAddress()
{
    return realDesktop().environment().value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
}

/// Either backend, with a system that looks dark or light.
struct FakeSystem {
    FakePresentation presentation;
    void setDark(bool dark) { presentation.setSystemAppearance(dark ? Appearance::dark : Appearance::light); }
    void setStill(bool still) { presentation.setReducedMotion(still); }
};

struct PortalSystem {
    ScratchFolder folder;
    SettingsPortal portal{busAddress()};
    DesktopPresentation presentation{std::make_shared<LastingBus>(busAddress()), folder.path()};
    void setDark(bool dark) { portal.change(SettingsPortal::colorScheme, dark ? 1U : 2U); }
    void setStill(bool still) { portal.change(SettingsPortal::animations, !still); }
};

template <class System>
class PresentationContract : public testing::Test {
protected:
    System m_system;
};

using Systems = testing::Types<FakeSystem, PortalSystem>;
TYPED_TEST_SUITE(PresentationContract, Systems);

class PortalTest : public testing::Test {
protected:
    [[nodiscard]] std::unique_ptr<DesktopPresentation> make()
    {
        return std::make_unique<DesktopPresentation>(std::make_shared<LastingBus>(busAddress()),
                                                     m_folder.path());
    }
    ScratchFolder m_folder;
};

} // namespace

TYPED_TEST(PresentationContract, FollowsTheSystemUnlessTheProgramInsists)
{
    Presentation& presentation = this->m_system.presentation;
    int changes = 0;
    presentation.setChangeHandler([&] { ++changes; });
    this->m_system.setDark(true);
    EXPECT_TRUE(waitUntil([&] { return presentation.effectiveAppearance() == Appearance::dark; }));
    EXPECT_GT(changes, 0);
    this->m_system.setDark(false);
    EXPECT_TRUE(waitUntil([&] { return presentation.effectiveAppearance() == Appearance::light; }));
    changes = 0;
    presentation.setAppearance(Appearance::dark);
    EXPECT_EQ(presentation.effectiveAppearance(), Appearance::dark);
    EXPECT_EQ(changes, 1);
    presentation.setAppearance(Appearance::none);
    EXPECT_EQ(presentation.effectiveAppearance(), Appearance::light);
}

TYPED_TEST(PresentationContract, FollowsTheWishForNoAnimations)
{
    Presentation& presentation = this->m_system.presentation;
    EXPECT_FALSE(presentation.prefersReducedMotion());
    for (const bool still : {true, false, true}) {
        this->m_system.setStill(still);
        EXPECT_TRUE(waitUntil([&] { return presentation.prefersReducedMotion() == still; }));
    }
}

TYPED_TEST(PresentationContract, ThePolicyCanBeSetAtAnyTime)
{
    Presentation& presentation = this->m_system.presentation;
    for (const auto policy : {ActivationPolicy::regular, ActivationPolicy::accessory,
                              ActivationPolicy::accessory, ActivationPolicy::regular})
        presentation.setActivationPolicy(policy);
}

TEST_F(PortalTest, IsAskedAtTheStart)
{
    SettingsPortal portal(busAddress(),
                          {{SettingsPortal::colorScheme, 1U}, {SettingsPortal::animations, false}});
    const auto presentation = make();
    EXPECT_TRUE(waitUntil([&] { return presentation->effectiveAppearance() == Appearance::dark; }));
    EXPECT_TRUE(waitUntil([&] { return presentation->prefersReducedMotion(); }));
}

TEST_F(PortalTest, IsAskedWhenItComesLater)
{
    const auto presentation = make();
    EXPECT_EQ(presentation->effectiveAppearance(), Appearance::light);
    const SettingsPortal portal(busAddress(), {{SettingsPortal::colorScheme, 1U}});
    EXPECT_TRUE(waitUntil([&] { return presentation->effectiveAppearance() == Appearance::dark; }));
}

TEST_F(PortalTest, KnowsTheOtherDesktopsWayOfSayingNoAnimations)
{
    SettingsPortal portal(busAddress(), {{SettingsPortal::durations, QStringLiteral("0")}});
    const auto presentation = make();
    EXPECT_TRUE(waitUntil([&] { return presentation->prefersReducedMotion(); }));
    portal.change(SettingsPortal::durations, QStringLiteral("0.5"));
    EXPECT_TRUE(waitUntil([&] { return !presentation->prefersReducedMotion(); }));
    portal.change(SettingsPortal::durations, 0.0);
    EXPECT_TRUE(waitUntil([&] { return presentation->prefersReducedMotion(); }));
    portal.change(SettingsPortal::durations, QStringLiteral("nonsense"));
    portal.change(SettingsPortal::colorScheme, 1U);
    EXPECT_TRUE(waitUntil([&] { return presentation->effectiveAppearance() == Appearance::dark; }));
    EXPECT_TRUE(presentation->prefersReducedMotion());
}

TEST_F(PortalTest, WithoutAPreferenceTheToolkitsFilesDecide)
{
    QDir(m_folder.path()).mkdir(QStringLiteral("gtk-3.0"));
    m_folder.write(QStringLiteral("gtk-3.0/settings.ini"),
                   "[Settings]\ngtk-application-prefer-dark-theme=1\ngtk-enable-animations=0\n");
    SettingsPortal portal(busAddress(), {{SettingsPortal::colorScheme, 2U}});
    const auto presentation = make();
    EXPECT_EQ(presentation->effectiveAppearance(), Appearance::dark); // until the portal has answered
    EXPECT_TRUE(presentation->prefersReducedMotion());
    EXPECT_TRUE(waitUntil([&] { return presentation->effectiveAppearance() == Appearance::light; }));
    portal.change(SettingsPortal::colorScheme, 0U);
    EXPECT_TRUE(waitUntil([&] { return presentation->effectiveAppearance() == Appearance::dark; }));
}

TEST_F(PortalTest, TellsOnlyOfWhatMatters)
{
    SettingsPortal portal(busAddress(), {{SettingsPortal::colorScheme, 2U}});
    const auto presentation = make();
    int changes = 0;
    presentation->setChangeHandler([&] { ++changes; });
    ASSERT_TRUE(waitUntil([&] { return changes == 1; }));
    portal.change({QStringLiteral("org.gnome.desktop.interface"), QStringLiteral("font-name")},
                  QStringLiteral("Inter"));
    portal.change(SettingsPortal::colorScheme, 2U);
    portal.change(SettingsPortal::colorScheme, 1U);
    ASSERT_TRUE(waitUntil([&] { return presentation->effectiveAppearance() == Appearance::dark; }));
    EXPECT_EQ(changes, 2);
}

TEST_F(PortalTest, WithoutABusNothingIsKnownAndNothingWaits)
{
    const auto none = std::make_shared<LastingBus>(QStringLiteral("unix:path=/nowhere/bus"));
    const DesktopPresentation presentation(none, m_folder.path());
    EXPECT_EQ(presentation.effectiveAppearance(), Appearance::light);
    EXPECT_FALSE(presentation.prefersReducedMotion());
}

TEST_F(PortalTest, IsFollowedOnABusThatHasComeBack)
{
    ReturningBus bus;
    const DesktopPresentation presentation(std::make_shared<LastingBus>(bus.address()), m_folder.path());
    for (int round = 0; round < 2; ++round) {
        bus.kill();
        bus.start();
        SettingsPortal portal(bus.address(), {{SettingsPortal::colorScheme, 1U}});
        EXPECT_TRUE(waitUntil([&] { return presentation.effectiveAppearance() == Appearance::dark; }, 20s));
        portal.change(SettingsPortal::colorScheme, 2U);
        EXPECT_TRUE(waitUntil([&] { return presentation.effectiveAppearance() == Appearance::light; }));
    }
}

} // namespace tulvane::test
