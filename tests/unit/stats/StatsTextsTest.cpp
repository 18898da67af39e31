#include "BracketTranslator.h"
#include "Days.h"

#include <stats/StatsTexts.h>
#include <support/FakeClock.h>

#include <QLocale>

namespace tulvane {

inline void PrintTo(const StatCard& card, std::ostream* out)
{
    *out << qPrintable(card.title) << " | " << qPrintable(card.value) << " | " << qPrintable(card.subtitle);
}

inline void PrintTo(const StatRow& row, std::ostream* out)
{
    *out << qPrintable(row.label) << " | " << qPrintable(row.value);
}

} // namespace tulvane

namespace tulvane::test {

namespace {

constexpr qint64 typingSpeed = 40;

StatCard card(const char* title, const char* value, const char* subtitle)
{
    return {QString::fromUtf8(title), QString::fromUtf8(value), QString::fromUtf8(subtitle)};
}

class StatsTextsTest : public ::testing::Test {
protected:
    void SetUp() override { QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates)); }
    void TearDown() override { QLocale::setDefault(QLocale::c()); }

    /// A summary with as many days in a row as told, today last; each with these words and seconds.
    [[nodiscard]] static StatsSummary streakOf(int days, qint64 words, double seconds)
    {
        QList<DailyStat> list;
        for (int day = days - 1; day >= 0; --day)
            list.append({inOslo(2025, 3, 19).addDays(-day), 1, words, 5 * words, seconds});
        return {list, Calendar(oslo())};
    }

    [[nodiscard]] QList<StatCard> home(const StatsSummary& summary) const
    {
        return homeCards(summary, typingSpeed, m_clock.now());
    }
    [[nodiscard]] QList<StatCard> page(const StatsSummary& summary, StatsPeriod period) const
    {
        return periodCards(summary, period, typingSpeed, m_clock.now());
    }

    FakeClock m_clock{inOslo(2025, 3, 19, 14)};
};

TEST_F(StatsTextsTest, HomeWithoutDictations)
{
    EXPECT_EQ(home(streakOf(0, 0, 0)),
              (QList<StatCard>{card("Daily streak", "0", "Dictate today to start a streak"),
                               card("Average speed", "–", "Measured from your dictations"),
                               card("Total words dictated", "0", "Your first words land here")}));
}

TEST_F(StatsTextsTest, HomeWithDictations)
{
    // 1,500 words in 900 s: 100 words a minute; typing would take 2,250 s, so 1,350 s are saved.
    EXPECT_EQ(home(streakOf(3, 500, 300)),
              (QList<StatCard>{card("Daily streak", "3", "Keep it going all week"),
                               card("Average speed", "100 WPM", "That's 2.5× faster than typing"),
                               card("Total words dictated", "1,500", "22 min saved vs. typing")}));
}

TEST_F(StatsTextsTest, StreakSubtitleFollowsItsLength)
{
    const auto subtitle = [this](int days) { return home(streakOf(days, 10, 5)).first().subtitle; };
    EXPECT_EQ(subtitle(1), QStringLiteral("One day down, many more ahead"));
    EXPECT_EQ(subtitle(2), QStringLiteral("Keep it going all week"));
    EXPECT_EQ(subtitle(6), QStringLiteral("Keep it going all week"));
    EXPECT_EQ(subtitle(7), QStringLiteral("7 active days in total"));
}

TEST_F(StatsTextsTest, LongStreakTellsTheActiveDaysOfAllTime)
{
    QList<DailyStat> days{{inOslo(2025, 1, 1), 1, 1, 1, 1}, {inOslo(2025, 1, 3), 0, 1, 1, 1}};
    for (int day = 10; day <= 19; ++day)
        days.append({inOslo(2025, 3, day), 1, 1, 1, 1});
    EXPECT_EQ(home({days, Calendar(oslo())}).first(), card("Daily streak", "10", "11 active days in total"));
}

TEST_F(StatsTextsTest, TooLittleSpeechHasNoSpeed)
{
    EXPECT_EQ(home(streakOf(1, 5, 0.9)).at(1), card("Average speed", "–", "Measured from your dictations"));
    EXPECT_EQ(page(streakOf(1, 5, 0.9), StatsPeriod::today).at(2), card("Speaking time", "1 s", "–"));
}

TEST_F(StatsTextsTest, SpeakingMoreSlowlyThanTypingSavesNothing)
{
    EXPECT_EQ(home(streakOf(1, 10, 60)).at(2), card("Total words dictated", "10", "0 s saved vs. typing"));
}

