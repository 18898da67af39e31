#include <settings/InterfaceLanguage.h>
#include <support/ui/UiWorld.h>
#include <ui/viewmodels/StatisticsViewModel.h>

#include <QSignalSpy>

#include <gmock/gmock.h>

namespace tulvane::test {

namespace {

using testing::ElementsAre;

class StatisticsViewModelTest : public ::testing::Test {
protected:
    /// So many words in so many seconds, so many days before the world's Friday.
    void record(int daysBack, int words, double seconds)
    {
        world.stats.record(QStringLiteral("ord ").repeated(words), world.clock.now().addDays(-daysBack),
                           seconds);
    }
    [[nodiscard]] QString card(int index, const char* field)
    {
        return model.cards().at(index).toMap().value(QString::fromLatin1(field)).toString();
    }
    [[nodiscard]] QString detail(int index)
    {
        const QVariantMap row = model.details().at(index).toMap();
        return row.value(QStringLiteral("label")).toString() + u": " +
               row.value(QStringLiteral("value")).toString();
    }
    [[nodiscard]] QVariant bar(int index, const char* field)
    {
        return model.chart()->bars().at(index).toMap().value(QString::fromLatin1(field));
    }

    [[nodiscard]] QString barText(int index, const char* field) { return bar(index, field).toString(); }

