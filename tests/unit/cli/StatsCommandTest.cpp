#include <app/cli/StatsCommand.h>
#include <stats/StatsStore.h>
#include <support/FakeClock.h>
#include <support/ScratchFolder.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTranslator>

#include <gtest/gtest.h>

namespace tulvane::cli {
namespace {

struct Outcome {
    int status = -1;
    QString out;
    QString err;

    [[nodiscard]] QJsonObject json() const { return QJsonDocument::fromJson(out.toUtf8()).object(); }
};

/// Answers every text with another language's.
class OtherLanguage final : public QTranslator {
public:
    [[nodiscard]] bool isEmpty() const override { return false; }
    [[nodiscard]] QString translate(const char*, const char*, const char*, int) const override
    {
        return QStringLiteral("fremmed");
    }
};

class StatsCommandTest : public ::testing::Test {
protected:
    Outcome run(const QStringList& arguments)
    {
        Outcome outcome;
        QBuffer in;
        QTextStream out(&outcome.out);
        QTextStream err(&outcome.err);
        Console console{.in = in, .out = out, .err = err};
        outcome.status = runStats(arguments, {m_store, m_typingSpeed, m_clock}, console);
        return outcome;
    }
    QJsonObject json(const QString& period)
    {
        const Outcome outcome = run({QStringLiteral("--json"), QStringLiteral("--period"), period});
        EXPECT_EQ(outcome.status, ExitStatus::done);
        EXPECT_TRUE(outcome.err.isEmpty());
        return outcome.json();
    }
    /// A dictation of so many words at noon of a day of March 2025, half a second a word.
    void dictate(int day, int words)
    {
        QStringList text;
        text.fill(QStringLiteral("ord"), words);
        m_store.record(text.join(u' '), {QDate(2025, 3, day), QTime(12, 0), m_oslo}, words * 0.5);
    }

