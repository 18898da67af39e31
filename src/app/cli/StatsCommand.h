#pragma once

#include <app/cli/Console.h>

#include <QStringList>

namespace tulvane {
class Clock;
class StatsStore;
} // namespace tulvane

namespace tulvane::cli {

/// What `stats` reads: the counters, the setting, and the time when `--now` gives none.
struct StatsContext {
    const StatsStore& store;
    qint64 typingWordsPerMinute = 0;
    const Clock& clock;
};

/// `tulvane stats [--period today|week|month|all] [--now ISO8601] [--json]`: the figures on `out`.
/// `arguments` are those after "stats". Changes nothing. Main thread.
[[nodiscard]] int runStats(const QStringList& arguments, const StatsContext& context, Console& console);

} // namespace tulvane::cli