    UiWorld world;
    StatisticsViewModel model{world.settings, world.stats, world.clock, nullptr};
};

TEST_F(StatisticsViewModelTest, BeginsWithTheWeekEachTimeThePageIsBuilt)
{
    EXPECT_EQ(model.period(), u"week");
    record(1, 10, 5);
    model.setPeriod(QStringLiteral("all"));
    model.chart()->select(28);
    EXPECT_EQ(model.chart()->selected(), 28);
    model.startOver();
    EXPECT_EQ(model.period(), u"week");
    EXPECT_EQ(model.chart()->selected(), -1);
    model.setPeriod(QStringLiteral("century"));
    EXPECT_EQ(model.period(), u"week");
}

TEST_F(StatisticsViewModelTest, OffersThePeriodsInTheirOrder)
{
    QStringList titles;
    for (const QVariant& period : StatisticsViewModel::periods())
        titles.append(period.toMap().value(QStringLiteral("title")).toString());
    EXPECT_THAT(titles, ElementsAre(QStringLiteral("Today"), QStringLiteral("7 days"),
                                    QStringLiteral("30 days"), QStringLiteral("All time")));
}

TEST_F(StatisticsViewModelTest, TheCardsAreThoseOfThePeriod)
{
    record(0, 50, 30);
    record(6, 50, 30);
    record(7, 1000, 300);
    EXPECT_EQ(card(0, "title"), u"Words dictated");
    EXPECT_EQ(card(0, "value"), u"100");
    EXPECT_EQ(card(1, "value"), u"1 min");
    EXPECT_EQ(card(1, "subtitle"), u"vs. typing at 40 words/min");
    EXPECT_EQ(card(2, "value"), u"1 min");
    EXPECT_EQ(card(2, "subtitle"), u"100 words/min");
    EXPECT_EQ(card(3, "value"), u"1");
    EXPECT_EQ(card(3, "subtitle"), u"2 of 7 days active");
    EXPECT_EQ(detail(0), u"Average per dictation: 50 words");
    EXPECT_EQ(detail(1), u"Characters: 398");
    EXPECT_EQ(detail(2), u"Typing the same text would take: 2 min");
    EXPECT_EQ(detail(3), u"Best day: 11/13/26 · 1000 words");

    QSignalSpy changes(&model, &StatisticsViewModel::changed);
    model.setPeriod(QStringLiteral("today"));
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(card(0, "value"), u"50");
    EXPECT_EQ(card(3, "subtitle"), u"1 of 1 days active");
    model.setPeriod(QStringLiteral("all"));
    EXPECT_EQ(card(0, "value"), u"1,100");
    EXPECT_EQ(card(3, "subtitle"), u"3 active days in total");
}

TEST_F(StatisticsViewModelTest, FollowsTheStoreAndTheTypingSpeed)
{
    QSignalSpy changes(&model, &StatisticsViewModel::changed);
    EXPECT_TRUE(model.isEmpty());
    record(0, 50, 30);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_FALSE(model.isEmpty());
    EXPECT_EQ(card(1, "value"), u"45 s");
    model.setTypingSpeed(50);
    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(card(1, "value"), u"30 s");
    model.reset();
    EXPECT_TRUE(model.isEmpty());
    EXPECT_TRUE(world.stats.days().isEmpty());
    EXPECT_EQ(changes.count(), 3);
}

TEST_F(StatisticsViewModelTest, TheTypingSpeedStaysWithinItsBounds)
{
    EXPECT_EQ(model.typingSpeed(), 40);
    EXPECT_EQ(model.typingSpeedLabel(), u"My typing speed: **40** words/min");
    model.setTypingSpeed(14);
    EXPECT_EQ(world.settings.typingWordsPerMinute(), 15);
    model.setTypingSpeed(121);
    EXPECT_EQ(world.settings.typingWordsPerMinute(), 120);
    // What was stored by other means is shown as it is.
    world.settings.typingWordsPerMinute.set(200);
    EXPECT_EQ(model.typingSpeed(), 200);
    world.settings.typingWordsPerMinute.set(std::numeric_limits<qint64>::max());
    EXPECT_EQ(model.typingSpeed(), std::numeric_limits<int>::max());
}

TEST_F(StatisticsViewModelTest, TheChartHasTheLengthOfThePeriodWithTodayLast)
{
    const QList<std::pair<QString, int>> lengths{{QStringLiteral("today"), 14},
                                                 {QStringLiteral("week"), 14},
                                                 {QStringLiteral("month"), 30},
                                                 {QStringLiteral("all"), 30}};
    for (const auto& [period, length] : lengths) {
        model.setPeriod(period);
        EXPECT_EQ(model.chart()->count(), length);
        EXPECT_EQ(model.chart()->bars().size(), length);
        EXPECT_EQ(model.chart()->caption(), QStringLiteral("Last %1 days").arg(length));
        EXPECT_EQ(model.chart()->label(),
                  QStringLiteral("Bar chart of words dictated per day for the last %1 days").arg(length));
        EXPECT_TRUE(bar(length - 1, "isToday").toBool());
        EXPECT_FALSE(bar(length - 2, "isToday").toBool());
    }
}

TEST_F(StatisticsViewModelTest, ABarTellsItsDayAndItsWords)
{
    record(2, 1234, 400);
    EXPECT_EQ(bar(11, "words").toDouble(), 1234);
    EXPECT_EQ(barText(11, "figure"), u"1,234 words");
    EXPECT_EQ(barText(11, "label"), u"Nov 18");
    EXPECT_EQ(barText(11, "day"), u"Wed Nov 18");
    EXPECT_EQ(barText(11, "name"), u"Wednesday, November 18, 2026, Words 1,234");
    EXPECT_EQ(barText(13, "label"), u"Today");
    EXPECT_EQ(bar(13, "words").toDouble(), 0);
    EXPECT_EQ(model.chart()->top(), 1500);
    const QVariantMap tick = model.chart()->ticks().at(2).toMap();
    EXPECT_EQ(tick.value(QStringLiteral("value")).toDouble(), 1000);
    EXPECT_EQ(tick.value(QStringLiteral("label")).toString(), u"1,000");

    installInterfaceLanguage(AppLanguage::norwegian);
    EXPECT_EQ(barText(11, "label"), u"18. nov.");
    EXPECT_EQ(barText(13, "label"), u"I dag");
    EXPECT_TRUE(barText(11, "name").contains(QStringLiteral(", Ord 1")));
}

TEST_F(StatisticsViewModelTest, ASelectedBarTellsWordsSpeakingTimeAndTimeSaved)
{
    record(1, 50, 30);
    WordsChartViewModel& chart = *model.chart();
    QSignalSpy changes(&chart, &WordsChartViewModel::selectionChanged);
    EXPECT_EQ(chart.selectedLine(), QString());
    chart.select(12);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(chart.selected(), 12);
    EXPECT_EQ(chart.selectedDay(), u"Thursday, November 19, 2026");
    EXPECT_EQ(chart.selectedWords(), u"50 words");
    EXPECT_EQ(chart.selectedLine(), u"30 s speaking · saved 45 s");
    chart.select(12);
    EXPECT_EQ(chart.selected(), -1) << "once more gives it up";
    chart.select(3);
    EXPECT_EQ(chart.selectedLine(), u"0 s speaking · saved 0 s");
    chart.clear();
    EXPECT_EQ(chart.selected(), -1);
    EXPECT_EQ(chart.selectedWords(), QString());
    chart.select(3);
    chart.select(14);
    EXPECT_EQ(chart.selected(), -1);
}

TEST_F(StatisticsViewModelTest, TheSelectedDayStaysSelectedWhileItIsShown)
{
    WordsChartViewModel& chart = *model.chart();
    chart.select(13);
    model.setPeriod(QStringLiteral("month"));
    EXPECT_EQ(chart.selected(), 29) << "the same day in a longer chart";
    record(0, 50, 30);
    EXPECT_EQ(chart.selected(), 29);
    EXPECT_EQ(chart.selectedWords(), u"50 words");
    // The next morning it is yesterday.
    world.clock.advance(std::chrono::hours(24));
    model.refresh();
    EXPECT_EQ(chart.selected(), 28);
    chart.select(0);
    model.setPeriod(QStringLiteral("week"));
    EXPECT_EQ(chart.selected(), -1) << "that day is not shown any more";
    model.setPeriod(QStringLiteral("month"));
    EXPECT_EQ(chart.selected(), -1);
}

} // namespace

} // namespace tulvane::test
