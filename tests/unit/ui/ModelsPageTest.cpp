#include <support/ui/UiWorld.h>
#include <support/ui/WindowProbe.h>
#include <ui/viewmodels/ModelGallery.h>
#include <ui/windows/SettingsWindowController.h>

#include <QAccessible>
#include <QFile>
#include <QQuickItem>
#include <QQuickView>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

const QString medium = QStringLiteral("nb-whisper-medium-q5_0");
const QString verbatim = QStringLiteral("nb-whisper-medium-verbatim-q5_0");

QString control(const QString& id, const char* name)
{
    return QStringLiteral("models.") + id + u'.' + QString::fromLatin1(name);
}

class ModelsPageTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        world.ui.showPage(SettingsTab::models);
        probe.emplace(*world.ui.settingsWindow().window());
    }
    [[nodiscard]] QString textOf(const QString& name) const
    {
        return probe->item(name).property("text").toString();
    }

    UiWorld world;
    std::optional<WindowProbe> probe;
};

TEST_F(ModelsPageTest, ListsTheGalleryInItsOrderWithoutTheSmallModel)
{
    QStringList names;
    for (const WhisperModel& model : WhisperModel::gallery()) {
        EXPECT_TRUE(probe->shows(model.displayName));
        EXPECT_TRUE(probe->shows(model.description()));
    }
    EXPECT_FALSE(probe->shows(QStringLiteral("NB-Whisper Small (q5_0)")));
    EXPECT_EQ(probe->texts().count(QStringLiteral("Recommended")), 1);
    EXPECT_EQ(probe->texts().count(QStringLiteral("Selected")), 1);
    EXPECT_TRUE(probe->shows(QStringLiteral("539 MB")));
    EXPECT_TRUE(probe->shows(QStringLiteral("1.53 GB")));
}

TEST_F(ModelsPageTest, NothingIsOfferedToBeFreedWhereNothingIsLeft)
{
    EXPECT_FALSE(probe->shows(QStringLiteral("Free space")));
}

