#include "PageFixture.h"

#include <gmock/gmock.h>

namespace tulvane::test {

namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;

class HistoryPageTest : public PageFixture {
protected:
    HistoryPageTest() { world.installModel(world.settings.selectedModelID()); }
};

TEST_F(HistoryPageTest, WithoutDictationsItSaysWhatWillComeHere)
{
    WindowProbe& probe = open(SettingsTab::history);
    for (const char* text :
         {"History",
          "Your most recent transcripts. Kept in memory only – they disappear when the "
          "app quits and are never written to disk.",
          "No dictations yet", "Press the hotkey, say something, and your transcripts show up here."})
        EXPECT_TRUE(probe.shows(QString::fromUtf8(text))) << text;
}

TEST_F(HistoryPageTest, ListsEveryEntryInMemoryNewestFirst)
{
    for (int i = 1; i <= 26; ++i)
        world.dictate(QStringLiteral("nummer %1").arg(i));
    WindowProbe& probe = open(SettingsTab::history);
    const QStringList texts = probe.texts();
    EXPECT_FALSE(texts.contains(QStringLiteral("Nummer 1")));
    EXPECT_TRUE(texts.contains(QStringLiteral("Nummer 2")));
    EXPECT_LT(texts.indexOf(QStringLiteral("Nummer 26")), texts.indexOf(QStringLiteral("Nummer 25")));
    EXPECT_TRUE(probe.has(QStringLiteral("history.copy.24")));
    EXPECT_FALSE(probe.has(QStringLiteral("history.copy.25")));
}

TEST_F(HistoryPageTest, ARowShowsItsDetails)
{
    world.dictate(QStringLiteral("hei på deg"), 4.3);
    WindowProbe& probe = open(SettingsTab::history);
    EXPECT_TRUE(probe.shows(QStringLiteral("12:00 PM  ·  4.3 s  ·  3 words")));
}

TEST_F(HistoryPageTest, CopyingTwiceWithinItsTimeKeepsCopiedShown)
{
    world.dictate(QStringLiteral("hei"));
    WindowProbe& probe = open(SettingsTab::history);
    QQuickItem& copy = probe.item(QStringLiteral("history.copy.0"));
    const qreal width = copy.width();
    EXPECT_EQ(nameOf(copy), u"Copy");
    probe.click(copy);
    EXPECT_TRUE(probe.shows(QStringLiteral("Copied")));
    EXPECT_EQ(nameOf(copy), u"Copied");
    EXPECT_EQ(copy.width(), width) << "nothing moves";
    world.scheduler.advance(1200ms);
    probe.click(copy);
    world.scheduler.advance(1200ms);
    UiWorld::settle();
    EXPECT_TRUE(probe.shows(QStringLiteral("Copied")));
    EXPECT_EQ(world.boards.generalBoard.text(), u"Hei ");
    world.scheduler.advance(300ms);
    UiWorld::settle();
    EXPECT_FALSE(probe.shows(QStringLiteral("Copied")));
    EXPECT_TRUE(probe.shows(QStringLiteral("Copy")));
}

TEST_F(HistoryPageTest, TheFocusStaysOnItsRowWhenANewOneComes)
{
    world.dictate(QStringLiteral("først"));
    WindowProbe& probe = open(SettingsTab::history);
    probe.item(QStringLiteral("history.copy.0")).forceActiveFocus(Qt::TabFocusReason);
    world.dictate(QStringLiteral("så"));
    EXPECT_EQ(focused(), u"history.copy.1");
    probe.press(Qt::Key_Space);
    EXPECT_EQ(world.boards.generalBoard.text(), u"Først ");
}

TEST_F(HistoryPageTest, AVeryLongTextIsCutUntilItIsAskedFor)
{
    world.dictate(QStringLiteral("mange ord etter hverandre ").repeated(120), 60);
    WindowProbe& probe = open(SettingsTab::history);
    QQuickItem& more = probe.item(QStringLiteral("history.more.0"));
    EXPECT_EQ(nameOf(more), u"Show all");
    const qreal y = more.y();
    more.forceActiveFocus(Qt::TabFocusReason);
    probe.press(Qt::Key_Return);
    EXPECT_EQ(nameOf(more), u"Show less");
    EXPECT_GT(more.y(), y + 100);
    probe.press(Qt::Key_Return);
    EXPECT_EQ(more.y(), y);
    // A copy is of the whole text.
    probe.click(QStringLiteral("history.copy.0"));
    EXPECT_EQ(world.boards.generalBoard.text().count(QStringLiteral("hverandre")), 120);
}

TEST_F(HistoryPageTest, EachDayHasItsHeading)
{
    world.dictate(QStringLiteral("eldst"));
    world.clock.advance(24h);
    world.dictate(QStringLiteral("i går"));
    world.clock.advance(24h);
    world.dictate(QStringLiteral("først i dag"));
    world.dictate(QStringLiteral("sist i dag"));
    WindowProbe& probe = open(SettingsTab::history);
    QStringList texts = probe.texts();
    EXPECT_EQ(texts.count(QStringLiteral("Today")), 1);
    EXPECT_EQ(texts.count(QStringLiteral("Yesterday")), 1);
    EXPECT_EQ(texts.count(QStringLiteral("Friday, November 20, 2026")), 1);
    EXPECT_LT(texts.indexOf(QStringLiteral("Today")), texts.indexOf(QStringLiteral("Sist i dag")));
    EXPECT_LT(texts.indexOf(QStringLiteral("Først i dag")), texts.indexOf(QStringLiteral("Yesterday")));
    // Of what is found, too.
    probe.item(QStringLiteral("history.search")).forceActiveFocus();
    probe.type(QStringLiteral("først"));
    EXPECT_EQ(probe.texts().count(QStringLiteral("Today")), 1);
    EXPECT_FALSE(probe.shows(QStringLiteral("Yesterday")));
}

TEST_F(HistoryPageTest, ATextIsSelectedByTheMouseAndCopied)
{
    world.dictate(QStringLiteral("hei på deg"));
    WindowProbe& probe = open(SettingsTab::history);
    window().requestActivate();
    QQuickItem& text = probe.item(QStringLiteral("history.text.0"));
    probe.click(text);
    EXPECT_TRUE(text.property("readOnly").toBool());
    EXPECT_TRUE(QMetaObject::invokeMethod(&text, "select", Q_ARG(int, 0), Q_ARG(int, 3)));
    EXPECT_EQ(text.property("selectedText").toString(), QStringLiteral("Hei"));
    probe.type(QStringLiteral("x"));
    EXPECT_EQ(text.property("text").toString(), QStringLiteral("Hei på deg")) << "reading changes nothing";
}

TEST_F(HistoryPageTest, ATextIsCorrectedForCopyingAndTheDictationStaysAsItWas)
{
    world.dictate(QStringLiteral("hei på deg"));
    WindowProbe& probe = open(SettingsTab::history);
    window().requestActivate();
    probe.click(QStringLiteral("history.edit.0"));
    EXPECT_EQ(focused(), u"history.text.0");
    probe.type(QStringLiteral("!"));
    probe.click(QStringLiteral("history.copy.0"));
    EXPECT_EQ(world.boards.generalBoard.text(), u"Hei på deg!");
    probe.click(QStringLiteral("history.edit.0"));
    EXPECT_TRUE(probe.shows(QStringLiteral("Hei på deg!")));
    EXPECT_EQ(world.session.history().first().text, u"Hei på deg ");
    // Home shows and copies it as it was said.
    probe.click(QStringLiteral("sidebar.home"));
    EXPECT_TRUE(probe.shows(QStringLiteral("Hei på deg")));
}

TEST_F(HistoryPageTest, EscapeGivesACorrectionUp)
{
    world.dictate(QStringLiteral("hei"));
    WindowProbe& probe = open(SettingsTab::history);
    window().requestActivate();
    probe.click(QStringLiteral("history.edit.0"));
    probe.type(QStringLiteral("!!"));
    probe.press(Qt::Key_Escape);
    EXPECT_TRUE(probe.shows(QStringLiteral("Hei")));
    EXPECT_EQ(focused(), u"history.edit.0");
    probe.click(QStringLiteral("history.copy.0"));
    EXPECT_EQ(world.boards.generalBoard.text(), u"Hei ");
}

TEST_F(HistoryPageTest, ATextIsInsertedAgainOnceOurWindowIsOutOfTheWay)
{
    world.dictate(QStringLiteral("hei"));
    world.boards.generalBoard.otherProgramWrites(QStringLiteral("other"));
    WindowProbe& probe = open(SettingsTab::history);
    window().requestActivate();
    const auto before = world.keys.posted().size();
    probe.click(QStringLiteral("history.insert.0"));
    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(world.keys.posted().size(), before) << "not before another window has the keyboard";
    for (int i = 0; i < 12; ++i) {
        world.scheduler.advance(500ms);
        UiWorld::settle();
    }
    EXPECT_GT(world.keys.posted().size(), before);
    EXPECT_EQ(world.boards.generalBoard.text(), u"other") << "the user's clipboard is back";
    EXPECT_EQ(world.session.history().size(), 1);
}

TEST_F(HistoryPageTest, ATextIsShownAsItIsWhateverItsSignsMean)
{
    world.dictate(QStringLiteral("<b>fet</b> & **sterk** %1"));
    WindowProbe& probe = open(SettingsTab::history);
    EXPECT_TRUE(probe.shows(QStringLiteral("<b>fet</b> & **sterk** %1")));
}

TEST_F(HistoryPageTest, NothingIsCutOffOrOverlaps)
{
    EXPECT_THAT(flawsIn(SettingsTab::history, [](UiWorld&) {}), IsEmpty());
    EXPECT_THAT(flawsIn(SettingsTab::history, [](UiWorld& one) { one.fill(); }), IsEmpty());
}

} // namespace

} // namespace tulvane::test
