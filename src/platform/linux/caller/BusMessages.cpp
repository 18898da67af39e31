#include <platform/linux/caller/BusMessages.h>

#include <bit>
#include <cstring>

namespace tulvane {

namespace {

constexpr char byteOrder = std::endian::native == std::endian::little ? 'l' : 'B';
constexpr char version = 1;
constexpr char startsNothing = 2;

enum class Field : char { path = 1, interface, member, errorName, answerTo, destination, sender, signature };

class Writer {
public:
    QByteArray bytes;

    void align(qsizetype size)
    {
        while (bytes.size() % size != 0)
            bytes.append('\0');
    }
    void number(std::uint32_t value)
    {
        align(sizeof value);
        bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    }
    void text(const QByteArray& value)
    {
        number(static_cast<std::uint32_t>(value.size()));
        bytes.append(value).append('\0');
    }
    void field(Field which, char type, const QByteArray& value)
    {
        align(8);
        bytes.append(static_cast<char>(which));
        typeOf(QByteArray(1, type));
        if (type == 'g')
            typeOf(value);
        else
            text(value);
    }

private:
    void typeOf(const QByteArray& value)
    {
        bytes.append(static_cast<char>(value.size())).append(value).append('\0');
    }
};

/// Reads what is there; once something is not, `isWhole` says so and everything is empty.
class Reader {
public:
    Reader(const QByteArray& bytes, qsizetype begin, qsizetype end) : m_bytes(bytes), m_at(begin), m_end(end)
    {
    }

    [[nodiscard]] bool isWhole() const { return m_isWhole; }
    [[nodiscard]] bool atEnd() const { return !m_isWhole || m_at >= m_end; }
    void align(qsizetype size) { (void)take((size - m_at % size) % size); }
    char byte()
    {
        const QByteArray one = take(1);
        return one.isEmpty() ? '\0' : one[0];
    }
    std::uint32_t number()
    {
        std::uint32_t value = 0;
        align(sizeof value);
        const QByteArray bytes = take(sizeof value);
        if (!bytes.isEmpty())
            std::memcpy(&value, bytes.constData(), sizeof value);
        return value;
    }
    QByteArray text() { return endingWithZero(number()); }
    QByteArray typeOf() { return endingWithZero(static_cast<unsigned char>(byte())); }

private:
    QByteArray take(qsizetype count)
    {
        if (!m_isWhole || count > m_end - m_at) {
            m_isWhole = false;
            return {};
        }
        m_at += count;
        return m_bytes.mid(m_at - count, count);
    }
    QByteArray endingWithZero(qsizetype size)
    {
        const QByteArray value = take(size);
        (void)take(1);
        return value;
    }

    const QByteArray& m_bytes;
    qsizetype m_at;
    qsizetype m_end;
    bool m_isWhole = true;
};

std::uint32_t numberAt(const QByteArray& bytes, qsizetype place)
{
    std::uint32_t value = 0;
    std::memcpy(&value, bytes.constData() + place, sizeof value);
    return value;
}

qsizetype endOfFields(const QByteArray& message)
{
    return busMessages::fixedPart + qsizetype{numberAt(message, 12)};
}

constexpr qsizetype padded(qsizetype size)
{
    return (size + 7) / 8 * 8;
}

/// The signature of what follows them; false where a field is of an unknown kind.
bool readFields(Reader& fields, BusMessage& message, QByteArray& body)
{
    while (!fields.atEnd()) {
        fields.align(8);
        const auto which = static_cast<Field>(fields.byte());
        const QByteArray type = fields.typeOf();
        if (type == "s" || type == "o") {
            const QByteArray value = fields.text();
            if (which == Field::errorName)
                message.errorName = value;
        } else if (type == "g") {
            const QByteArray value = fields.typeOf();
            if (which == Field::signature)
                body = value;
        } else if (type == "u") {
            const std::uint32_t value = fields.number();
            if (which == Field::answerTo)
                message.answers = value;
        } else {
            return false;
        }
    }
    return fields.isWhole();
}

} // namespace

QByteArray busMessages::encoded(const BusCall& call, std::uint32_t number)
{
    Writer fields;
    fields.field(Field::path, 'o', call.path);
    fields.field(Field::interface, 's', call.interface);
    fields.field(Field::member, 's', call.member);
    fields.field(Field::destination, 's', call.destination);
    Writer body;
    if (call.argument) {
        fields.field(Field::signature, 'g', "s");
        body.text(*call.argument);
    }
    Writer whole;
    whole.bytes.append(byteOrder).append(static_cast<char>(BusMessage::Type::call));
    whole.bytes.append(startsNothing).append(version);
    whole.number(static_cast<std::uint32_t>(body.bytes.size()));
    whole.number(number);
    whole.number(static_cast<std::uint32_t>(fields.bytes.size()));
    whole.bytes.append(fields.bytes);
    whole.align(8);
    return whole.bytes + body.bytes;
}

std::optional<qsizetype> busMessages::length(const QByteArray& beginning)
{
    if (beginning.size() < fixedPart || beginning[0] != byteOrder || beginning[3] != version)
        return std::nullopt;
    const qsizetype whole = padded(endOfFields(beginning)) + qsizetype{numberAt(beginning, 4)};
    return whole <= longest ? std::optional(whole) : std::nullopt;
}

std::optional<BusMessage> busMessages::decoded(const QByteArray& message)
{
    if (length(message) != message.size())
        return std::nullopt;
    BusMessage read;
    read.type = static_cast<BusMessage::Type>(message[1]);
    QByteArray body;
    Reader fields(message, fixedPart, endOfFields(message));
    if (!readFields(fields, read, body))
        return std::nullopt;
    if (!body.startsWith('s'))
        return read;
    Reader content(message, padded(endOfFields(message)), message.size());
    const QByteArray text = content.text();
    if (!content.isWhole())
        return std::nullopt;
    read.text = text;
    return read;
}

} // namespace tulvane
