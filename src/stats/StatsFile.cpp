#include <stats/StatsFile.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <cmath>

namespace tulvane {

namespace {

constexpr QLatin1String daysKey("days");
constexpr QLatin1String versionKey("version");
constexpr QLatin1String charactersKey("characters");
constexpr QLatin1String dateKey("date");
constexpr QLatin1String dictationsKey("dictations");
constexpr QLatin1String speechSecondsKey("speechSeconds");
constexpr QLatin1String wordsKey("words");

constexpr int version = 1;

/// A whole number that fits into 64 bits; 12.0 is one, 12.5 and a text are none.
std::optional<qint64> integer(const QJsonValue& value)
{
    // The library answers with the default it was given where there is no such number.
    const qint64 number = value.toInteger(0);
    return value.isDouble() && number == value.toInteger(1) ? std::optional(number) : std::nullopt;
}

std::optional<QDateTime> moment(const QJsonValue& value)
{
    // The library's own reading also takes a date without time and a time without zone.
    static const QRegularExpression form(QStringLiteral(
        "\\A\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d(?:[.]\\d+)?(?:Z|[+-]\\d\\d:?\\d\\d)\\z"));
    const QString text = value.toString();
    if (!form.match(text).hasMatch())
        return std::nullopt;
    const QDateTime date = QDateTime::fromString(text, Qt::ISODateWithMs).toUTC();
    return date.isValid() ? std::optional(date) : std::nullopt;
}

std::optional<DailyStat> dayOf(const QJsonValue& value)
{
    const QJsonObject object = value.toObject();
    const auto date = moment(object.value(dateKey));
    const auto dictations = integer(object.value(dictationsKey));
    const auto words = integer(object.value(wordsKey));
    const auto characters = integer(object.value(charactersKey));
    const QJsonValue speechSeconds = object.value(speechSecondsKey);
    if (!date || !dictations || !words || !characters || !speechSeconds.isDouble())
        return std::nullopt;
    return DailyStat{*date, *dictations, *words, *characters, speechSeconds.toDouble()};
}

QJsonObject objectOf(const DailyStat& day, const QString& date)
{
    return {{QString(charactersKey), day.characters},
            {QString(dateKey), date},
            {QString(dictationsKey), day.dictations},
            {QString(speechSecondsKey), day.speechSeconds},
            {QString(wordsKey), day.words}};
}

} // namespace

Result<QByteArray, QString> encodeStatistics(const QList<DailyStat>& days)
{
    QJsonArray array;
    for (const DailyStat& day : days) {
        const QDateTime date = day.date.toUTC();
        if (!date.isValid() || date.date().year() < 1 || date.date().year() > 9999)
            return failure(QStringLiteral("a date lies outside the years that the file can hold"));
        if (!std::isfinite(day.speechSeconds))
            return failure(QStringLiteral("the seconds of speech are not a finite number"));
        array.append(objectOf(day, date.toString(Qt::ISODate)));
    }
    // An object of the library keeps its keys sorted.
    const QJsonObject object{{QString(daysKey), array}, {QString(versionKey), version}};
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<QList<DailyStat>> decodeStatistics(const QByteArray& bytes)
{
    const QJsonObject object = QJsonDocument::fromJson(bytes).object();
    const QJsonValue list = object.value(daysKey);
    if (!list.isArray() || !object.value(versionKey).isDouble())
        return std::nullopt;
    QList<DailyStat> days;
    for (const QJsonValue entry : list.toArray()) {
        const auto day = dayOf(entry);
        if (!day)
            return std::nullopt;
        days.append(*day);
    }
    return days;
}

} // namespace tulvane
