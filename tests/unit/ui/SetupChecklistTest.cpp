#include <support/ui/UiWorld.h>
#include <support/ui/WindowProbe.h>
#include <ui/viewmodels/SetupViewModel.h>
#include <ui/viewmodels/ViewModels.h>
#include <ui/windows/OnboardingWindowController.h>
#include <ui/windows/SettingsWindowController.h>

#include <QAccessible>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>

#include <gmock/gmock.h>

namespace tulvane::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The checklist on a window of its own, as wide as on the narrowest main window.
class SetupChecklistTest : public testing::Test {
protected:
    explicit SetupChecklistTest(AppLanguage language = AppLanguage::english) : world(language)
    {
        world.privacy.microphoneAccess = MicrophoneAccess::notDetermined;
        world.privacy.accessibilityGranted = false;
        world.permissions.refresh();
    }

    /// Builds the window; once.
    WindowProbe& probe()
    {
        if (!m_probe) {
            world.ui.showPage(SettingsTab::about); // registers the types
            m_engine.addImportPath(QStringLiteral(":/"));
            QQmlComponent component(&m_engine);
            component.setData(
                "import QtQuick\nimport Tulvane\n"
                "Rectangle { id: root; required property ViewModels models; color: Theme.window\n"
                "SetupChecklist { width: root.width; setup: root.models.setup } }",
                QUrl(QStringLiteral("qrc:/Checklist.qml")));
            m_window.resize(620, 560);
            QObject* const root = component.createWithInitialProperties(
                {{QStringLiteral("models"), QVariant::fromValue(&world.ui.models())},
                 {QStringLiteral("width"), 620},
                 {QStringLiteral("height"), 560}});
            m_root.reset(qobject_cast<QQuickItem*>(root));
            if (!m_root)
                throw std::runtime_error(component.errorString().toStdString());
            m_root->setParentItem(m_window.contentItem());
            m_window.show();
            m_window.requestActivate();
            m_probe.emplace(m_window);
        }
        return *m_probe;
    }
    [[nodiscard]] QString mark(const QString& id)
    {
        return probe().item(QStringLiteral("setup.%1.mark").arg(id)).property("name").toString();
    }
    [[nodiscard]] QQuickWindow& window() { return m_window; }

    UiWorld world;

private:
    QQmlEngine m_engine;
    QQuickWindow m_window;
    std::unique_ptr<QQuickItem> m_root;
    std::optional<WindowProbe> m_probe;
};

TEST_F(SetupChecklistTest, ShowsEveryItemWithItsMark)
{
    EXPECT_TRUE(probe().shows(QStringLiteral("Get the most out of Tulvane")));
    EXPECT_TRUE(probe().shows(QStringLiteral("1/7 steps completed")));
    for (const SetupItem& item : world.ui.models().setup()->items()) {
        EXPECT_TRUE(probe().shows(item.title)) << qPrintable(item.title);
        EXPECT_EQ(mark(item.id),
                  item.id == u"hotkey" ? QStringLiteral("checkmark.circle.fill") : QStringLiteral("circle"));
    }
}

TEST_F(SetupChecklistTest, TheMarksAreLiveAndTheRowsKeepTheFocus)
{
    probe().click(QStringLiteral("setup.vocab"));
    window().requestActivate();
    UiWorld::settle();
    QQuickItem& row = probe().item(QStringLiteral("setup.mic"));
    row.forceActiveFocus(Qt::TabFocusReason);
    world.privacy.microphoneAccess = MicrophoneAccess::authorized;
    world.permissions.refresh();
    UiWorld::settle();
    EXPECT_EQ(mark(QStringLiteral("mic")), QStringLiteral("checkmark.circle.fill"));
    EXPECT_TRUE(probe().shows(QStringLiteral("2/7 steps completed")));
    EXPECT_EQ(&probe().item(QStringLiteral("setup.mic")), &row);
    EXPECT_TRUE(row.hasActiveFocus());
}

TEST_F(SetupChecklistTest, ARowLeadsToItsAction)
{
    probe().click(QStringLiteral("setup.model"));
    EXPECT_EQ(world.ui.settingsWindow().selection().tab(), SettingsTab::models);
    EXPECT_EQ(world.ui.onboardingWindow().window(), nullptr);
    probe().click(QStringLiteral("setup.mic"));
    ASSERT_NE(world.ui.onboardingWindow().window(), nullptr);
    EXPECT_TRUE(world.ui.onboardingWindow().window()->isVisible());
}

TEST_F(SetupChecklistTest, ReturnOnARowDoesWhatAClickDoes)
{
    probe().item(QStringLiteral("setup.model")).forceActiveFocus(Qt::TabFocusReason);
    probe().press(Qt::Key_Return);
    EXPECT_EQ(world.ui.settingsWindow().selection().tab(), SettingsTab::models);
}

TEST_F(SetupChecklistTest, EnterOnARowDoesWhatAClickDoes)
{
    probe().item(QStringLiteral("setup.model")).forceActiveFocus(Qt::TabFocusReason);
    probe().press(Qt::Key_Enter);
    EXPECT_EQ(world.ui.settingsWindow().selection().tab(), SettingsTab::models);
}

TEST_F(SetupChecklistTest, GoesWhenItIsHidden)
{
    probe().click(QStringLiteral("setup.hide"));
    EXPECT_TRUE(world.settings.hideSetupChecklist());
    EXPECT_FALSE(probe().has(QStringLiteral("setup.mic")));
}

