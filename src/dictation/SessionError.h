#pragma once

#include <audio/RecorderError.h>
#include <speech/EngineError.h>

#include <QString>

#include <variant>

namespace tulvane {

/// The session's own reasons for not doing what it was asked.
enum class SessionError {
    microphonePermission,
    modelNotDownloaded,
    notRecording,
};

/// The text that the user reads.
[[nodiscard]] QString description(SessionError error);

/// Everything that can stop a dictation: the session's own errors, and those of the recorder and the
/// recogniser, passed on unchanged.
class DictationError final {
public:
    // Converting is the point: each stage fails with its own error, and the session passes it on.
    DictationError(SessionError error) : m_error(error) {}             // NOLINT(google-explicit-*)
    DictationError(RecorderError error) : m_error(std::move(error)) {} // NOLINT(google-explicit-*)
    DictationError(EngineError error) : m_error(std::move(error)) {}   // NOLINT(google-explicit-*)

    [[nodiscard]] QString description() const;
    [[nodiscard]] bool is(SessionError error) const
    {
        const auto* own = std::get_if<SessionError>(&m_error);
        return own != nullptr && *own == error;
    }

private:
    std::variant<SessionError, RecorderError, EngineError> m_error;
};

} // namespace tulvane
