#include "Days.h"

#include <base/FileLock.h>
#include <stats/StatsFile.h>
#include <stats/StatsStore.h>
#include <support/FileSizeLimit.h>
#include <support/LogCapture.h>
#include <support/ScratchFolder.h>

#include <QLockFile>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <limits>

namespace tulvane::test {

namespace {

/// While it lives, the process acts as a user whom file permissions bind, and to whom the folder belongs.
class OrdinaryUser final {
public:
    explicit OrdinaryUser(const QString& folder)
    {
        if (::geteuid() != 0)
            return;
        QStringList paths{folder};
        for (const QString& name : QDir(folder).entryList(QDir::Files))
            paths.append(folder + u'/' + name);
        for (const QString& path : paths)
            EXPECT_EQ(::chown(qPrintable(path), nobody, nobody), 0);
        EXPECT_EQ(::seteuid(nobody), 0);
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser()
    {
        if (::getuid() == 0 && ::seteuid(0) != 0)
            std::abort();
    }

private:
    static constexpr uid_t nobody = 65534;
};

class StatsStoreFileTest : public ::testing::Test {
protected:
    [[nodiscard]] QString write(const QByteArray& bytes) const { return m_folder.write(m_name, bytes); }
    [[nodiscard]] QString write(const QList<DailyStat>& days) const
    {
        return write(encodeStatistics(days).value());
    }
    [[nodiscard]] QList<DailyStat> loaded(const QTimeZone& zone = oslo()) const
    {
        return StatsStore(m_path, Calendar(zone)).days();
    }
    [[nodiscard]] QStringList names() const
    {
        return QDir(m_folder.path())
            .entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::Hidden, QDir::Name);
    }
    static void record(StatsStore& store, const QDateTime& date = inOslo(2025, 3, 15, 12))
    {
        store.record(QStringLiteral("ett ord"), date, 1);
    }

