#include <platform/linux/sway/SwayMessage.h>

#include <array>
#include <cstring>

namespace tulvane {

namespace {

constexpr QByteArrayView magic{"i3-ipc"};
/// In the machine's own order of bytes: the length of the body, and the type.
using Numbers = std::array<quint32, 2>;
constexpr qsizetype headerSize = magic.size() + static_cast<qsizetype>(sizeof(Numbers));

} // namespace

QByteArray SwayMessage::bytes() const
{
    const Numbers numbers{static_cast<quint32>(body.size()), type};
    return magic.toByteArray() + QByteArray(reinterpret_cast<const char*>(numbers.data()), sizeof numbers) +
           body;
}

std::optional<SwayMessage> SwayMessage::take(QByteArray& bytes)
{
    if (bytes.size() < headerSize)
        return std::nullopt;
    if (!bytes.startsWith(magic)) {
        bytes.clear();
        return std::nullopt;
    }
    Numbers numbers{};
    std::memcpy(numbers.data(), bytes.constData() + magic.size(), sizeof numbers);
    const qsizetype whole = headerSize + static_cast<qsizetype>(numbers[0]);
    if (bytes.size() < whole)
        return std::nullopt;
    SwayMessage message{numbers[1], bytes.mid(headerSize, numbers[0])};
    bytes.remove(0, whole);
    return message;
}

} // namespace tulvane
