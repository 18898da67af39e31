#include <stats/StatsStore.h>

#include <QCoreApplication>

#include <cstdio>

/// Records dictations on one day, without end or so many, and tells on standard output how many have been
/// saved.
///   stats_writer FILE [DICTATIONS]
int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    tulvane::StatsStore store(QCoreApplication::arguments().at(1), tulvane::Calendar(QTimeZone::utc()));
    const QDateTime date(QDate(2025, 3, 15), QTime(12, 0), Qt::UTC);
    const int most = QCoreApplication::arguments().value(2, QStringLiteral("-1")).toInt();
    for (int recorded = 0; recorded != most; ++recorded) {
        store.record(QStringLiteral("ett ord"), date, 1);
        std::printf("%lld\n", static_cast<long long>(store.days().last().dictations));
        std::fflush(stdout);
    }
}
