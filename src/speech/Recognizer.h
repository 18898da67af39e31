#pragma once

#include <base/Result.h>
#include <speech/EngineError.h>
#include <speech/TranscriptionOptions.h>

#include <QFuture>
#include <QString>

#include <memory>
#include <vector>

namespace tulvane {

/// What a recogniser made of one take.
struct RecognisedText {
    QString text;     ///< as the recogniser gives it: not trimmed, empty where it recognised nothing
    QString language; ///< the language code that was used; after "auto" the detected one
};

/// The port to speech recognition. It holds at most one loaded model. Called on the main thread; the work
/// happens on another, one call after the other and in the order of the calls, and every future finishes with
/// a result.
class Recognizer {
public:
    /// Mono, 16,000 a second, nominally between -1 and 1; shared, so that a take can be tried again.
    using Samples = std::shared_ptr<const std::vector<float>>;
    using Loaded = Result<void, EngineError>;
    using Recognised = Result<RecognisedText, EngineError>;

    Recognizer() = default;
    Recognizer(const Recognizer&) = delete;
    Recognizer& operator=(const Recognizer&) = delete;
    virtual ~Recognizer() = default;

    /// The loaded model's file once every earlier call is done; empty without a model.
    [[nodiscard]] virtual QFuture<QString> loadedModel() = 0;
    /// Makes the file the loaded model; nothing happens when it is that already. The earlier model is freed
    /// first, so a failure, `modelLoadFailed`, leaves no model loaded.
    [[nodiscard]] virtual QFuture<Loaded> load(const QString& file) = 0;
    /// Fails with `noModelLoaded` or `transcriptionFailed`; the model stays loaded.
    [[nodiscard]] virtual QFuture<Recognised> transcribe(Samples samples,
                                                         const TranscriptionOptions& options) = 0;
};

} // namespace tulvane
