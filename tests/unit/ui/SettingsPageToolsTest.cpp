#include "PageFixture.h"

#include <ui/viewmodels/ViewModels.h>

namespace tulvane::test {

namespace {

/// What the page of many settings does for whom looks for one of them.
class SettingsPageToolsTest : public PageFixture {};

TEST_F(SettingsPageToolsTest, TheSectionsStandAtTheSideAndFollowTheScroll)
{
    WindowProbe& probe = open(SettingsTab::settings);
    EXPECT_TRUE(probe.item(QStringLiteral("section.0")).property("selected").toBool());
    probe.click(QStringLiteral("section.4"));
    EXPECT_TRUE(probe.item(QStringLiteral("section.4")).property("selected").toBool());
    const QQuickItem& vocabulary = probe.item(QStringLiteral("settings.vocabularyPrompt"));
    EXPECT_GT(vocabulary.mapToScene(QPointF(0, 0)).y(), 0);
    EXPECT_LT(vocabulary.mapToScene(QPointF(0, 0)).y(), 200);
    EXPECT_TRUE(probe.scrollTo(100000));
    EXPECT_TRUE(probe.item(QStringLiteral("section.6")).property("selected").toBool());
    probe.item(QStringLiteral("section.6")).forceActiveFocus(Qt::TabFocusReason);
    for (int i = 0; i < 6; ++i)
        probe.press(Qt::Key_Up);
    EXPECT_TRUE(probe.item(QStringLiteral("section.0")).property("selected").toBool());
    EXPECT_EQ(focused(), u"section.0");
    window().resize(900, 600);
    UiWorld::settle();
    EXPECT_FALSE(probe.has(QStringLiteral("section.0"))) << "the rows need the room";
}

TEST_F(SettingsPageToolsTest, ANumberOfSecondsIsSaidInMinutesToo)
{
    WindowProbe& probe = open(SettingsTab::settings);
    EXPECT_TRUE(probe.shows(QStringLiteral("300 s")));
    EXPECT_TRUE(probe.shows(QStringLiteral("5 min")));
    world.settings.maxRecordingSeconds.set(90);
    UiWorld::settle();
    EXPECT_TRUE(probe.shows(QStringLiteral("1 min 30 s")));
    world.settings.maxRecordingSeconds.set(50);
    UiWorld::settle();
    EXPECT_FALSE(probe.shows(QStringLiteral("0 min 50 s")));
}

TEST_F(SettingsPageToolsTest, PageKeysStepBySixty)
{
    WindowProbe& probe = open(SettingsTab::settings);
    probe.item(QStringLiteral("settings.maxRecordingSeconds")).forceActiveFocus(Qt::TabFocusReason);
    probe.press(Qt::Key_PageUp);
    EXPECT_EQ(world.settings.maxRecordingSeconds(), 360);
    for (int i = 0; i < 9; ++i)
        probe.press(Qt::Key_PageDown);
    EXPECT_EQ(world.settings.maxRecordingSeconds(), 10);
}

TEST_F(SettingsPageToolsTest, ASwitchsWholeRowTurnsIt)
{
    WindowProbe& probe = open(SettingsTab::settings);
    QQuickItem& toggle = probe.item(QStringLiteral("settings.playSounds"));
    probe.click(toggle);
    EXPECT_FALSE(world.settings.playSounds());
    // At the far end of its words.
    probe.clickAt(toggle.mapToScene(QPointF(-350, 4)).toPoint());
    EXPECT_TRUE(world.settings.playSounds());
    EXPECT_TRUE(toggle.hasActiveFocus());
}

TEST_F(SettingsPageToolsTest, StartAtLoginIsReadAgainWhileTheWindowStaysInFront)
{
    WindowProbe& probe = open(SettingsTab::settings);
    EXPECT_FALSE(probe.item(QStringLiteral("settings.launchAtLogin")).property("checked").toBool());
    ASSERT_TRUE(world.loginItem.setEnabled(true));
    world.ui.models().preferences()->refresh();
    UiWorld::settle();
    EXPECT_TRUE(probe.item(QStringLiteral("settings.launchAtLogin")).property("checked").toBool());
}

TEST_F(SettingsPageToolsTest, ALinkLeadsToItsControlWhichIsLitForAMoment)
{
    world.shortcuts.setShortcut(std::nullopt, ShortcutName::dictate());
    WindowProbe& probe = open(SettingsTab::home);
    probe.click(QStringLiteral("home.chooseHotkey"));
    EXPECT_EQ(shownPage(), SettingsTab::settings);
    EXPECT_EQ(focused(), u"hotkey.combination");
    EXPECT_TRUE(probe.has(QStringLiteral("beacon")));
    const std::pair<const char*, QString> links[]{{"vocab", QStringLiteral("editor")},
                                                  {"hold", QStringLiteral("hotkey.singleKey")},
                                                  {"hotkey", QStringLiteral("hotkey.combination")}};
    for (const auto& [item, control] : links) {
        world.ui.models().setup()->act(QString::fromLatin1(item));
        UiWorld::settle();
        EXPECT_EQ(focused(), control);
        const QQuickItem* const shown = window().activeFocusItem();
        const qreal top = shown->mapToScene(QPointF(0, 0)).y();
        EXPECT_GE(top, 0) << item;
        EXPECT_LE(top + shown->height(), window().height()) << item;
    }
    world.ui.models().setup()->act(QStringLiteral("model"));
    UiWorld::settle();
    EXPECT_EQ(shownPage(), SettingsTab::models);
    EXPECT_EQ(focused(), u"models.nb-whisper-medium-q5_0.start");
}

} // namespace

} // namespace tulvane::test
