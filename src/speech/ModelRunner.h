#pragma once

#include <speech/Recognizer.h>

#include <QString>

#include <vector>

namespace tulvane {

/// What a recogniser does, step by step and on the calling thread, which each call may block for as long as
/// the work takes. It holds at most one loaded model. One object is used by one thread. Nothing is thrown.
class ModelRunner {
public:
    ModelRunner() = default;
    ModelRunner(const ModelRunner&) = delete;
    ModelRunner& operator=(const ModelRunner&) = delete;
    virtual ~ModelRunner() = default;

    /// As `Recognizer::load`.
    [[nodiscard]] virtual Recognizer::Loaded load(const QString& modelFile) = 0;
    virtual void unload() = 0;
    /// As `Recognizer::transcribe`. The model stays loaded, except after a failure that cost it.
    [[nodiscard]] virtual Recognizer::Recognised transcribe(const std::vector<float>& samples,
                                                            const TranscriptionOptions& options) = 0;
    /// The loaded model's file; empty without a model.
    [[nodiscard]] virtual QString loadedModel() const = 0;
};

} // namespace tulvane
