#include <app/AppDelegate.h>
#include <platform/fake/FakePresentation.h>
#include <platform/fake/FakeUserDefaults.h>
#include <settings/AppSettings.h>
#include <support/Folders.h>
#include <support/ScratchFolder.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace tulvane::test {

namespace {

class AppDelegateTest : public testing::Test {
protected:
    AppDelegateTest() { store->insert(u"com.dunio.Arvenscribe"_qs, {{u"appearance"_qs, u"dark"_qs}}); }

    /// The settings are loaded as the program does it, before the delegate runs.
    AppSettings& settings()
    {
        if (!m_settings)
            m_settings.emplace(defaults);
        return *m_settings;
    }
    AppDelegate delegate()
    {
        return AppDelegate({.settings = settings(),
                            .defaults = defaults,
                            .presentation = presentation,
                            .dataFolder = data.path(),
                            .launchController = [this] { done.append(u"launch"_qs); },
                            .isSetUp = [this] { return isSetUp; },
                            .cancelRecording = [this] { done.append(u"cancel"_qs); },
                            .bringWindowsToFront =
                                [this] {
                                    done.append(u"front"_qs);
                                    return hasWindows;
                                },
                            .restoreMinimized =
                                [this] {
                                    if (hasMinimized)
                                        done.append(u"restore"_qs);
                                    return hasMinimized;
                                },
                            .openMainWindow = [this] { done.append(u"main"_qs); },
                            .openOnboarding = [this] { done.append(u"onboarding"_qs); }});
    }

    std::shared_ptr<FakeUserDefaults::Store> store = std::make_shared<FakeUserDefaults::Store>();
    FakeUserDefaults defaults{store};
    FakePresentation presentation;
    ScratchFolder data;
    QStringList done;
    bool isSetUp = true;
    bool hasWindows = false;
    bool hasMinimized = false;

private:
    std::optional<AppSettings> m_settings;
};

} // namespace

TEST_F(AppDelegateTest, WhatIsMigratedCountsFromTheNextStartOn)
{
    AppDelegate first = delegate();
    first.willFinishLaunching();
    EXPECT_EQ(defaults.value(u"appearance"_qs), u"dark"_qs);
    EXPECT_EQ(settings().appearance(), AppearanceMode::system);
    EXPECT_THAT(presentation.appearances(), ElementsAre(Appearance::none));
    EXPECT_THAT(done, IsEmpty());

    const AppSettings next(defaults);
    EXPECT_EQ(next.appearance(), AppearanceMode::dark);
}

TEST_F(AppDelegateTest, TheAppearanceFollowsTheSetting)
{
    AppDelegate app = delegate();
    app.willFinishLaunching();
    settings().appearance.set(AppearanceMode::dark);
    EXPECT_THAT(presentation.appearances(), ElementsAre(Appearance::none, Appearance::dark));
}

TEST_F(AppDelegateTest, APolicyThatHoldsAlreadyIsNotSet)
{
    settings().showInDock.set(true);
    AppDelegate app = delegate();
    app.willFinishLaunching();
    EXPECT_THAT(presentation.policies(), IsEmpty());
    EXPECT_THAT(done, IsEmpty());
}

TEST_F(AppDelegateTest, APolicyThatChangesIsSetAndTheWindowsStayInFront)
{
    settings().showInDock.set(false);
    AppDelegate app = delegate();
    app.willFinishLaunching();
    EXPECT_THAT(presentation.policies(), ElementsAre(ActivationPolicy::accessory));
    EXPECT_THAT(done, ElementsAre(u"front"_qs));
    app.applyActivationPolicy();
    EXPECT_EQ(presentation.policies().size(), 1);
    settings().showInDock.set(true);
    app.applyActivationPolicy();
    EXPECT_THAT(presentation.policies(), ElementsAre(ActivationPolicy::accessory, ActivationPolicy::regular));
    EXPECT_THAT(done, ElementsAre(u"front"_qs, u"front"_qs));
}

TEST_F(AppDelegateTest, LaunchesOnceEverythingStands)
{
    delegate().didFinishLaunching();
    EXPECT_THAT(done, ElementsAre(u"launch"_qs));
}

TEST_F(AppDelegateTest, GoesOnWithoutAWindow)
{
    EXPECT_FALSE(AppDelegate::shouldTerminateAfterLastWindowClosed());
}

TEST_F(AppDelegateTest, AnotherStartBringsBackTheWindowsThatAreThere)
{
    hasWindows = true;
    delegate().shouldHandleReopen();
    EXPECT_THAT(done, ElementsAre(u"front"_qs));
}

TEST_F(AppDelegateTest, AnotherStartWithoutAWindowOpensTheMainOne)
{
    delegate().shouldHandleReopen();
    EXPECT_THAT(done, ElementsAre(u"front"_qs, u"main"_qs));
}

TEST_F(AppDelegateTest, AnotherStartBringsBackWhatWasPutAwayAndOpensNothing)
{
    hasMinimized = true;
    delegate().shouldHandleReopen();
    EXPECT_THAT(done, ElementsAre(u"front"_qs, u"restore"_qs));
}

TEST_F(AppDelegateTest, AnotherStartOfAProgramThatIsNotSetUpLeadsThroughTheSetup)
{
    isSetUp = false;
    delegate().shouldHandleReopen();
    EXPECT_THAT(done, ElementsAre(u"front"_qs, u"onboarding"_qs));
}

TEST_F(AppDelegateTest, AbandonsARecordingAtTheEnd)
{
    delegate().willTerminate();
    EXPECT_THAT(done, ElementsAre(u"cancel"_qs));
}

} // namespace tulvane::test
