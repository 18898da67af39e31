#pragma once

#include <base/Result.h>
#include <speech/EngineError.h>
#include <speech/TranscriptionOptions.h>

#include <QByteArray>

#include <whisper.h>

namespace tulvane {

/// The library's parameters for one transcription, and the texts that they point to. Any thread.
class WhisperParameters final {
public:
    /// Fails with `transcriptionFailed(textNotCopied)` where the language cannot be made a C string. A thread
    /// count that does not fit in 32 bits is a programming error and stops the process; one below 1, which
    /// the library answers with an exception, is raised to 1, and one beyond what the library has room for is
    /// lowered to that.
    [[nodiscard]] static Result<WhisperParameters, EngineError> from(const TranscriptionOptions& options);

    /// Valid as long as this object lives and is not moved.
    [[nodiscard]] whisper_full_params forLibrary() const;

    [[nodiscard]] const QByteArray& language() const { return m_language; }
    [[nodiscard]] const QByteArray& initialPrompt() const { return m_initialPrompt; }

private:
    WhisperParameters() = default;

    QByteArray m_language;
    QByteArray m_initialPrompt;
    int m_threadCount = 1;
    bool m_translate = false;
};

} // namespace tulvane
