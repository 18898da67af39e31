#include <platform/linux/transfers/TransferRecord.h>

#include <QCryptographicHash>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>
#include <utility>

namespace tulvane::transfers {

namespace {

constexpr int keyLength = 16;
// Whole numbers up to here survive JSON's floating point exactly.
constexpr double greatestWhole = 9007199254740992.0;

constexpr std::array states{std::pair{TransferRecord::State::running, "running"},
                            std::pair{TransferRecord::State::paused, "paused"},
                            std::pair{TransferRecord::State::finished, "finished"}};

QString stateText(TransferRecord::State state)
{
    for (const auto& [value, text] : states) {
        if (value == state)
            return QString::fromLatin1(text);
    }
    Q_UNREACHABLE();
}

std::optional<TransferRecord::State> stateFrom(const QString& wanted)
{
    for (const auto& [value, text] : states) {
        if (wanted == QLatin1String(text))
            return value;
    }
    return std::nullopt;
}

std::optional<qint64> wholeNumber(const QJsonObject& object, const char* key, qint64 least,
                                  double greatest = greatestWhole)
{
    const QJsonValue value = object.value(QLatin1String(key));
    const double number = value.toDouble(-greatestWhole);
    if (!value.isDouble() || number < static_cast<double>(least) || number > greatest ||
        number != static_cast<double>(static_cast<qint64>(number)))
        return std::nullopt;
    return static_cast<qint64>(number);
}

/// A header's value must not be able to carry a second header.
bool isHeaderValue(const QByteArray& text)
{
    return !text.contains('\r') && !text.contains('\n') && !text.contains('\0');
}

} // namespace

QString TransferRecord::keyOf(const QUrl& url)
{
    const QByteArray digest = QCryptographicHash::hash(url.toEncoded(), QCryptographicHash::Sha256);
    return QString::fromLatin1(digest.toHex().left(keyLength));
}

TransferRecord TransferRecord::of(const TransferRequest& request)
{
    TransferRecord record;
    record.url = request.url;
    record.userAgent = request.userAgent;
    record.sizeHint = request.sizeHint;
    return record;
}

QByteArray TransferRecord::toJson() const
{
    const QJsonObject object{{QStringLiteral("url"), QString::fromLatin1(url.toEncoded())},
                             {QStringLiteral("userAgent"), QString::fromUtf8(userAgent)},
                             {QStringLiteral("sizeHint"), sizeHint},
                             {QStringLiteral("etag"), QString::fromLatin1(etag)},
                             {QStringLiteral("size"), size},
                             {QStringLiteral("safeBytes"), safeBytes},
                             {QStringLiteral("boot"), QString::fromLatin1(boot)},
                             {QStringLiteral("state"), stateText(state)},
                             {QStringLiteral("httpStatus"), httpStatus},
                             {QStringLiteral("aside"), aside}};
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<TransferRecord> TransferRecord::fromJson(const QByteArray& json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isObject())
        return std::nullopt;
    const QJsonObject object = document.object();
    const auto text = [&object](const char* key) { return object.value(QLatin1String(key)).toString(); };

    TransferRecord record;
    record.url = QUrl::fromEncoded(text("url").toLatin1(), QUrl::StrictMode);
    record.userAgent = text("userAgent").toUtf8();
    record.etag = text("etag").toLatin1();
    record.boot = text("boot").toLatin1();
    record.aside = object.value(u"aside").toBool();
    const auto state = stateFrom(text("state"));
    const auto hint = wholeNumber(object, "sizeHint", 0);
    const auto size = wholeNumber(object, "size", -1);
    const auto safe = wholeNumber(object, "safeBytes", 0);
    const auto status = wholeNumber(object, "httpStatus", 0, TransferRecord::greatestHttpStatus);
    if (!record.url.isValid() || !state || !hint || !size || !safe || !status ||
        !isHeaderValue(record.userAgent) || !isHeaderValue(record.etag))
        return std::nullopt;
    record.state = *state;
    record.sizeHint = *hint;
    record.size = *size;
    record.safeBytes = *safe;
    record.httpStatus = static_cast<int>(*status);
    return record;
}

QByteArray currentBoot()
{
    QFile file(QStringLiteral("/proc/sys/kernel/random/boot_id"));
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
}

} // namespace tulvane::transfers
