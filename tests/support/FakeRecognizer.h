#pragma once

#include <speech/Recognizer.h>

#include <QPromise>

#include <deque>
#include <memory>

namespace tulvane::test {

/// A recogniser whose jobs end when the test says so, in the order of the calls; `isPrompt` makes them end at
/// once. It keeps what it was asked.
class FakeRecognizer final : public Recognizer {
public:
    struct Transcription {
        Samples samples;
        TranscriptionOptions options;
    };

    FakeRecognizer() = default;
    /// Every job is answered, like the engine's.
    ~FakeRecognizer() override
    {
        while (waiting() > 0)
            step();
    }
    FakeRecognizer(const FakeRecognizer&) = delete;
    FakeRecognizer& operator=(const FakeRecognizer&) = delete;

    bool isPrompt = true;
    QString text = QStringLiteral(" hei på deg");
    std::optional<EngineError> loadError;
    std::optional<EngineError> transcribeError;
    std::optional<QString> model;
    QStringList loads;
    std::vector<Transcription> transcriptions;

    [[nodiscard]] QFuture<QString> loadedModel() override
    {
        return enqueue<QString>([this] { return model.value_or(QString()); });
    }

    [[nodiscard]] QFuture<Loaded> load(const QString& file) override
    {
        loads.append(file);
        return enqueue<Loaded>([this, file]() -> Loaded {
            model = loadError ? std::nullopt : std::optional(file);
            if (loadError)
                return failure(*loadError);
            return {};
        });
    }

    [[nodiscard]] QFuture<Recognised> transcribe(Samples samples,
                                                 const TranscriptionOptions& options) override
    {
        transcriptions.push_back({std::move(samples), options});
        return enqueue<Recognised>([this]() -> Recognised {
            if (transcribeError)
                return failure(*transcribeError);
            return RecognisedText{.text = text, .language = QStringLiteral("no")};
        });
    }

    /// How many jobs wait.
    [[nodiscard]] std::size_t waiting() const { return m_jobs.size(); }

    /// Ends the oldest job.
    void step()
    {
        const auto job = std::move(m_jobs.front());
        m_jobs.pop_front();
        job();
    }

private:
    template <class T, class Work>
    QFuture<T> enqueue(Work work)
    {
        auto promise = std::make_shared<QPromise<T>>();
        promise->start();
        auto job = [promise, work] {
            promise->addResult(work());
            promise->finish();
        };
        if (isPrompt && m_jobs.empty())
            job();
        else
            m_jobs.emplace_back(job);
        return promise->future();
    }

    std::deque<std::function<void()>> m_jobs;
};

} // namespace tulvane::test
