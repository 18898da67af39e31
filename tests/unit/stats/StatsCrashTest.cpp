#include "Days.h"

#include <stats/StatsFile.h>
#include <support/ScratchFolder.h>
#include <support/Soak.h>

#include <QProcess>
#include <QRandomGenerator>
#include <QThread>

#include <array>

namespace tulvane::test {

namespace {

constexpr int days = 400;

/// Runs the writer and kills it at a random moment; returns the last count that it said is saved.
qint64 lastSavedBeforeTheKill(const QString& path, QRandomGenerator& random)
{
    QProcess writer;
    writer.start(QStringLiteral(STATS_WRITER), {path});
    EXPECT_TRUE(writer.waitForStarted());
    QByteArray output;
    while (!output.contains('\n') && writer.waitForReadyRead(20000))
        output += writer.readAll();
    QThread::usleep(random.bounded(20000U));
    writer.kill();
    EXPECT_TRUE(writer.waitForFinished());
    EXPECT_EQ(writer.exitStatus(), QProcess::CrashExit);
    output += writer.readAll();
    // The last line may be cut.
    const QByteArray whole = output.left(output.lastIndexOf('\n'));
    return whole.mid(whole.lastIndexOf('\n') + 1).toLongLong();
}

TEST(StatsCrash, KillDuringASaveLeavesTheOldFileOrTheNewOne)
{
    const ScratchFolder folder;
    const QString name = QStringLiteral("statistics.json");
    QList<DailyStat> history;
    for (int day = 0; day < days; ++day)
        history.append({utc("2025-03-15T00:00:00").addDays(day - days + 1), 1, 2, 7, 1});
    const QString path = folder.write(name, encodeStatistics(history).value());

    // A fixed seed names the moments; the scheduler moves them.
    QRandomGenerator random(20251120);
    const int kills = soakCount(50, 1000);
    for (int kill = 0; kill < kills; ++kill) {
        const qint64 saved = lastSavedBeforeTheKill(path, random);
        const auto onDisk = decodeStatistics(folder.read(name));
        ASSERT_TRUE(onDisk) << "kill " << kill;
        ASSERT_EQ(onDisk->size(), days);
        const qint64 found = onDisk->last().dictations;
        ASSERT_GT(saved, 0);
        ASSERT_TRUE(found == saved || found == saved + 1) << found << " on the disk, " << saved << " saved";
        ASSERT_EQ(onDisk->last(), (DailyStat{utc("2025-03-15T00:00:00"), found, 2 * found, 7 * found,
                                             static_cast<double>(found)}));
    }
    const qsizetype left = QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size();
    EXPECT_LE(left, 1 + (kills / 10)) << "temporary files pile up";
}

TEST(StatsProcesses, CountIntoOneFileAtOnceAndNoDictationIsLost)
{
    const ScratchFolder folder;
    const QString name = QStringLiteral("statistics.json");
    const int each = soakCount(50, 2000);
    std::array<QProcess, 3> writers;
    for (QProcess& writer : writers) {
        writer.setStandardOutputFile(QProcess::nullDevice());
        writer.start(QStringLiteral(STATS_WRITER), {folder.file(name), QString::number(each)});
    }
    for (QProcess& writer : writers)
        ASSERT_TRUE(writer.waitForFinished(120000));
    const qint64 all = qint64{each} * static_cast<qint64>(writers.size());
    EXPECT_EQ(
        decodeStatistics(folder.read(name)),
        (QList<DailyStat>{{utc("2025-03-15T00:00:00"), all, 2 * all, 7 * all, static_cast<double>(all)}}));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{name});
}

} // namespace

} // namespace tulvane::test