    LogCapture m_log;
    ScratchFolder m_folder;
    QString m_name = QStringLiteral("statistics.json");
    QString m_path = m_folder.file(m_name);
};

TEST_F(StatsStoreFileTest, DefaultIsInTheFolderForApplicationsData)
{
    const QByteArray before = qgetenv("XDG_DATA_HOME");
    qputenv("XDG_DATA_HOME", QFile::encodeName(m_folder.path()));
    StatsStore store;
    EXPECT_EQ(store.fileURL(), m_folder.file(QStringLiteral("Tulvane/statistics.json")));
    record(store);
    EXPECT_TRUE(QFile::exists(store.fileURL()));
    before.isNull() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", before);
}

TEST_F(StatsStoreFileTest, TheFirstCountOfAllIsMadeUnderTheLockAsWell)
{
    StatsStore store(m_folder.file(QStringLiteral("new/statistics.json")), Calendar(oslo()));
    int told = 0;
    QObject::connect(&store, &StatsStore::daysChanged, &store, [&] {
        ++told;
        const auto lock = FileLock::acquire(store.fileURL() + QStringLiteral(".lock"), {});
        EXPECT_TRUE(!lock && lock.error().isHeld());
    });
    record(store);
    EXPECT_EQ(told, 1);
}

TEST_F(StatsStoreFileTest, LoadsWhatAnEarlierRunSaved)
{
    {
        StatsStore store(m_path, Calendar(oslo()));
        record(store);
    }
    StatsStore store(m_path, Calendar(oslo()));
    EXPECT_EQ(store.days(), (QList<DailyStat>{{inOslo(2025, 3, 15), 1, 2, 7, 1}}));
    record(store);
    EXPECT_EQ(store.days().first().dictations, 2);
}

TEST_F(StatsStoreFileTest, EntriesOfOneDayAreSummedAndSorted)
{
    (void)write({{utc("2025-03-16T05:00:00"), 1, 10, 100, 0.5},
                 {utc("2025-03-15T04:00:00"), 2, 20, 200, 1.5},
                 {utc("2025-03-15T22:59:59"), 3, 30, 300, 2.5},
                 {utc("2025-03-14T23:00:00"), 4, 40, 400, 3.5}});
    EXPECT_EQ(loaded(), (QList<DailyStat>{{inOslo(2025, 3, 15), 9, 90, 900, 7.5},
                                          {inOslo(2025, 3, 16), 1, 10, 100, 0.5}}));
}

TEST_F(StatsStoreFileTest, FileOfAnotherZoneIsNormalisedToThisOne)
{
    {
        StatsStore store(m_path, Calendar(oslo()));
        record(store, inOslo(2025, 3, 15, 12));
        record(store, inOslo(2025, 3, 16, 12));
    }
    // Midnight in Oslo is still the evening before in New York.
    const QTimeZone newYork = zone("America/New_York");
    StatsStore store(m_path, Calendar(newYork));
    const auto midnight = [&](int day) { return QDateTime(QDate(2025, 3, day), QTime(0, 0), newYork); };
    EXPECT_EQ(store.days(), (QList<DailyStat>{{midnight(14), 1, 2, 7, 1}, {midnight(15), 1, 2, 7, 1}}));
    record(store, inOslo(2025, 3, 15, 20));
    EXPECT_EQ(store.days().last(), (DailyStat{midnight(15), 2, 4, 14, 2}));
    EXPECT_EQ(loaded(newYork), store.days());
}

TEST_F(StatsStoreFileTest, ZoneThereAndBackLosesNoCounts)
{
    QList<DailyStat> days;
    for (int day = 0; day < 300; ++day)
        days.append({inOslo(2025, 1, 1).addDays(day), 1, day, 2 * day, 0.5});
    (void)write(days);
    const auto words = [](const QList<DailyStat>& list) {
        qint64 sum = 0;
        for (const DailyStat& day : list)
            sum += day.words;
        return sum;
    };
    for (const char* name : {"Asia/Tokyo", "America/Los_Angeles", "Europe/Oslo"}) {
        const QList<DailyStat> here = loaded(zone(name));
        EXPECT_EQ(words(here), words(days)) << name;
        (void)write(here);
    }
}

TEST_F(StatsStoreFileTest, LoadingDoesNotDropDaysButTheNextDictationDoes)
{
    QList<DailyStat> days;
    for (int day = 0; day < 450; ++day)
        days.append({inOslo(2024, 1, 1).addDays(day), 1, 1, 1, 1});
    (void)write(days);
    StatsStore store(m_path, Calendar(oslo()));
    EXPECT_EQ(store.days().size(), 450);
    record(store, inOslo(2024, 1, 1, 12).addDays(449));
    EXPECT_EQ(store.days().size(), 400);
    EXPECT_EQ(store.days().first().date, inOslo(2024, 1, 1).addDays(50));
    EXPECT_EQ(store.days().last().dictations, 2);
}

TEST_F(StatsStoreFileTest, UnreadableFileIsEmptyWithoutAWordAndUntouchedUntilTheNextSave)
{
    for (const QByteArray& bytes :
         {QByteArray("tull"), QByteArray(), QByteArray(R"({"days":[{}],"version":1})")}) {
        (void)write(bytes);
        EXPECT_TRUE(loaded().isEmpty());
        EXPECT_EQ(m_folder.read(m_name), bytes);
    }
    EXPECT_TRUE(m_log.lines().isEmpty());
    EXPECT_EQ(names(), QStringList{m_name});
}

TEST_F(StatsStoreFileTest, DamagedFileIsReplacedAtTheNextSaveAndItsBytesAreKept)
{
    (void)write(QByteArray("tull"));
    StatsStore store(m_path, Calendar(oslo()));
    record(store);
    record(store);
    EXPECT_EQ(loaded(), store.days());
    EXPECT_EQ(m_folder.read(QStringLiteral("statistics.json.damaged")), "tull");
    EXPECT_EQ(names(), QStringList({m_name, QStringLiteral("statistics.json.damaged")}));
    EXPECT_TRUE(m_log.lines().isEmpty());
}

TEST_F(StatsStoreFileTest, ResetRemovesTheDamagedBytesToo)
{
    (void)write(QByteArray("tull"));
    {
        StatsStore store(m_path, Calendar(oslo()));
        record(store);
        store.reset();
    }
    EXPECT_EQ(names(), QStringList{m_name});
    (void)write(QByteArray("tull"));
    StatsStore(m_path, Calendar(oslo())).reset();
    EXPECT_EQ(names(), QStringList{m_name});
    EXPECT_TRUE(loaded().isEmpty());
}

TEST_F(StatsStoreFileTest, TwoThatCountIntoOneFileLoseNothing)
{
    StatsStore one(m_path, Calendar(oslo()));
    StatsStore other(m_path, Calendar(oslo()));
    record(one);
    record(other, inOslo(2025, 3, 14, 12));
    record(other);
    record(one);
    EXPECT_EQ(loaded(),
              (QList<DailyStat>{{inOslo(2025, 3, 14), 1, 2, 7, 1}, {inOslo(2025, 3, 15), 3, 6, 21, 3}}));
    EXPECT_EQ(one.days(), loaded());
    EXPECT_EQ(names(), QStringList{m_name});
}

TEST_F(StatsStoreFileTest, ALookTakesInWhatAnotherHasCountedAndTellsOnlyOfNews)
{
    StatsStore one(m_path, Calendar(oslo()));
    StatsStore other(m_path, Calendar(oslo()));
    record(other);
    int changes = 0;
    QObject::connect(&one, &StatsStore::daysChanged, &one, [&changes] { ++changes; });
    one.refresh();
    one.refresh();
    EXPECT_EQ(one.days(), other.days());
    EXPECT_EQ(changes, 1);
    QFile::remove(m_path);
    one.refresh();
    EXPECT_EQ(one.days(), other.days()); // what is remembered is not lost with the file
}

TEST_F(StatsStoreFileTest, ResettingInOnePlaceIsNotUndoneInAnother)
{
    StatsStore one(m_path, Calendar(oslo()));
    StatsStore other(m_path, Calendar(oslo()));
    record(one);
    other.reset();
    record(one);
    EXPECT_EQ(loaded(), (QList<DailyStat>{{inOslo(2025, 3, 15), 1, 2, 7, 1}}));
}

TEST_F(StatsStoreFileTest, WhatCouldNotBeSavedIsAddedToWhatAnotherHasSavedSince)
{
    StatsStore one(m_path, Calendar(oslo()));
    StatsStore other(m_path, Calendar(oslo()));
    record(one);
    {
        const FileSizeLimit full(40);
        record(one);
    }
    record(other);
    record(one);
    EXPECT_EQ(loaded(), (QList<DailyStat>{{inOslo(2025, 3, 15), 4, 8, 28, 4}}));
    record(one);
    EXPECT_EQ(loaded().first().dictations, 5);
}

TEST_F(StatsStoreFileTest, AFileThatGoesOrIsDamagedMeanwhileCostsNothing)
{
    StatsStore store(m_path, Calendar(oslo()));
    record(store);
    ASSERT_TRUE(QFile::remove(m_path));
    record(store);
    EXPECT_EQ(loaded().first().dictations, 2);
    (void)write(QByteArray("tull"));
    record(store);
    EXPECT_EQ(loaded().first().dictations, 3);
    EXPECT_EQ(m_folder.read(QStringLiteral("statistics.json.damaged")), "tull");
}

TEST_F(StatsStoreFileTest, ALockThatIsHeldTooLongIsNotWaitedForAndTheDictationCounts)
{
    QLockFile held(m_path + QStringLiteral(".lock"));
    ASSERT_TRUE(held.tryLock());
    StatsStore store(m_path, Calendar(oslo()));
    record(store);
    EXPECT_EQ(loaded(), store.days());
    EXPECT_EQ(loaded().first().dictations, 1);
    EXPECT_EQ(m_log.texts("app", QtWarningMsg),
              QStringList{QStringLiteral("Another program does not let go of the statistics")});
}

TEST_F(StatsStoreFileTest, SumsThatOverflowMakeAFileOfTheWrongShape)
{
    constexpr qint64 full = std::numeric_limits<qint64>::max();
    constexpr double huge = std::numeric_limits<double>::max();
    const QDateTime date = inOslo(2025, 3, 15);
    for (const DailyStat& day : {DailyStat{date, full, 1, 1, 1},
                                 {date, 1, full, 1, 1},
                                 {date, 1, 1, full, 1},
                                 {date, 1, 1, 1, huge}}) {
        (void)write({day});
        EXPECT_EQ(loaded().size(), 1);
        (void)write({day, day});
        EXPECT_TRUE(loaded().isEmpty());
        StatsStore store(m_path, Calendar(oslo()));
        record(store);
        EXPECT_EQ(loaded(), (QList<DailyStat>{{date, 1, 2, 7, 1}}));
    }
}

TEST_F(StatsStoreFileTest, DayThatTheFileCouldNotHoldAgainMakesItWrong)
{
    (void)write(QByteArray(R"({"days":[{"characters":1,"date":"0001-01-01T00:00:00Z","dictations":1,)"
                           R"("speechSeconds":1,"words":1}],"version":1})"));
    EXPECT_TRUE(loaded(zone("America/New_York")).isEmpty());
    EXPECT_EQ(loaded(zone("UTC")).size(), 1);
}

TEST_F(StatsStoreFileTest, FileThatMayNotBeReadIsEmptyWithoutAWordAndItsBytesSurvive)
{
    (void)write({{inOslo(2025, 3, 14), 7, 7, 7, 7}});
    const QByteArray bytes = m_folder.read(m_name);
    {
        const OrdinaryUser user(m_folder.path());
        ASSERT_EQ(::chmod(qPrintable(m_path), 0), 0);
        StatsStore store(m_path, Calendar(oslo()));
        EXPECT_TRUE(store.days().isEmpty());
        EXPECT_TRUE(m_log.lines().isEmpty());
        record(store);
        EXPECT_EQ(store.days().size(), 1);
        ASSERT_EQ(::chmod(qPrintable(m_folder.file(QStringLiteral("statistics.json.damaged"))), 0600), 0);
    }
    EXPECT_EQ(m_folder.read(QStringLiteral("statistics.json.damaged")), bytes);
}

TEST_F(StatsStoreFileTest, SomethingThatIsNoFileIsEmptyAndDoesNotBlock)
{
    ASSERT_EQ(::mkfifo(qPrintable(m_path), 0600), 0);
    EXPECT_TRUE(loaded().isEmpty());
    ASSERT_TRUE(QFile::remove(m_path));
    ASSERT_TRUE(QDir(m_folder.path()).mkdir(m_name));
    EXPECT_TRUE(loaded().isEmpty());
    EXPECT_TRUE(m_log.lines().isEmpty());
}

TEST_F(StatsStoreFileTest, FailedSaveIsLoggedAndRetriedWithTheNext)
{
    const QString path = m_folder.file(QStringLiteral("blocked/statistics.json"));
    m_folder.write(QStringLiteral("blocked"), "in the way");
    StatsStore store(path, Calendar(oslo()));
    record(store);
    EXPECT_EQ(m_log.texts("app", QtCriticalMsg),
              QStringList{QStringLiteral("Could not save statistics: Not a directory")});
    EXPECT_EQ(store.days().first().dictations, 1) << "the counters in memory remain";

    m_log.clear();
    ASSERT_TRUE(QFile::remove(m_folder.file(QStringLiteral("blocked"))));
    record(store);
    EXPECT_TRUE(m_log.lines().isEmpty());
    EXPECT_EQ(StatsStore(path, Calendar(oslo())).days().first().dictations, 2);
}

TEST_F(StatsStoreFileTest, NumbersThatCannotBeWrittenAreLogged)
{
    StatsStore store(m_path, Calendar(oslo()));
    record(store);
    const QByteArray bytes = m_folder.read(m_name);
    store.record(QStringLiteral("ord"), inOslo(2025, 3, 15), std::numeric_limits<double>::infinity());
    EXPECT_EQ(m_log.texts("app", QtCriticalMsg),
              QStringList{QStringLiteral(
                  "Could not save statistics: the seconds of speech are not a finite number")});
    EXPECT_EQ(m_folder.read(m_name), bytes);
}

TEST_F(StatsStoreFileTest, NoFolderForApplicationsDataIsLogged)
{
    StatsStore store{QString(), Calendar(oslo())};
    record(store);
    EXPECT_EQ(
        m_log.texts("app", QtCriticalMsg),
        QStringList{QStringLiteral("Could not save statistics: there is no folder for application data")});
}

TEST_F(StatsStoreFileTest, FullDiskLeavesTheOldFileWhole)
{
    StatsStore store(m_path, Calendar(oslo()));
    record(store);
    const QByteArray bytes = m_folder.read(m_name);

    {
        const FileSizeLimit full(40);
        record(store);
    }
    EXPECT_EQ(m_log.texts("app", QtCriticalMsg),
              QStringList{QStringLiteral("Could not save statistics: File too large")});
    EXPECT_EQ(m_folder.read(m_name), bytes);
    EXPECT_EQ(names(), QStringList{m_name});
    record(store);
    EXPECT_EQ(loaded().first().dictations, 3);
}

} // namespace

} // namespace tulvane::test