TEST_F(StatsTextsTest, FactorIsWrittenAsTheLocaleDoes)
{
    QLocale::setDefault(QLocale(QLocale::NorwegianBokmal));
    EXPECT_EQ(home(streakOf(1, 50, 30)).at(1).subtitle, QString::fromUtf8("That's 2,5× faster than typing"));
}

TEST_F(StatsTextsTest, PageOfAPeriod)
{
    const StatsSummary summary = streakOf(10, 500, 301);
    EXPECT_EQ(page(summary, StatsPeriod::week),
              (QList<StatCard>{card("Words dictated", "3,500", ""),
                               card("Time saved", "52 min", "vs. typing at 40 words/min"),
                               card("Speaking time", "35 min", "100 words/min"),
                               card("Streak", "10", "7 of 7 days active")}));
    EXPECT_EQ(page(summary, StatsPeriod::today).last(), card("Streak", "10", "1 of 1 days active"));
    EXPECT_EQ(page(summary, StatsPeriod::month).last(), card("Streak", "10", "10 of 30 days active"));
    EXPECT_EQ(page(summary, StatsPeriod::all).last(), card("Streak", "10", "10 active days in total"));
}

TEST_F(StatsTextsTest, DetailsOfAPeriod)
{
    const QList<DailyStat> days{{inOslo(2025, 1, 2), 3, 1234, 5000, 600},
                                {inOslo(2025, 3, 19), 2, 301, 1600, 120}};
    const QList<StatRow> rows =
        detailRows({days, Calendar(oslo())}, StatsPeriod::week, typingSpeed, m_clock.now());
    ASSERT_EQ(rows.size(), 4);
    EXPECT_EQ(rows.at(0), (StatRow{QStringLiteral("Average per dictation"), QStringLiteral("151 words")}));
    EXPECT_EQ(rows.at(1), (StatRow{QStringLiteral("Characters"), QStringLiteral("1,600")}));
    EXPECT_EQ(rows.at(2),
              (StatRow{QStringLiteral("Typing the same text would take"), QStringLiteral("7 min")}));
    EXPECT_EQ(rows.at(3), (StatRow{QStringLiteral("Best day"), QString::fromUtf8("1/2/25 · 1234 words")}));
}

TEST_F(StatsTextsTest, DetailsWithoutDictations)
{
    const QList<StatRow> rows = detailRows(streakOf(0, 0, 0), StatsPeriod::all, typingSpeed, m_clock.now());
    EXPECT_EQ(rows.first().value, QStringLiteral("0 words"));
    EXPECT_EQ(rows.last(), (StatRow{QStringLiteral("Best day"), QString::fromUtf8("–")}));
}

TEST_F(StatsTextsTest, ChartAndControls)
{
    EXPECT_EQ(chartCaption(14), QStringLiteral("Last 14 days"));
    EXPECT_EQ(chartLabel(30), QStringLiteral("Bar chart of words dictated per day for the last 30 days"));
    EXPECT_EQ(typingSpeedLabel(45), QStringLiteral("My typing speed: **45** words/min"));
    EXPECT_EQ(selectedDayLine({inOslo(2025, 3, 19), 1, 100, 500, 30}, typingSpeed),
              QString::fromUtf8("30 s speaking · saved 2 min"));
}

TEST_F(StatsTextsTest, EveryTextIsTheUsersOwnLanguage)
{
    const BracketTranslator translator;
    const StatsSummary summary = streakOf(8, 500, 300);
    const auto check = [](const QString& text) {
        EXPECT_TRUE(text.isEmpty() || text.contains(u'[') || text.toDouble() > 0 || text.contains(u','))
            << qPrintable(text);
    };
    for (const QList<StatCard>& cards :
         {home(summary), page(summary, StatsPeriod::week), page(summary, StatsPeriod::all)}) {
        for (const StatCard& each : cards) {
            EXPECT_TRUE(each.title.startsWith(u'[')) << qPrintable(each.title);
            check(each.value);
            check(each.subtitle);
        }
    }
    for (const StatRow& row : detailRows(summary, StatsPeriod::week, typingSpeed, m_clock.now())) {
        EXPECT_TRUE(row.label.startsWith(u'[')) << qPrintable(row.label);
        check(row.value);
    }
    for (const QString& text : {chartCaption(14), chartLabel(14), typingSpeedLabel(40),
                                selectedDayLine({inOslo(2025, 3, 19), 1, 1, 1, 1}, typingSpeed)})
        EXPECT_TRUE(text.startsWith(u'[')) << qPrintable(text);
    for (const StatsPeriod period : allStatsPeriods)
        EXPECT_TRUE(title(period).startsWith(u'['));
    EXPECT_FALSE(englishTitle(StatsPeriod::week).startsWith(u'['));
}

} // namespace

} // namespace tulvane::test
