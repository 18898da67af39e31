#include <platform/linux/transfers/TransferMessages.h>

#include <array>
#include <utility>

namespace tulvane::transfers {

namespace {

using Kind = TransferError::Kind;
constexpr std::array kinds{
    std::pair{Kind::cancelled, "cancelled"},           std::pair{Kind::timedOut, "timedOut"},
    std::pair{Kind::hostNotFound, "hostNotFound"},     std::pair{Kind::cannotConnect, "cannotConnect"},
    std::pair{Kind::connectionLost, "connectionLost"}, std::pair{Kind::insecure, "insecure"},
    std::pair{Kind::badAnswer, "badAnswer"},           std::pair{Kind::noSpace, "noSpace"},
    std::pair{Kind::notWritten, "notWritten"},         std::pair{Kind::alreadyRunning, "alreadyRunning"},
    std::pair{Kind::unavailable, "unavailable"},
};

} // namespace

QJsonObject message(const char* op)
{
    return {{QStringLiteral("op"), QString::fromLatin1(op)}};
}

QJsonObject message(const char* op, const QString& key)
{
    return {{QStringLiteral("op"), QString::fromLatin1(op)}, {QStringLiteral("key"), key}};
}

QJsonObject startMessage(const TransferRequest& request)
{
    QJsonObject words = message("start");
    words.insert(QStringLiteral("url"), QString::fromLatin1(request.url.toEncoded()));
    words.insert(QStringLiteral("userAgent"), QString::fromUtf8(request.userAgent));
    words.insert(QStringLiteral("sizeHint"), request.sizeHint);
    return words;
}

std::optional<TransferRequest> requestIn(const QJsonObject& message)
{
    TransferRequest request;
    request.url = QUrl::fromEncoded(message.value(u"url").toString().toLatin1(), QUrl::StrictMode);
    request.userAgent = message.value(u"userAgent").toString().toUtf8();
    request.sizeHint = numberIn(message, "sizeHint", 0);
    if (!request.url.isValid())
        return std::nullopt;
    return request;
}

QJsonObject completedMessage(const QString& key, const std::optional<TransferError>& error)
{
    QJsonObject words = message("completed", key);
    if (!error)
        return words;
    for (const auto& [kind, name] : kinds) {
        if (kind == error->kind())
            words.insert(QStringLiteral("error"), QString::fromLatin1(name));
    }
    words.insert(QStringLiteral("detail"), error->detail());
    words.insert(QStringLiteral("resume"), QString::fromUtf8(error->resumeData()));
    return words;
}

std::optional<TransferError> errorIn(const QJsonObject& message)
{
    const QJsonValue wanted = message.value(u"error");
    if (wanted.isUndefined())
        return std::nullopt;
    Kind found = Kind::badAnswer;
    for (const auto& [kind, name] : kinds) {
        if (wanted.toString() == QLatin1String(name))
            found = kind;
    }
    return TransferError(found, message.value(u"detail").toString())
        .withResumeData(message.value(u"resume").toString().toUtf8());
}

qint64 numberIn(const QJsonObject& message, const char* key, qint64 otherwise)
{
    return message.value(QLatin1String(key)).toInteger(otherwise);
}

} // namespace tulvane::transfers
