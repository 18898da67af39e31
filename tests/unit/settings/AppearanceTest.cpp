#include <platform/fake/FakePresentation.h>
#include <platform/fake/FakeUserDefaults.h>
#include <settings/AppSettings.h>

#include <gtest/gtest.h>

namespace tulvane {
namespace {

TEST(Appearance, EachModeSetsItsAppearance)
{
    FakePresentation presentation;
    applyAppearance(presentation, AppearanceMode::system);
    applyAppearance(presentation, AppearanceMode::light);
    applyAppearance(presentation, AppearanceMode::dark);
    EXPECT_EQ(presentation.appearances(),
              (QList<Appearance>{Appearance::none, Appearance::light, Appearance::dark}));
}

TEST(Appearance, TheObserverAppliesTheCurrentOneAtOnce)
{
    FakeUserDefaults defaults;
    ASSERT_TRUE(defaults.set(u"appearance"_qs, u"dark"_qs));
    AppSettings settings(defaults);
    FakePresentation presentation;
    settings.installAppearanceObserver(presentation);
    EXPECT_EQ(presentation.appearances(), QList<Appearance>{Appearance::dark});
}

TEST(Appearance, TheObserverAppliesEachChangeOnce)
{
    FakeUserDefaults defaults;
    AppSettings settings(defaults);
    FakePresentation presentation;
    settings.installAppearanceObserver(presentation);
    settings.appearance.set(AppearanceMode::system);
    settings.appearance.set(AppearanceMode::dark);
    settings.appearance.set(AppearanceMode::dark);
    settings.appearance.set(AppearanceMode::light);
    settings.appearance.set(AppearanceMode::dark);
    EXPECT_EQ(presentation.appearances(),
              (QList<Appearance>{Appearance::none, Appearance::dark, Appearance::light, Appearance::dark}));
}

TEST(Appearance, NothingIsAppliedWithoutTheObserver)
{
    FakeUserDefaults defaults;
    AppSettings settings(defaults);
    const FakePresentation presentation;
    settings.appearance.set(AppearanceMode::dark);
    EXPECT_TRUE(presentation.appearances().isEmpty());
}

} // namespace
} // namespace tulvane
