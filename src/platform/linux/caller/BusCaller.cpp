#include <platform/linux/caller/BusCaller.h>
#include <platform/linux/caller/BusMessages.h>
#include <platform/linux/caller/RemoteNames.h>

#include <QJsonDocument>

#include <array>
#include <chrono>

namespace tulvane {

namespace {

constexpr std::chrono::milliseconds longestWait{5000};
constexpr std::uint32_t greeting = 1;

QByteArray bytesOf(QLatin1StringView text)
{
    return {text.data(), text.size()};
}

BusCall greetingCall()
{
    return {.destination = "org.freedesktop.DBus",
            .path = "/org/freedesktop/DBus",
            .interface = "org.freedesktop.DBus",
            .member = "Hello",
            .argument = {}};
}

bool takesArgument(RemoteRequest request)
{
    return request == RemoteRequest::activate || request == RemoteRequest::settings;
}

Result<QJsonObject, RemoteError> read(const BusMessage& message)
{
    if (message.type == BusMessage::Type::error) {
        const bool isAbsent = message.errorName == "org.freedesktop.DBus.Error.ServiceUnknown" ||
                              message.errorName == "org.freedesktop.DBus.Error.NameHasNoOwner";
        return failure(isAbsent ? RemoteError::notRunning : RemoteError::noAnswer);
    }
    const QJsonDocument document = QJsonDocument::fromJson(message.text.value_or(QByteArray()));
    if (!document.isObject())
        return failure(RemoteError::noAnswer);
    return document.object();
}

} // namespace

std::unique_ptr<BusCaller> BusCaller::open(const QByteArrayList& sockets)
{
    const QDeadlineTimer end(longestWait);
    for (const QByteArray& place : sockets) {
        auto socket = BusSocket::open(place, end);
        // Its answer, which says our name there, comes before all others and is passed over.
        if (socket && socket->send(busMessages::encoded(greetingCall(), greeting), end))
            return std::make_unique<BusCaller>(std::move(socket));
    }
    return nullptr;
}

QFuture<BusCaller::Answered> BusCaller::ask(RemoteRequest request, const QString& argument)
{
    return QtFuture::makeReadyFuture<Answered>(answer(request, argument));
}

BusCaller::Answered BusCaller::answer(RemoteRequest request, const QString& argument)
{
    const QDeadlineTimer end(longestWait);
    const std::uint32_t number = ++m_lastNumber;
    const BusCall call{.destination = bytesOf(remoteNames::service),
                       .path = bytesOf(remoteNames::path),
                       .interface = bytesOf(remoteNames::service),
                       .member = bytesOf(remoteNames::methodOf(request)),
                       .argument = takesArgument(request) ? std::optional(argument.toUtf8()) : std::nullopt};
    bool isGoingOn = m_socket->send(busMessages::encoded(call, number), end);
    while (isGoingOn) {
        const auto bytes = m_socket->receive(end);
        const auto message = bytes ? busMessages::decoded(*bytes) : std::nullopt;
        if (message && message->answers == number)
            return read(*message);
        isGoingOn = message.has_value();
    }
    return failure(m_socket->isOpen() ? RemoteError::noAnswer : RemoteError::noConnection);
}

} // namespace tulvane
