#include <speech/ConfinedRunner.h>

#include <QThread>

#include <gtest/gtest.h>
#include <pthread.h>

#include <array>

namespace tulvane {

namespace {

/// Notes on which threads it is used.
class NotingRunner final : public ModelRunner {
public:
    explicit NotingRunner(std::vector<QThread*>& threads) : m_threads(threads) {}
    NotingRunner(const NotingRunner&) = delete;
    NotingRunner& operator=(const NotingRunner&) = delete;
    ~NotingRunner() override { note(); }

    [[nodiscard]] Recognizer::Loaded load(const QString& modelFile) override
    {
        note();
        m_model = modelFile;
        if (modelFile == QStringLiteral("bad"))
            return failure(EngineError::modelLoadFailed(modelFile));
        return {};
    }
    void unload() override
    {
        note();
        m_model.clear();
    }
    [[nodiscard]] Recognizer::Recognised transcribe(const std::vector<float>& samples,
                                                    const TranscriptionOptions& options) override
    {
        note();
        return RecognisedText{.text = QString::number(samples.size()), .language = options.language};
    }
    [[nodiscard]] QString loadedModel() const override
    {
        note();
        return m_model;
    }

private:
    void note() const { m_threads.push_back(QThread::currentThread()); }

    std::vector<QThread*>& m_threads;
    QString m_model;
};

} // namespace

TEST(ConfinedRunner, PassesEachCallOnAndItsAnswerBack)
{
    std::vector<QThread*> threads;
    ConfinedRunner runner(std::make_unique<NotingRunner>(threads), [] {});
    EXPECT_TRUE(runner.load(QStringLiteral("model")));
    EXPECT_EQ(runner.loadedModel(), QStringLiteral("model"));
    const auto text = runner.transcribe({0, 0, 0}, {.language = QStringLiteral("nn"), .threadCount = 1});
    ASSERT_TRUE(text);
    EXPECT_EQ(text->text, QStringLiteral("3"));
    EXPECT_EQ(text->language, QStringLiteral("nn"));
    runner.unload();
    EXPECT_EQ(runner.loadedModel(), QString());
    const auto refused = runner.load(QStringLiteral("bad"));
    ASSERT_FALSE(refused);
    EXPECT_TRUE(refused.error().description().contains(QStringLiteral("bad")));
}

TEST(ConfinedRunner, GivesItsRightsUpOnceAndBeforeAnyWorkOnTheOneThreadThatIsNotTheCallers)
{
    std::vector<QThread*> threads;
    std::vector<QThread*> confined;
    {
        ConfinedRunner runner(std::make_unique<NotingRunner>(threads), [&] {
            EXPECT_TRUE(threads.empty());
            confined.push_back(QThread::currentThread());
            std::array<char, 16> name{};
            ::pthread_getname_np(::pthread_self(), name.data(), name.size());
            EXPECT_STREQ(name.data(), "whisper-model") << "what the system's tools show";
        });
        EXPECT_TRUE(runner.load(QStringLiteral("model")));
        static_cast<void>(runner.transcribe({}, {.language = QStringLiteral("no"), .threadCount = 1}));
        runner.unload();
    }
    ASSERT_EQ(confined.size(), 1U);
    EXPECT_NE(confined.front(), QThread::currentThread());
    // The destruction is the last.
    ASSERT_EQ(threads.size(), 4U);
    for (const QThread* thread : threads)
        EXPECT_EQ(thread, confined.front());
}

} // namespace tulvane
