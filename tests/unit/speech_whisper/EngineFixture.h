#pragma once

#include <platform/fake/FakeSystemMemory.h>
#include <speech/whisper/WhisperEngine.h>
#include <support/Await.h>
#include <support/LogCapture.h>
#include <support/Paths.h>
#include <support/ScratchFolder.h>

#include <gtest/gtest.h>

namespace tulvane::test {

/// An engine over the real library, with its log kept and as much memory as a test says.
class EngineTest : public ::testing::Test {
protected:
    using Loaded = Recognizer::Loaded;
    using Text = Result<QString, EngineError>;

    Loaded load(const QString& file) { return await(m_engine->load(file)); }
    void unload()
    {
        EXPECT_TRUE(await(m_engine->unload().then([] { return true; })));
    }
    Loaded loadDemo() { return load(demo()); }
    Text transcribe(std::vector<float> samples,
                    const TranscriptionOptions& options = {.language = u"no"_qs, .threadCount = 1})
    {
        const auto recognised = await(begin(std::move(samples), options), std::chrono::seconds(100));
        if (!recognised)
            return failure(recognised.error());
        m_language = recognised->language;
        return recognised->text;
    }
    QFuture<Recognizer::Recognised> begin(std::vector<float> samples, const TranscriptionOptions& options)
    {
        return m_engine->transcribe(std::make_shared<const std::vector<float>>(std::move(samples)), options);
    }
    QString loadedModel() { return await(m_engine->loadedModel()); }
    [[nodiscard]] QStringList milestones() const { return m_log.texts("whisper", QtInfoMsg); }

    [[nodiscard]] static QString demo() { return test::demoModelPath(); }
    [[nodiscard]] static std::vector<float> silence(double seconds)
    {
        return std::vector<float>(static_cast<std::size_t>(seconds * 16'000), 0.0F);
    }

    LogCapture m_log;
    QString m_language; ///< of the last transcription
    ScratchFolder m_folder;
    FakeSystemMemory m_memory;
    // Where the release build for one machine finds nothing, and a portable build would find its backends.
    QString m_backends = m_folder.file(u"backends"_qs);
    std::unique_ptr<WhisperEngine> m_engine = std::make_unique<WhisperEngine>(m_backends, m_memory);
};

} // namespace tulvane::test
