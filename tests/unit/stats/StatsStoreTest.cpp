#include "Days.h"

#include <stats/StatsFile.h>
#include <stats/StatsStore.h>
#include <support/FakeClock.h>
#include <support/ScratchFolder.h>

#include <limits>

namespace tulvane::test {

namespace {

class StatsStoreTest : public ::testing::Test {
protected:
    void record(const char* text, double seconds = 1)
    {
        m_store.record(QString::fromUtf8(text), m_clock.now(), seconds);
    }

    [[nodiscard]] QList<DailyStat> onDisk() const { return StatsStore(m_path, Calendar(oslo())).days(); }

    FakeClock m_clock{inOslo(2025, 3, 15, 12)};
    ScratchFolder m_folder;
    QString m_path = m_folder.file(QStringLiteral("Tulvane/statistics.json"));
    StatsStore m_store{m_path, Calendar(oslo())};
};

TEST_F(StatsStoreTest, BeginsEmptyAndWritesNoFile)
{
    EXPECT_TRUE(m_store.days().isEmpty());
    EXPECT_FALSE(QFile::exists(m_path));
    EXPECT_EQ(m_store.fileURL(), m_path);
}

TEST_F(StatsStoreTest, CountsOneDictation)
{
    record(" Hei på deg. ", 2.5);
    EXPECT_EQ(m_store.days(), (QList<DailyStat>{{inOslo(2025, 3, 15), 1, 3, 11, 2.5}}));
    EXPECT_EQ(onDisk(), m_store.days());
}

TEST_F(StatsStoreTest, TextOfWhiteSpaceRecordsNothingAndWritesNoFile)
{
    int changes = 0;
    QObject::connect(&m_store, &StatsStore::daysChanged, &m_store, [&] { ++changes; });
    record("");
    record("  \n \r\n\t\xE2\x80\xA8 ");
    EXPECT_TRUE(m_store.days().isEmpty());
    EXPECT_EQ(changes, 0);
    EXPECT_FALSE(QFile::exists(m_path));
}

TEST_F(StatsStoreTest, PunctuationAloneIsADictationWithoutWords)
{
    record("– ...");
    EXPECT_EQ(m_store.days(), (QList<DailyStat>{{inOslo(2025, 3, 15), 1, 0, 5, 1}}));
}

TEST_F(StatsStoreTest, DictationsOfOneDayAreSummed)
{
    record("én to", 1.5);
    m_clock.setNow(inOslo(2025, 3, 15, 23, 59, 59));
    record("tre", 2);
    EXPECT_EQ(m_store.days(), (QList<DailyStat>{{inOslo(2025, 3, 15), 2, 3, 8, 3.5}}));
    EXPECT_EQ(onDisk(), m_store.days());
}

TEST_F(StatsStoreTest, MidnightDividesTwoDays)
{
    m_clock.setNow(inOslo(2025, 3, 15, 23, 59, 59));
    record("før");
    m_clock.advance(std::chrono::seconds(1));
    record("etter midnatt");
    EXPECT_EQ(m_store.days(),
              (QList<DailyStat>{{inOslo(2025, 3, 15), 1, 1, 3, 1}, {inOslo(2025, 3, 16), 1, 2, 13, 1}}));
}

TEST_F(StatsStoreTest, DaysOf23And25HoursAreOneEntryEach)
{
    for (const QDateTime& midnight : {inOslo(2025, 3, 30), inOslo(2025, 10, 26)}) {
        const qint64 length = midnight.secsTo(midnight.addDays(1));
        m_clock.setNow(midnight);
        record("først");
        m_clock.setNow(midnight.addSecs(length - 1));
        record("sist");
        m_clock.setNow(midnight.addSecs(length));
        record("neste");
    }
    QList<qint64> dictations;
    for (const DailyStat& day : m_store.days())
        dictations.append(day.dictations);
    EXPECT_EQ(dictations, (QList<qint64>{2, 1, 2, 1}));
}

TEST_F(StatsStoreTest, EntriesAreAscendingWhateverTheOrderOfTheDictations)
{
    for (const int day : {15, 13, 17, 14}) {
        m_clock.setNow(inOslo(2025, 3, day, 8));
        record("ord");
    }
    QList<QDateTime> dates;
    for (const DailyStat& day : m_store.days())
        dates.append(day.date);
    EXPECT_EQ(dates, (QList<QDateTime>{inOslo(2025, 3, 13), inOslo(2025, 3, 14), inOslo(2025, 3, 15),
                                       inOslo(2025, 3, 17)}));
}

TEST_F(StatsStoreTest, NegativeSpeakingTimeCountsAsNone)
{
    record("ny dag", -3);
    EXPECT_EQ(m_store.days().first().speechSeconds, 0);
    record("samme dag", 2);
    record("samme dag", -5);
    EXPECT_EQ(m_store.days().first().speechSeconds, 2);
    record("samme dag", std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(m_store.days().first().speechSeconds, 2);
    EXPECT_EQ(m_store.days().first().dictations, 4);
}

TEST_F(StatsStoreTest, KeepsThe400NewestDays)
{
    const QDateTime first = inOslo(2024, 1, 1, 12);
    for (int day = 0; day < 400; ++day)
        m_store.record(QStringLiteral("ord"), first.addDays(day), 1);
    ASSERT_EQ(m_store.days().size(), 400);
    EXPECT_EQ(m_store.days().first().date, inOslo(2024, 1, 1));

    m_store.record(QStringLiteral("ord"), first.addDays(400), 1);
    EXPECT_EQ(m_store.days().size(), 400);
    EXPECT_EQ(m_store.days().first().date, inOslo(2024, 1, 2));
    EXPECT_EQ(m_store.days().last().date, inOslo(2025, 2, 4));
    EXPECT_EQ(onDisk(), m_store.days());
}

TEST_F(StatsStoreTest, EachChangeIsToldOnceWithTheNewDaysInPlace)
{
    QList<qint64> dictations;
    QObject::connect(&m_store, &StatsStore::daysChanged, &m_store, [&] {
        dictations.append(m_store.days().isEmpty() ? 0 : m_store.days().first().dictations);
    });
    record("en");
    record("to");
    m_store.reset();
    EXPECT_EQ(dictations, (QList<qint64>{1, 2, 0}));
}

TEST_F(StatsStoreTest, ResetLeavesAnEmptyFile)
{
    record("ord");
    m_store.reset();
    EXPECT_TRUE(m_store.days().isEmpty());
    EXPECT_EQ(m_folder.read(QStringLiteral("Tulvane/statistics.json")), R"({"days":[],"version":1})");
    EXPECT_TRUE(onDisk().isEmpty());
}

TEST_F(StatsStoreTest, CountsAreKeptAndTheTextIsNot)
{
    record("hemmelighet");
    EXPECT_EQ(m_folder.read(QStringLiteral("Tulvane/statistics.json")),
              R"({"days":[{"characters":11,"date":"2025-03-14T23:00:00Z","dictations":1,)"
              R"("speechSeconds":1,"words":1}],"version":1})");
}

TEST_F(StatsStoreTest, FullCounterEndsTheProgramAndLeavesTheFile)
{
    constexpr qint64 full = std::numeric_limits<qint64>::max();
    for (const DailyStat& day : {DailyStat{inOslo(2025, 3, 15), full, 1, 1, 1},
                                 {inOslo(2025, 3, 15), 1, full, 1, 1},
                                 {inOslo(2025, 3, 15), 1, 1, full, 1}}) {
        const QByteArray bytes = encodeStatistics({day}).value();
        const QString path = m_folder.write(QStringLiteral("full.json"), bytes);
        EXPECT_DEATH(StatsStore(path, Calendar(oslo())).record(QStringLiteral("ord"), m_clock.now(), 1),
                     "A counter of the statistics is full");
        EXPECT_EQ(m_folder.read(QStringLiteral("full.json")), bytes);
    }
}

} // namespace

} // namespace tulvane::test
