#pragma once

#include <speech/Recognizer.h>
#include <speech/device/ComputingDevice.h>

#include <QByteArray>

#include <limits>
#include <optional>
#include <variant>
#include <vector>

// What the program and the helper that computes on a device say to each other: the program asks, and the
// helper answers each request once, after any number of signs of life.
namespace tulvane::helper {

/// Stands for the processor where a device's index is expected.
inline constexpr quint32 processor = std::numeric_limits<quint32>::max();

struct ListDevices {};
/// On the device of this index, or on the processor; the helper sticks to the first that it is given.
struct Load {
    QString modelFile;
    quint32 device = 0;
};
struct Transcribe {
    std::vector<float> samples;
    TranscriptionOptions options;
};
struct Unload {};
using Request = std::variant<ListDevices, Load, Transcribe, Unload>;

/// A sign of life, while a request is being worked on.
struct Working {};
/// A line of the speech library's for the log.
struct LogLine {
    bool isError = false;
    QString text;
};
struct Devices {
    ComputingDevices devices;
};
struct Done {};
using Answer = std::variant<Working, LogLine, Devices, Done, RecognisedText, EngineError>;

[[nodiscard]] QByteArray bytesOf(const Request& request);
[[nodiscard]] QByteArray bytesOf(const Answer& answer);
/// None where the bytes are no such message.
[[nodiscard]] std::optional<Request> requestOf(const QByteArray& bytes);
[[nodiscard]] std::optional<Answer> answerOf(const QByteArray& bytes);

} // namespace tulvane::helper
