#include <speech/device/HelperMessages.h>

#include <QDataStream>
#include <QIODevice>

#include <cstring>

namespace tulvane::helper {

namespace {

constexpr auto format = QDataStream::Qt_6_4;

// One pair of functions for each part of a message: written in this order, read in this order.

void write(QDataStream& out, const ListDevices& /*none*/)
{
    Q_UNUSED(out)
}
void write(QDataStream& out, const Unload& /*none*/)
{
    Q_UNUSED(out)
}
void write(QDataStream& out, const Working& /*none*/)
{
    Q_UNUSED(out)
}
void write(QDataStream& out, const Done& /*none*/)
{
    Q_UNUSED(out)
}
void read(QDataStream& in, ListDevices& /*none*/)
{
    Q_UNUSED(in)
}
void read(QDataStream& in, Unload& /*none*/)
{
    Q_UNUSED(in)
}
void read(QDataStream& in, Working& /*none*/)
{
    Q_UNUSED(in)
}
void read(QDataStream& in, Done& /*none*/)
{
    Q_UNUSED(in)
}

void write(QDataStream& out, const Load& load)
{
    out << load.modelFile << load.device;
}

void read(QDataStream& in, Load& load)
{
    in >> load.modelFile >> load.device;
}

void write(QDataStream& out, const Transcribe& transcribe)
{
    const TranscriptionOptions& options = transcribe.options;
    out << options.language << options.initialPrompt.has_value() << options.initialPrompt.value_or(QString())
        << options.threadCount << options.translate;
    out.writeBytes(reinterpret_cast<const char*>(transcribe.samples.data()),
                   static_cast<uint>(transcribe.samples.size() * sizeof(float)));
}

void read(QDataStream& in, Transcribe& transcribe)
{
    TranscriptionOptions& options = transcribe.options;
    bool hasPrompt = false;
    QString prompt;
    QByteArray samples;
    in >> options.language >> hasPrompt >> prompt >> options.threadCount >> options.translate >> samples;
    if (hasPrompt)
        options.initialPrompt = prompt;
    transcribe.samples.resize(static_cast<std::size_t>(samples.size()) / sizeof(float));
    // Neither side of an empty copy may be null.
    if (!transcribe.samples.empty())
        std::memcpy(transcribe.samples.data(), samples.constData(),
                    transcribe.samples.size() * sizeof(float));
}

void write(QDataStream& out, const LogLine& line)
{
    out << line.isError << line.text;
}

void read(QDataStream& in, LogLine& line)
{
    in >> line.isError >> line.text;
}

void write(QDataStream& out, const Devices& all)
{
    out << static_cast<qint32>(all.devices.size());
    for (const ComputingDevice& device : all.devices)
        out << device.index << device.name << static_cast<quint8>(device.kind) << device.driver
            << device.totalBytes << device.freeBytes;
}

void read(QDataStream& in, Devices& all)
{
    qint32 count = 0;
    in >> count;
    for (qint32 i = 0; i < count && in.status() == QDataStream::Ok; ++i) {
        ComputingDevice device;
        quint8 kind = 0;
        in >> device.index >> device.name >> kind >> device.driver >> device.totalBytes >> device.freeBytes;
        device.kind = kind <= quint8(DeviceKind::software) ? DeviceKind(kind) : DeviceKind::other;
        all.devices.append(device);
    }
}

void write(QDataStream& out, const RecognisedText& recognised)
{
    out << recognised.text << recognised.language;
}

void read(QDataStream& in, RecognisedText& recognised)
{
    in >> recognised.text >> recognised.language;
}

void write(QDataStream& out, const EngineError& error)
{
    const EngineObstacle& obstacle = error.obstacle();
    out << static_cast<quint8>(error.kind()) << error.modelFile() << error.code()
        << static_cast<quint8>(obstacle.kind) << obstacle.detail << obstacle.neededBytes
        << obstacle.availableBytes;
}

void read(QDataStream& in, EngineError& error)
{
    quint8 kind = 0;
    QString file;
    qint32 code = 0;
    quint8 obstacleKind = 0;
    EngineObstacle obstacle;
    in >> kind >> file >> code >> obstacleKind >> obstacle.detail >> obstacle.neededBytes >>
        obstacle.availableBytes;
    if (obstacleKind <= quint8(EngineObstacle::Kind::library))
        obstacle.kind = EngineObstacle::Kind(obstacleKind);
    if (kind == quint8(EngineError::Kind::modelLoadFailed))
        error = EngineError::modelLoadFailed(file, obstacle);
    else if (kind == quint8(EngineError::Kind::transcriptionFailed))
        error = EngineError::transcriptionFailed(code, obstacle);
}

template <class T>
T emptyOf()
{
    return T();
}

template <>
EngineError emptyOf<EngineError>()
{
    return EngineError::noModelLoaded();
}

template <class Message>
QByteArray bytesOfAny(const Message& message)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setVersion(format);
    out << static_cast<quint8>(message.index());
    std::visit([&out](const auto& part) { write(out, part); }, message);
    return bytes;
}

/// The message of the alternative `number`, looked for from `Index` on.
template <class Message, std::size_t Index = 0>
std::optional<Message> messageOf(QDataStream& in, std::size_t number)
{
    if constexpr (Index == std::variant_size_v<Message>) {
        return std::nullopt;
    } else {
        if (number != Index)
            return messageOf<Message, Index + 1>(in, number);
        auto part = emptyOf<std::variant_alternative_t<Index, Message>>();
        read(in, part);
        if (in.status() != QDataStream::Ok || !in.atEnd())
            return std::nullopt;
        return Message(std::move(part));
    }
}

template <class Message>
std::optional<Message> anyOf(const QByteArray& bytes)
{
    QDataStream in(bytes);
    in.setVersion(format);
    quint8 number = 0;
    in >> number;
    if (in.status() != QDataStream::Ok)
        return std::nullopt;
    return messageOf<Message>(in, number);
}

} // namespace

QByteArray bytesOf(const Request& request)
{
    return bytesOfAny(request);
}

QByteArray bytesOf(const Answer& answer)
{
    return bytesOfAny(answer);
}

std::optional<Request> requestOf(const QByteArray& bytes)
{
    return anyOf<Request>(bytes);
}

std::optional<Answer> answerOf(const QByteArray& bytes)
{
    return anyOf<Answer>(bytes);
}

} // namespace tulvane::helper
