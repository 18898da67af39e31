#include "Days.h"

#include <stats/StatsFile.h>
#include <stats/StatsStore.h>
#include <support/ScratchFolder.h>

#include <QElapsedTimer>

#include <algorithm>
#include <functional>
#include <limits>

namespace tulvane::test {

namespace {

constexpr double noticeable = 100; // milliseconds

/// The quickest of several runs, in milliseconds: what the work itself takes, whatever else the machine does.
/// A machine that is busy all the while gets more runs.
double quickest(const std::function<void()>& work)
{
    double best = std::numeric_limits<double>::max();
    for (int run = 0; run < 15 || (best >= noticeable && run < 150); ++run) {
        QElapsedTimer timer;
        timer.start();
        work();
        best = std::min(best, static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    return best;
}

TEST(StatsSpeed, FourHundredDaysLoadAndSaveUnnoticeably)
{
    const ScratchFolder folder;
    QList<DailyStat> days;
    for (int day = 0; day < 400; ++day)
        days.append({inOslo(2025, 3, 15).addDays(day - 399), 40, 12345, 67890, 4321.123456});
    const QString path = folder.write(QStringLiteral("statistics.json"), encodeStatistics(days).value());

    const double load = quickest([&] { ASSERT_EQ(StatsStore(path, Calendar(oslo())).days().size(), 400); });
    StatsStore store(path, Calendar(oslo()));
    const double save =
        quickest([&] { store.record(QStringLiteral("ett ord"), inOslo(2025, 3, 15, 12), 1); });
    RecordProperty("load_ms", std::to_string(load));
    RecordProperty("save_ms", std::to_string(save));
    std::printf("400 days: load %.2f ms, record and save %.2f ms\n", load, save);
    EXPECT_LT(load, noticeable);
    EXPECT_LT(save, noticeable);
}

} // namespace

} // namespace tulvane::test
