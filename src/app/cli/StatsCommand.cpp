#include <app/cli/CommandSyntax.h>
#include <app/cli/StatsCommand.h>
#include <app/cli/StatsReport.h>
#include <base/Clock.h>
#include <stats/StatsStore.h>

#include <QJsonDocument>

namespace tulvane::cli {

namespace {

const QString& periodOption()
{
    static const QString name = QStringLiteral("period");
    return name;
}

const QString& nowOption()
{
    static const QString name = QStringLiteral("now");
    return name;
}

void addOptions(CommandSyntax& syntax)
{
    syntax.addOption(periodOption(), QStringLiteral("today|week|month|all"),
                     QStringLiteral("What the figures are summed over; week if not given."));
    syntax.addOption(nowOption(), QStringLiteral("ISO8601"),
                     QStringLiteral("The moment that counts as now, as 2025-03-15T12:00:00+01:00; local time "
                                    "without an offset."));
    syntax.addFlag(QStringLiteral("json"), QStringLiteral("Print one JSON object."));
}

/// The moment that a text names; without an offset, as the wall shows it there.
std::optional<QDateTime> momentIn(const QString& text, const Calendar& calendar)
{
    const auto valid = [](const QDateTime& moment) {
        return moment.isValid() ? std::optional(moment) : std::nullopt;
    };
    const QDateTime moment = QDateTime::fromString(text, Qt::ISODateWithMs);
    if (moment.isValid() && moment.timeSpec() != Qt::LocalTime)
        return moment;
    // The library reads a date in front of anything.
    const QDate date = QDate::fromString(text, Qt::ISODate);
    if (date.isValid() && text.size() == 10)
        return valid(calendar.at(date, QTime(0, 0)));
    // Read as UTC, so that the wall time stays what was written, whatever zone this process is in.
    const QDateTime wall = QDateTime::fromString(text + u'Z', Qt::ISODateWithMs);
    return wall.isValid() ? valid(calendar.at(wall.date(), wall.time())) : std::nullopt;
}

} // namespace

int runStats(const QStringList& arguments, const StatsContext& context, Console& console)
{
    CommandSyntax syntax(QStringLiteral("stats"), QStringLiteral("Shows how much has been dictated."));
    addOptions(syntax);
    if (const auto status = syntax.parse(arguments, console))
        return *status;
    const auto period = syntax.isSet(periodOption()) ? statsPeriodFromRawValue(syntax.value(periodOption()))
                                                     : StatsPeriod::week;
    if (!period)
        return syntax.usageError(console, QStringLiteral("“%1” is not a period: today, week, month or all.")
                                              .arg(syntax.value(periodOption())));
    const auto now = syntax.isSet(nowOption()) ? momentIn(syntax.value(nowOption()), context.store.calendar())
                                               : std::optional(context.clock.now());
    if (!now)
        return syntax.usageError(
            console, QStringLiteral("“%1” is not an ISO 8601 moment.").arg(syntax.value(nowOption())));
    const auto report =
        StatsReport::of(StatsSummary(context.store), *period, context.typingWordsPerMinute, *now);
    if (syntax.isSet(QStringLiteral("json")))
        console.out << QJsonDocument(report.toJson()).toJson(QJsonDocument::Compact) << '\n';
    else
        console.out << report.toText();
    return ExitStatus::done;
}

} // namespace tulvane::cli