    QTimeZone m_oslo{"Europe/Oslo"};
    test::FakeClock m_clock{QDateTime(QDate(2025, 3, 19), QTime(14, 0), m_oslo)};
    test::ScratchFolder m_folder;
    StatsStore m_store{m_folder.file(QStringLiteral("statistics.json")), Calendar(m_oslo)};
    qint64 m_typingSpeed = 40;
};

TEST_F(StatsCommandTest, jsonHoldsEveryFigure)
{
    dictate(5, 1500);
    dictate(18, 100);
    dictate(19, 20);
    dictate(19, 30);
    const QJsonObject report = json(QStringLiteral("week"));
    EXPECT_EQ(report.keys(), QStringList({QStringLiteral("activeDays"), QStringLiteral("bestDay"),
                                          QStringLiteral("characters"), QStringLiteral("currentStreak"),
                                          QStringLiteral("dailyWords"), QStringLiteral("dictations"),
                                          QStringLiteral("period"), QStringLiteral("savedSeconds"),
                                          QStringLiteral("speechSeconds"), QStringLiteral("typingSeconds"),
                                          QStringLiteral("words"), QStringLiteral("wordsPerMinute")}));
    EXPECT_EQ(report[u"period"], QStringLiteral("week"));
    EXPECT_EQ(report[u"dictations"], 3);
    EXPECT_EQ(report[u"words"], 150);
    EXPECT_EQ(report[u"characters"], 399 + 79 + 119);
    EXPECT_EQ(report[u"speechSeconds"], 75);
    EXPECT_EQ(report[u"activeDays"], 2);
    EXPECT_EQ(report[u"currentStreak"], 2);
    EXPECT_EQ(report[u"bestDay"], (QJsonObject{{QStringLiteral("date"), QStringLiteral("2025-03-05")},
                                               {QStringLiteral("words"), 1500}}));
    EXPECT_EQ(report[u"wordsPerMinute"], 120);
    EXPECT_EQ(report[u"typingSeconds"], 225);
    EXPECT_EQ(report[u"savedSeconds"], 150);
}

TEST_F(StatsCommandTest, dailyWordsRunToTodayInLocalDates)
{
    dictate(18, 100);
    const QJsonArray days = json(QStringLiteral("week"))[u"dailyWords"].toArray();
    ASSERT_EQ(days.size(), 14);
    EXPECT_EQ(days.first()[u"date"], QStringLiteral("2025-03-06"));
    EXPECT_EQ(days.first()[u"words"], 0);
    EXPECT_EQ(days.at(12)[u"date"], QStringLiteral("2025-03-18"));
    EXPECT_EQ(days.at(12)[u"words"], 100);
    EXPECT_EQ(days.last()[u"date"], QStringLiteral("2025-03-19"));
    EXPECT_EQ(json(QStringLiteral("all"))[u"dailyWords"].toArray().size(), 30);
}

TEST_F(StatsCommandTest, eachPeriodIsSummed)
{
    dictate(1, 1);
    dictate(13, 20);
    dictate(19, 300);
    m_store.record(QStringLiteral("før jul"), QDateTime(QDate(2024, 12, 1), QTime(12, 0), m_oslo), 1);
    EXPECT_EQ(json(QStringLiteral("today"))[u"words"], 300);
    EXPECT_EQ(json(QStringLiteral("week"))[u"words"], 320);
    EXPECT_EQ(json(QStringLiteral("month"))[u"words"], 321);
    EXPECT_EQ(json(QStringLiteral("all"))[u"words"], 323);
    EXPECT_EQ(run({QStringLiteral("--json")}).json()[u"period"], QStringLiteral("week"))
        << "if none is given";
}

TEST_F(StatsCommandTest, emptyStoreHasNullsAndZeros)
{
    const QJsonObject report = json(QStringLiteral("all"));
    EXPECT_TRUE(report[u"bestDay"].isNull());
    EXPECT_TRUE(report[u"wordsPerMinute"].isNull());
    EXPECT_EQ(report[u"words"], 0);
    EXPECT_EQ(report[u"savedSeconds"], 0);
}

TEST_F(StatsCommandTest, speedAndSecondsAreNotRounded)
{
    m_store.record(QStringLiteral("ett to tre"), m_clock.now(), 7);
    m_typingSpeed = 7;
    const QJsonObject report = json(QStringLiteral("today"));
    EXPECT_DOUBLE_EQ(report[u"wordsPerMinute"].toDouble(), 180.0 / 7);
    EXPECT_DOUBLE_EQ(report[u"typingSeconds"].toDouble(), 180.0 / 7);
    EXPECT_DOUBLE_EQ(report[u"savedSeconds"].toDouble(), (180.0 / 7) - 7);
}

TEST_F(StatsCommandTest, nowCanBeGiven)
{
    dictate(18, 100);
    const auto words = [this](const char* now) {
        const Outcome outcome = run({QStringLiteral("--json"), QStringLiteral("--period=today"),
                                     QStringLiteral("--now"), QString::fromLatin1(now)});
        EXPECT_EQ(outcome.status, ExitStatus::done) << now;
        return outcome.json()[u"words"].toInt(-1);
    };
    EXPECT_EQ(words("2025-03-17T23:00:00Z"), 100) << "midnight in Oslo";
    EXPECT_EQ(words("2025-03-18T22:59:59Z"), 100);
    EXPECT_EQ(words("2025-03-18T23:00:00Z"), 0);
    EXPECT_EQ(words("2025-03-18T19:00:00-04:00"), 0);
    EXPECT_EQ(words("2025-03-18T23:59:59"), 100) << "the store's local time";
    EXPECT_EQ(words("2025-03-18T23:59:59.999"), 100);
    EXPECT_EQ(words("2025-03-19T00:00:00"), 0);
    EXPECT_EQ(words("2025-03-18"), 100);
    EXPECT_EQ(words("2025-03-19"), 0);
}

TEST_F(StatsCommandTest, wallTimeDoesNotDependOnTheProcessesZone)
{
    dictate(30, 100);
    qputenv("TZ", "Europe/Oslo"); // 02:30 is jumped over there on that day, but not in the store's zone
    StatsStore utc(m_store.fileURL(), Calendar(QTimeZone::utc()));
    Outcome outcome;
    QBuffer in;
    QTextStream out(&outcome.out);
    QTextStream err(&outcome.err);
    Console console{.in = in, .out = out, .err = err};
    EXPECT_EQ(
        runStats({QStringLiteral("--json"), QStringLiteral("--now"), QStringLiteral("2025-03-30T02:30:00")},
                 {utc, m_typingSpeed, m_clock}, console),
        ExitStatus::done);
    qunsetenv("TZ");
    EXPECT_EQ(outcome.json()[u"words"], 100);
}

TEST_F(StatsCommandTest, textTellsTheSameFigures)
{
    dictate(5, 1500);
    dictate(18, 100);
    dictate(19, 50);
    const QString expected = QString::fromUtf8("Period               7 days\n"
                                               "Dictations           2\n"
                                               "Words                150\n"
                                               "Characters           598\n"
                                               "Words per dictation  75\n"
                                               "Speaking time        1 min\n"
                                               "Speed                120 words/min, 3.0 × typing\n"
                                               "Typing would take    3 min\n"
                                               "Time saved           2 min\n"
                                               "Active days          2 of 7\n"
                                               "Streak               2 days\n"
                                               "Best day             2025-03-05, 1,500 words\n"
                                               "\n"
                                               "Words per day, last 14 days\n"
                                               "2025-03-06    0\n");
    const Outcome outcome = run({});
    EXPECT_EQ(outcome.status, ExitStatus::done);
    EXPECT_EQ(outcome.out.left(expected.size()), expected);
    EXPECT_TRUE(outcome.out.endsWith(u"2025-03-18  100  " + QString(40, u'█') + u"\n2025-03-19   50  " +
                                     QString(20, u'█') + u'\n'))
        << qPrintable(outcome.out);
}

TEST_F(StatsCommandTest, textOfAnEmptyStoreAndOfOne)
{
    const QString empty = run({QStringLiteral("--period"), QStringLiteral("all")}).out;
    EXPECT_TRUE(empty.contains(QStringLiteral("Period               All time\n"))) << qPrintable(empty);
    EXPECT_TRUE(empty.contains(QStringLiteral("Speed                –\n")));
    EXPECT_TRUE(empty.contains(QStringLiteral("Active days          0\n")));
    EXPECT_TRUE(empty.contains(QStringLiteral("Streak               0 days\n")));
    EXPECT_TRUE(empty.contains(QStringLiteral("Best day             –\n")));
    dictate(19, 1);
    const QString one = run({}).out;
    EXPECT_TRUE(one.contains(QStringLiteral("Streak               1 day\n"))) << qPrintable(one);
    EXPECT_TRUE(one.contains(QStringLiteral("Best day             2025-03-19, 1 word\n")));
}

TEST_F(StatsCommandTest, everyDayWithWordsHasABar)
{
    dictate(18, 1);
    dictate(19, 5000);
    EXPECT_TRUE(run({}).out.contains(QStringLiteral("2025-03-18      1  █\n"))) << qPrintable(run({}).out);
}

TEST_F(StatsCommandTest, speaksEnglishWhateverTheInterfaceLanguage)
{
    dictate(19, 200);
    const QString before = run({}).out;
    OtherLanguage other;
    QCoreApplication::installTranslator(&other);
    const QString after = run({}).out;
    QCoreApplication::removeTranslator(&other);
    EXPECT_EQ(after, before);
}

TEST_F(StatsCommandTest, changesNothing)
{
    dictate(19, 3);
    const QByteArray bytes = m_folder.read(QStringLiteral("statistics.json"));
    (void)run({});
    (void)run({QStringLiteral("--json")});
    EXPECT_EQ(m_folder.read(QStringLiteral("statistics.json")), bytes);
}

TEST_F(StatsCommandTest, wrongWordsAreSaidSo)
{
    const auto says = [this](const QStringList& arguments, const char* piece) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, ExitStatus::wrongUsage);
        EXPECT_TRUE(outcome.out.isEmpty());
        EXPECT_TRUE(outcome.err.contains(QString::fromUtf8(piece))) << qPrintable(outcome.err);
    };
    says({QStringLiteral("--period"), QStringLiteral("year")},
         "“year” is not a period: today, week, month or all.");
    says({QStringLiteral("--now"), QStringLiteral("noon")}, "“noon” is not an ISO 8601 moment.");
    says({QStringLiteral("--now"), QStringLiteral("2025-02-30T12:00:00Z")}, "is not an ISO 8601 moment.");
    says({QStringLiteral("--now"), QStringLiteral("2025-03-18 noon")}, "is not an ISO 8601 moment.");
    says({QStringLiteral("--now"), QStringLiteral("2025-03-18T12:00:00x")}, "is not an ISO 8601 moment.");
    says({QStringLiteral("--now"), QString()}, "is not an ISO 8601 moment.");
    says({QStringLiteral("today")}, "“today” is one word too many.");
    says({QStringLiteral("--year")}, "year");
}

} // namespace
} // namespace tulvane::cli