TEST_F(SetupChecklistTest, IsWalkedThroughByTabAndReadAloudWithItsMarks)
{
    EXPECT_THAT(probe().tabOrder(),
                ElementsAre(QStringLiteral("Hide checklist"), QStringLiteral("Allow microphone access"),
                            QStringLiteral("Grant Accessibility so text can be typed for you"),
                            QStringLiteral("Download a speech model"), QStringLiteral("Choose a hotkey"),
                            QStringLiteral("Dictate your first sentence"),
                            QStringLiteral("Add names and jargon to your vocabulary"),
                            QStringLiteral("Try hold-to-talk with a single key")));
    const auto spoken = [this](const char* id) {
        QQuickItem& row = probe().item(QStringLiteral("setup.%1").arg(QString::fromUtf8(id)));
        return QAccessible::queryAccessibleInterface(&row)->text(QAccessible::Description);
    };
    EXPECT_EQ(spoken("hotkey"), QStringLiteral("Done"));
    EXPECT_EQ(spoken("mic"), QStringLiteral("To do"));
    EXPECT_EQ(spoken("vocab"), QStringLiteral("Optional"));
}

TEST_F(SetupChecklistTest, TheWayBackLeadsToTheFirstItemThatIsLeft)
{
    world.privacy.microphoneAccess = MicrophoneAccess::authorized;
    world.permissions.refresh();
    probe();
    world.ui.models().setup()->finishSetup();
    EXPECT_EQ(world.ui.settingsWindow().selection().tab(), SettingsTab::home);
    EXPECT_EQ(world.ui.onboardingWindow().window(), nullptr);
    window().requestActivate();
    UiWorld::settle();
    EXPECT_TRUE(probe().item(QStringLiteral("setup.ax")).hasActiveFocus());
}

class SetupChecklistLayoutTest : public SetupChecklistTest, public testing::WithParamInterface<AppLanguage> {
protected:
    SetupChecklistLayoutTest() : SetupChecklistTest(GetParam()) {}
};

TEST_P(SetupChecklistLayoutTest, NothingIsCutOff)
{
    EXPECT_THAT(probe().layoutFlaws(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Languages, SetupChecklistLayoutTest,
                         testing::Values(AppLanguage::english, AppLanguage::norwegian));

TEST(SidebarTest, ThePromptBringsTheFirstItemThatIsLeftIntoView)
{
    UiWorld world;
    world.ui.showPage(SettingsTab::about);
    QQuickView& window = *world.ui.settingsWindow().window();
    window.resize(SettingsWindowController::smallest);
    WindowProbe probe(window);
    probe.click(QStringLiteral("sidebar.finishSetup"));
    QQuickItem& row = probe.item(QStringLiteral("setup.model"));
    EXPECT_TRUE(row.hasActiveFocus());
    const QRectF place = row.mapRectToScene(QRectF(0, 0, row.width(), row.height()));
    EXPECT_GE(place.top(), 0);
    EXPECT_LE(place.bottom(), window.height());
}

TEST(SidebarTest, ReturnOnThePromptDoesWhatAClickDoes)
{
    UiWorld world;
    world.ui.showPage(SettingsTab::about);
    WindowProbe probe(*world.ui.settingsWindow().window());
    probe.item(QStringLiteral("sidebar.finishSetup")).forceActiveFocus(Qt::TabFocusReason);
    probe.press(Qt::Key_Return);
    EXPECT_EQ(world.ui.settingsWindow().selection().tab(), SettingsTab::home);
}

TEST(SidebarTest, MarksHomeWithWhatIsMissingAndPromptsToFinish)
{
    UiWorld world;
    world.privacy.accessibilityGranted = false;
    world.permissions.refresh();
    world.ui.showPage(SettingsTab::about);
    WindowProbe probe(*world.ui.settingsWindow().window());
    EXPECT_EQ(probe.item(QStringLiteral("sidebar.home")).property("count").toInt(), 2);
    EXPECT_EQ(probe.item(QStringLiteral("sidebar.models")).property("count").toInt(), 0);
    EXPECT_TRUE(probe.shows(QStringLiteral("Finish setup")));
    EXPECT_TRUE(probe.shows(QStringLiteral("2 steps left.")));
    probe.click(QStringLiteral("sidebar.finishSetup"));
    EXPECT_EQ(world.ui.settingsWindow().selection().tab(), SettingsTab::home);

    world.settings.hideSetupChecklist.set(true);
    world.ui.showPage(SettingsTab::about);
    probe.click(QStringLiteral("sidebar.finishSetup"));
    ASSERT_NE(world.ui.onboardingWindow().window(), nullptr);
    EXPECT_TRUE(world.ui.onboardingWindow().window()->isVisible());

    world.installModel(world.settings.selectedModelID());
    world.privacy.accessibilityGranted = true;
    world.permissions.refresh();
    UiWorld::settle();
    EXPECT_FALSE(probe.has(QStringLiteral("sidebar.finishSetup")));
    EXPECT_EQ(probe.item(QStringLiteral("sidebar.home")).property("count").toInt(), 0);
}

TEST(SidebarTest, NothingIsCutOffInTheNarrowestWindow)
{
    for (const AppLanguage language : {AppLanguage::english, AppLanguage::norwegian}) {
        UiWorld world(language);
        world.ui.showPage(SettingsTab::about);
        world.ui.settingsWindow().window()->resize(900, 600);
        WindowProbe probe(*world.ui.settingsWindow().window());
        ASSERT_TRUE(probe.has(QStringLiteral("sidebar.finishSetup")));
        EXPECT_THAT(probe.layoutFlaws(), IsEmpty());
    }
}

} // namespace

} // namespace tulvane::test