TEST_F(ModelsPageTest, WhatAForeignDownloadLeftIsFreedAtOnce)
{
    world.transfers.left = {{QUrl(QStringLiteral("https://elsewhere.example/old")), 1'900'000'000}};
    world.ui.showPage(SettingsTab::home);
    world.ui.showPage(SettingsTab::models);
    UiWorld::settle();
    EXPECT_TRUE(probe->shows(QStringLiteral("Unfinished downloads hold 1.9 GB")));
    EXPECT_TRUE(probe->shows(
        QStringLiteral("No model needs it any more. What is left alone for 30 days is removed.")));
    QAccessibleInterface* const button =
        QAccessible::queryAccessibleInterface(&probe->item(QStringLiteral("models.free")));
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->role(), QAccessible::Button);
    EXPECT_EQ(button->text(QAccessible::Name), QStringLiteral("Free space"));
    EXPECT_EQ(button->text(QAccessible::Description), QStringLiteral("1.9 GB"));
    probe->click(QStringLiteral("models.free"));
    EXPECT_EQ(world.transfers.discarded.size(), 1);
    EXPECT_FALSE(probe->shows(QStringLiteral("Free space")));
}

TEST_F(ModelsPageTest, WhatADownloadCouldGoOnWithIsFreedOnlyAfterAQuestion)
{
    const QUrl url = WhisperModel::fallback().downloadURL(QUrl(QStringLiteral("http://hub.invalid/")));
    world.transfers.left = {{url, 120'000'000}};
    world.ui.showPage(SettingsTab::home);
    world.ui.showPage(SettingsTab::models);
    UiWorld::settle();
    EXPECT_TRUE(probe->shows(QStringLiteral("Unfinished downloads hold 120 MB")));
    probe->click(QStringLiteral("models.free"));
    EXPECT_TRUE(probe->shows(QStringLiteral("Free 120 MB")));
    probe->click(QStringLiteral("confirm.cancel"));
    EXPECT_TRUE(world.transfers.discarded.isEmpty());
    probe->click(QStringLiteral("models.free"));
    probe->click(QStringLiteral("confirm.action"));
    EXPECT_EQ(world.transfers.discarded, QList<QUrl>{url});
    EXPECT_FALSE(probe->shows(QStringLiteral("Free space")));
}

TEST_F(ModelsPageTest, SaysWhatToDoWhileNothingIsInstalled)
{
    EXPECT_EQ(textOf(QStringLiteral("models.status")),
              QStringLiteral("Nothing yet – download the selected model to start dictating."));
    world.installModel(verbatim);
    UiWorld::settle();
    EXPECT_EQ(textOf(QStringLiteral("models.status")), QStringLiteral("Not downloaded"));
}

TEST_F(ModelsPageTest, ADownloadShowsHowFarItIsAndCanBeCancelled)
{
    probe->click(control(medium, "start"));
    ASSERT_EQ(world.transfers.started.size(), 1);
    world.transfers.tellProgress(world.transfers.lastTask(), 53'900'000, 539'000'000);
    UiWorld::settle();
    EXPECT_FALSE(probe->has(control(medium, "progress"))) << "the strip says it, once";
    EXPECT_EQ(probe->texts().filter(QStringLiteral("53.9 MB")).size(), 1);
    EXPECT_EQ(textOf(QStringLiteral("models.status")), QStringLiteral("Downloading – 53.9 MB of 539 MB"));
    EXPECT_FALSE(probe->has(control(medium, "start")));
    probe->click(control(medium, "cancel"));
    EXPECT_EQ(world.transfers.cancelled.size(), 1);
    world.transfers.tellCompleted(world.transfers.lastTask(), TransferError(TransferError::Kind::cancelled));
    UiWorld::settle();
    EXPECT_TRUE(probe->has(control(medium, "start")));
}

TEST_F(ModelsPageTest, AModelThatIsNotTheSelectedOneShowsItsDownloadOnItsCard)
{
    probe->click(control(verbatim, "start"));
    world.transfers.tellProgress(world.transfers.lastTask(), 53'900'000, 539'000'000);
    UiWorld::settle();
    EXPECT_EQ(textOf(control(verbatim, "progress")), QStringLiteral("53.9 MB of 539 MB"));
    EXPECT_EQ(textOf(QStringLiteral("models.status")),
              QStringLiteral("Nothing yet – download the selected model to start dictating."));
}

TEST_F(ModelsPageTest, TheStripSaysHowFastTheSelectedModelComesAndWhenItIsThere)
{
    probe->click(control(medium, "start"));
    const auto figures = [this] {
        return probe->has(QStringLiteral("models.pace"))
                   ? probe->item(QStringLiteral("models.pace")).property("figures").toString()
                   : QString();
    };
    for (int second = 1; second <= 4; ++second) {
        EXPECT_EQ(figures().isEmpty(), second <= 2) << second;
        world.transfers.tellProgress(world.transfers.lastTask(), second * 10'780'000, 539'000'000);
        UiWorld::settle();
        world.clock.advance(std::chrono::seconds(1));
    }
    EXPECT_EQ(figures(), QStringLiteral("10.8 MB/s, 46 s left"));
    EXPECT_NEAR(probe->item(QStringLiteral("models.progress")).property("value").toReal(), 0.08, 0.001);
}

TEST_F(ModelsPageTest, NothingMovesWhenADigitChanges)
{
    probe->click(control(medium, "start"));
    const auto widthAt = [this](qint64 bytes) {
        world.transfers.tellProgress(world.transfers.lastTask(), bytes, 539'000'000);
        UiWorld::settle();
        return probe->item(QStringLiteral("models.status")).implicitWidth();
    };
    EXPECT_EQ(widthAt(11'100'000), widthAt(80'800'000));
}

TEST_F(ModelsPageTest, AssistiveProgramsHearHowFarADownloadIs)
{
    probe->click(control(medium, "start"));
    world.transfers.tellProgress(world.transfers.lastTask(), 43'120'000, 539'000'000);
    UiWorld::settle();
    QAccessibleInterface* const bar =
        QAccessible::queryAccessibleInterface(&probe->item(QStringLiteral("models.progress")));
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(bar->role(), QAccessible::ProgressBar);
    EXPECT_FALSE(bar->text(QAccessible::Name).isEmpty());
    EXPECT_EQ(bar->text(QAccessible::Value), QStringLiteral("8 %"));
    ASSERT_NE(bar->valueInterface(), nullptr);
    EXPECT_EQ(bar->valueInterface()->currentValue(), 8);
    EXPECT_EQ(bar->valueInterface()->minimumValue(), 0);
    EXPECT_EQ(bar->valueInterface()->maximumValue(), 100);
    EXPECT_FALSE(bar->rect().isEmpty());
    QAccessibleInterface* const parent = bar->parent();
    ASSERT_NE(parent, nullptr);
    ASSERT_GE(parent->indexOfChild(bar), 0) << "the tree is the same from above and from below";
    EXPECT_EQ(parent->child(parent->indexOfChild(bar)), bar);
}

TEST_F(ModelsPageTest, EachNameStateAndSizeIsSaidOnce)
{
    const QStringList texts = probe->texts();
    for (const WhisperModel& model : WhisperModel::gallery())
        EXPECT_EQ(texts.count(model.displayName), 1) << qPrintable(model.displayName);
    world.installModel(medium);
    UiWorld::settle();
    EXPECT_EQ(probe->texts().count(QStringLiteral("Loaded in memory")), 1);
}

TEST_F(ModelsPageTest, ACardSaysWhatItsModelTookAndGaveHere)
{
    const QString figures = control(medium, "figures");
    EXPECT_FALSE(probe->has(figures));
    world.engine.isPrompt = false;
    world.memory.setResident(100'000'000);
    world.installModel(medium);
    UiWorld::settle();
    // Asked which model is loaded; then the load, by whose end there is more memory in use.
    world.engine.step();
    UiWorld::settle();
    world.memory.setResident(1'000'000'000);
    while (world.engine.waiting() > 0) {
        world.engine.step();
        UiWorld::settle();
    }
    EXPECT_EQ(textOf(figures), QStringLiteral("900 MB in memory  ·  measured here on 11/20/26"));
    const QString file = world.models.fileURL(*WhisperModel::find(medium));
    world.figures.noteDictation(file, 12, std::chrono::seconds(5), world.clock.now());
    UiWorld::settle();
    EXPECT_EQ(
        textOf(figures),
        QStringLiteral("900 MB in memory  ·  2.4 s of speech in a second  ·  measured here on 11/20/26"));
}

TEST_F(ModelsPageTest, TheFocusGoesToTheButtonThatTakesThePlaceOfThePressedOne)
{
    probe->item(control(medium, "start")).forceActiveFocus(Qt::TabFocusReason);
    probe->press(Qt::Key_Space);
    UiWorld::settle();
    EXPECT_TRUE(probe->item(control(medium, "cancel")).hasActiveFocus());
    probe->press(Qt::Key_Space);
    world.transfers.tellCompleted(world.transfers.lastTask(), TransferError(TransferError::Kind::cancelled));
    UiWorld::settle();
    EXPECT_TRUE(probe->item(control(medium, "start")).hasActiveFocus());
}

TEST_F(ModelsPageTest, AFailureSaysWhatHappenedAndOffersToTryAgain)
{
    probe->click(control(medium, "start"));
    const TransferId task = world.transfers.lastTask();
    world.transfers.tellFinished(task, 404, "<html>");
    world.transfers.tellCompleted(task);
    UiWorld::settle();
    EXPECT_EQ(textOf(control(medium, "message")), QStringLiteral("The server responded with HTTP 404."));
    EXPECT_EQ(textOf(control(medium, "start")), QStringLiteral("Retry"));
    probe->click(control(medium, "start"));
    EXPECT_EQ(world.transfers.started.size(), 2);
    EXPECT_FALSE(probe->has(control(medium, "message")));
}

TEST_F(ModelsPageTest, AnotherInstalledModelCanBeSelected)
{
    world.installModel(medium);
    world.installModel(verbatim);
    UiWorld::settle();
    EXPECT_FALSE(probe->has(control(medium, "use")));
    probe->click(control(verbatim, "use"));
    EXPECT_EQ(world.settings.selectedModelID(), verbatim);
    EXPECT_TRUE(probe->has(control(medium, "use")));
    EXPECT_FALSE(probe->has(control(verbatim, "use")));
}

TEST_F(ModelsPageTest, FollowsTheSessionIntoTheMemory)
{
    world.engine.isPrompt = false;
    world.installModel(medium);
    world.session.preloadModel();
    UiWorld::settle();
    // The question which model is loaded is answered; the load itself is still under way.
    world.engine.step();
    UiWorld::settle();
    EXPECT_EQ(textOf(QStringLiteral("models.status")), QStringLiteral("Loading model…"));
    while (world.engine.waiting() > 0) {
        world.engine.step();
        UiWorld::settle();
    }
    EXPECT_EQ(textOf(QStringLiteral("models.status")), QStringLiteral("Loaded in memory"));
    EXPECT_EQ(textOf(QStringLiteral("models.place")), QStringLiteral("Runs on the processor"));
    world.computing.publish({.device = QStringLiteral("GeForce RTX 4070"), .reason = {}});
    UiWorld::settle();
    EXPECT_EQ(textOf(QStringLiteral("models.place")), QStringLiteral("Runs on GeForce RTX 4070"));
    world.computing.publish({.device = {}, .reason = QStringLiteral("it crashed"), .isGivenUp = true});
    UiWorld::settle();
    EXPECT_EQ(textOf(QStringLiteral("models.place")),
              QStringLiteral("Runs on the processor, because the graphics card failed"));
}

TEST_F(ModelsPageTest, AnInstalledModelThatIsNotLoadedIsReady)
{
    world.engine.loadError = EngineError::modelLoadFailed(QStringLiteral("/m.bin"));
    world.installModel(medium);
    world.session.preloadModel();
    UiWorld::settle();
    EXPECT_EQ(textOf(QStringLiteral("models.status")), QStringLiteral("Ready"));
}

TEST_F(ModelsPageTest, DeletingAsksFirst)
{
    world.installModel(medium);
    UiWorld::settle();
    probe->click(control(medium, "delete"));
    EXPECT_TRUE(probe->shows(QStringLiteral("Delete model file")));
    EXPECT_TRUE(probe->shows(
        QStringLiteral("The model file will be removed from disk. You can download it again later.")));
    probe->press(Qt::Key_Escape);
    EXPECT_EQ(world.models.state(medium), ModelState::ready());
    probe->click(control(medium, "delete"));
    probe->click(QStringLiteral("confirm.cancel"));
    EXPECT_EQ(world.models.state(medium), ModelState::ready());
    probe->click(control(medium, "delete"));
    probe->click(QStringLiteral("confirm.action"));
    EXPECT_EQ(world.models.state(medium), ModelState::notDownloaded());
    EXPECT_FALSE(QFile::exists(world.models.modelsDirectory() + u'/' + medium + u".bin"));
}

TEST_F(ModelsPageTest, ShowsTheFolder)
{
    probe->click(QStringLiteral("models.folder"));
    EXPECT_EQ(world.workspace.revealed, QStringList{world.models.modelsDirectory()});
}

TEST_F(ModelsPageTest, NothingIsCutOffInEitherLanguage)
{
    for (const AppLanguage language : allCases<AppLanguage>()) {
        UiWorld full(language);
        full.fill();
        EXPECT_EQ(flawsOf(full, SettingsTab::models), QStringList());
    }
}

} // namespace

} // namespace tulvane::test
