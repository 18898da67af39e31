#include "PageFixture.h"

#include <settings/InterfaceLanguage.h>

#include <gmock/gmock.h>

namespace tulvane::test {

namespace {

using testing::Contains;
using testing::IsEmpty;

class StatisticsPageTest : public PageFixture {
protected:
    void record(int daysBack, int words, double seconds)
    {
        world.stats.record(QStringLiteral("ord ").repeated(words), world.clock.now().addDays(-daysBack),
                           seconds);
    }
    static QString bar(int index) { return QStringLiteral("statistics.bar.%1").arg(index); }
};

TEST_F(StatisticsPageTest, WithoutAnyEntryItIsEmpty)
{
    WindowProbe& probe = open(SettingsTab::statistics);
    for (const char* text :
         {"Statistics", "How much you dictate, how fast you speak, and the time it saves you versus typing.",
          "No dictations yet", "Press the hotkey, say something, and your first numbers show up here."})
        EXPECT_TRUE(probe.shows(QString::fromUtf8(text))) << text;
    EXPECT_FALSE(probe.has(QStringLiteral("statistics.period")));
    EXPECT_FALSE(probe.has(QStringLiteral("statistics.reset")));
    EXPECT_FALSE(probe.has(bar(0)));
    // The first dictation fills it.
    record(0, 50, 30);
    UiWorld::settle();
    EXPECT_TRUE(probe.has(bar(13)));
    EXPECT_FALSE(probe.shows(QStringLiteral("No dictations yet")));
}

TEST_F(StatisticsPageTest, WhatAnotherProcessCountedIsThereWhenTheUserComesBack)
{
    WindowProbe& probe = open(SettingsTab::statistics);
    StatsStore elsewhere(world.stats.fileURL(), world.stats.calendar());
    elsewhere.record(QStringLiteral("ord ").repeated(50), world.clock.now(), 30);
    UiWorld::settle();
    EXPECT_FALSE(probe.has(bar(13)));
    // Another program had the focus meanwhile.
    QWindow other;
    other.show();
    other.requestActivate();
    UiWorld::settle();
    window().requestActivate();
    UiWorld::settle();
    EXPECT_TRUE(probe.has(bar(13)));
}

TEST_F(StatisticsPageTest, ShowsItsFiguresAndItsTexts)
{
    record(1, 50, 30);
    WindowProbe& probe = open(SettingsTab::statistics);
    for (const char* text :
         {"Period",
          "7 days",
          "Words dictated",
          "50",
          "Time saved",
          "45 s",
          "vs. typing at 40 words/\u2060min",
          "Speaking time",
          "30 s",
          "100 words/\u2060min",
          "Streak",
          "1 of 7 days active",
          "Words per day",
          "Last 14 days",
          "Details",
          "Average per dictation",
          "50 words",
          "Characters",
          "199",
          "Typing the same text would take",
          "1 min",
          "Best day",
          "11/19/26 · 50 words",
          "Only counts are saved on this computer – never the text you dictate.",
          "How “time saved” is estimated",
          "My typing speed: **40** words/min",
          "Most people type around 40 words per minute and speak around 150–160, so dictating is roughly 4× "
          "faster. The estimate is the time typing the same words would take at your typing speed, minus the "
          "time you actually spent speaking.",
          "Reset statistics…",
          "Today",
          "Choose a bar to see its day."})
        EXPECT_TRUE(probe.shows(QString::fromUtf8(text))) << text;
}

TEST_F(StatisticsPageTest, ThePickerChangesThePeriodAndIsForgottenWithThePage)
{
    record(0, 10, 5);
    record(20, 90, 45);
    WindowProbe& probe = open(SettingsTab::statistics);
    probe.item(QStringLiteral("statistics.period")).forceActiveFocus(Qt::TabFocusReason);
    probe.press(Qt::Key_Down);
    EXPECT_TRUE(probe.shows(QStringLiteral("30 days")));
    EXPECT_TRUE(probe.shows(QStringLiteral("100")));
    EXPECT_TRUE(probe.shows(QStringLiteral("2 of 30 days active")));
    EXPECT_TRUE(probe.shows(QStringLiteral("Last 30 days")));
    EXPECT_TRUE(probe.has(bar(29)));
    probe.press(Qt::Key_Down);
    EXPECT_TRUE(probe.shows(QStringLiteral("2 active days in total")));
    probe.click(QStringLiteral("sidebar.home"));
    probe.click(QStringLiteral("sidebar.statistics"));
    EXPECT_TRUE(probe.shows(QStringLiteral("Last 14 days")));
    EXPECT_FALSE(probe.has(bar(29)));
}

TEST_F(StatisticsPageTest, AClickSelectsABarAlsoWhereItsDayIsEmpty)
{
    record(1, 50, 30);
    WindowProbe& probe = open(SettingsTab::statistics);
    probe.click(bar(12));
    EXPECT_TRUE(probe.shows(QStringLiteral("Thursday, November 19, 2026")));
    EXPECT_TRUE(probe.shows(QStringLiteral("30 s speaking · saved 45 s")));
    EXPECT_TRUE(probe.shows(QStringLiteral("Selected")));
    EXPECT_FALSE(probe.shows(QStringLiteral("Choose a bar to see its day.")));
    EXPECT_EQ(nameOf(probe.item(bar(12))), u"Thursday, November 19, 2026, Words 50, Selected");
    EXPECT_EQ(nameOf(probe.item(bar(11))), u"Wednesday, November 18, 2026, Words 0");
    probe.click(bar(11));
    EXPECT_TRUE(probe.shows(QStringLiteral("0 s speaking · saved 0 s")));
    probe.click(bar(11));
    EXPECT_FALSE(probe.shows(QStringLiteral("Selected")));
}

TEST_F(StatisticsPageTest, TheKeyboardWalksTheBars)
{
    record(1, 50, 30);
    WindowProbe& probe = open(SettingsTab::statistics);
    // Tab comes in at today, and its next step leaves the chart.
    probe.item(QStringLiteral("statistics.period")).forceActiveFocus(Qt::TabFocusReason);
    probe.press(Qt::Key_Tab);
    EXPECT_EQ(focused(), bar(13));
    probe.press(Qt::Key_Tab);
    EXPECT_EQ(focused(), u"statistics.typingSpeed");
    probe.press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(focused(), bar(13));

    probe.press(Qt::Key_Right);
    EXPECT_EQ(focused(), bar(13)) << "there is no tomorrow";
    probe.press(Qt::Key_Left);
    EXPECT_EQ(focused(), bar(12));
    EXPECT_TRUE(probe.shows(QStringLiteral("Thu Nov 19"))) << "the bubble";
    probe.press(Qt::Key_Return);
    EXPECT_TRUE(probe.shows(QStringLiteral("30 s speaking · saved 45 s")));
    probe.press(Qt::Key_Home);
    EXPECT_EQ(focused(), bar(0));
    probe.press(Qt::Key_Left);
    EXPECT_EQ(focused(), bar(0));
    probe.press(Qt::Key_Space);
    EXPECT_TRUE(probe.shows(QStringLiteral("Saturday, November 7, 2026")));
    probe.press(Qt::Key_End);
    EXPECT_EQ(focused(), bar(13));
    probe.press(Qt::Key_Escape);
    EXPECT_FALSE(probe.shows(QStringLiteral("Selected")));
    EXPECT_EQ(focused(), bar(13));
}

TEST_F(StatisticsPageTest, AShorterChartKeepsAWayIn)
{
    record(1, 50, 30);
    WindowProbe& probe = open(SettingsTab::statistics);
    QQuickItem& period = probe.item(QStringLiteral("statistics.period"));
    period.forceActiveFocus(Qt::TabFocusReason);
    probe.press(Qt::Key_Down);
    probe.item(bar(29)).forceActiveFocus(Qt::TabFocusReason);
    period.forceActiveFocus(Qt::TabFocusReason);
    probe.press(Qt::Key_Up);
    probe.press(Qt::Key_Tab);
    EXPECT_EQ(focused(), bar(13));
}

TEST_F(StatisticsPageTest, TheChartHasItsNameAndBarsInProportion)
{
    record(1, 50, 30);
    record(2, 100, 30);
    WindowProbe& probe = open(SettingsTab::statistics);
    QQuickItem* const chart = probe.item(bar(0)).parentItem()->parentItem();
    EXPECT_EQ(nameOf(*chart), u"Bar chart of words dictated per day for the last 14 days");
    const auto heightOf = [&](int index) {
        const auto* const content = probe.item(bar(index)).property("contentItem").value<QQuickItem*>();
        return content->childItems().first()->height();
    };
    EXPECT_NEAR(heightOf(11), 2 * heightOf(12), 1);
    EXPECT_NEAR(heightOf(11), probe.item(bar(11)).height(), 1) << "100 words are the whole scale";
    EXPECT_GT(heightOf(13), 0) << "an empty day is a line";
    EXPECT_LT(heightOf(13), 4);
    for (const char* tick : {"0", "20", "40", "60", "80", "100"})
        EXPECT_TRUE(probe.shows(QString::fromUtf8(tick))) << tick;
}

TEST_F(StatisticsPageTest, TheTypingSpeedStepsByFiveWithinItsBounds)
{
    record(1, 50, 30);
    WindowProbe& probe = open(SettingsTab::statistics);
    probe.item(QStringLiteral("statistics.typingSpeed")).forceActiveFocus(Qt::TabFocusReason);
    probe.press(Qt::Key_Up);
    EXPECT_EQ(world.settings.typingWordsPerMinute(), 45);
    EXPECT_TRUE(probe.shows(QStringLiteral("My typing speed: **45** words/min")));
    EXPECT_TRUE(probe.shows(QStringLiteral("vs. typing at 45 words/\u2060min")));
    for (int i = 0; i < 30; ++i)
        probe.press(Qt::Key_Up);
    EXPECT_EQ(world.settings.typingWordsPerMinute(), 120);
    for (int i = 0; i < 30; ++i)
        probe.press(Qt::Key_Down);
    EXPECT_EQ(world.settings.typingWordsPerMinute(), 15);
}

TEST_F(StatisticsPageTest, ResettingAsksFirst)
{
    record(1, 50, 30);
    WindowProbe& probe = open(SettingsTab::statistics);
    probe.click(QStringLiteral("statistics.reset"));
    EXPECT_TRUE(probe.shows(QStringLiteral("Reset all statistics?")));
    EXPECT_TRUE(probe.shows(QStringLiteral(
        "All counters are deleted. Transcripts are never stored, so nothing else is affected.")));
    EXPECT_EQ(nameOf(probe.item(QStringLiteral("confirm.action"))), u"Reset");
    probe.click(QStringLiteral("confirm.cancel"));
    EXPECT_FALSE(probe.shows(QStringLiteral("Reset all statistics?")));
    EXPECT_EQ(world.stats.days().size(), 1);
    probe.click(QStringLiteral("statistics.reset"));
    probe.press(Qt::Key_Escape);
    EXPECT_EQ(world.stats.days().size(), 1);
    probe.click(QStringLiteral("statistics.reset"));
    probe.click(QStringLiteral("confirm.action"));
    EXPECT_TRUE(world.stats.days().isEmpty());
    EXPECT_TRUE(probe.shows(QStringLiteral("No dictations yet")));
}

TEST_F(StatisticsPageTest, TheKeyboardReachesEveryControl)
{
    record(1, 50, 30);
    const QStringList order = open(SettingsTab::statistics).tabOrder();
    for (const char* name : {"Period", "Friday, November 20, 2026, Words 0", "My typing speed: 40 words/min",
                             "Reset statistics…"})
        EXPECT_THAT(order, Contains(QString::fromUtf8(name))) << name;
}

TEST_F(StatisticsPageTest, NothingIsCutOffOrOverlaps)
{
    EXPECT_THAT(flawsIn(SettingsTab::statistics, [](UiWorld&) {}), IsEmpty());
    EXPECT_THAT(flawsIn(SettingsTab::statistics, [](UiWorld& one) { one.fill(); }), IsEmpty());
    // Figures as large as a hard-working year has, and a chart without any.
    EXPECT_THAT(flawsIn(SettingsTab::statistics,
                        [](UiWorld& one) {
                            one.stats.record(QStringLiteral("ord ").repeated(123456), one.clock.now(), 44640);
                        }),
                IsEmpty());
    EXPECT_THAT(flawsIn(SettingsTab::statistics,
                        [](UiWorld& one) {
                            one.stats.record(QStringLiteral("ord"), one.clock.now().addDays(-100), 1);
                        }),
                IsEmpty());
}

TEST_F(StatisticsPageTest, TheLabelsOfALongChartKeepTheirDistance)
{
    for (const AppLanguage language : allCases<AppLanguage>()) {
        installInterfaceLanguage(language);
        record(1, 50, 30);
        WindowProbe& probe = open(SettingsTab::statistics, SettingsWindowController::smallest);
        probe.item(QStringLiteral("statistics.period")).forceActiveFocus(Qt::TabFocusReason);
        probe.press(Qt::Key_Down);
        EXPECT_THAT(probe.layoutFlaws(), IsEmpty());
        probe.click(QStringLiteral("sidebar.home"));
    }
}

} // namespace

} // namespace tulvane::test
