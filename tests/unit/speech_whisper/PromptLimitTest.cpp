#include <speech/whisper/LibraryLog.h>
#include <speech/whisper/ModelFile.h>
#include <speech/whisper/ModelLoader.h>
#include <speech/whisper/PromptLimit.h>
#include <support/Paths.h>

#include <QElapsedTimer>
#include <QString>

#include <gtest/gtest.h>
#include <whisper.h>

#include <algorithm>
#include <random>

namespace tulvane {
namespace {

constexpr std::size_t tokensUsed = 224;

/// The library's own view of a prompt, by the demo model.
class Tokens final {
public:
    Tokens()
    {
        LibraryLog::install();
        const auto file = openModelFile(test::demoModelPath());
        const std::atomic<bool> closing = false;
        m_context = loadModel(**file, closing);
    }
    Tokens(const Tokens&) = delete;
    Tokens& operator=(const Tokens&) = delete;
    ~Tokens() { whisper_free(m_context); }

    std::vector<whisper_token> lastOf(const QByteArray& text) const
    {
        std::vector<whisper_token> tokens(static_cast<std::size_t>(text.size()) + 1);
        const int count =
            whisper_tokenize(m_context, text.constData(), tokens.data(), static_cast<int>(tokens.size()));
        tokens.resize(static_cast<std::size_t>(count));
        if (tokens.size() > tokensUsed)
            tokens.erase(tokens.begin(), tokens.end() - tokensUsed);
        return tokens;
    }

private:
    whisper_context* m_context = nullptr;
};

QByteArray randomProse(std::mt19937& random, int words)
{
    const QByteArrayList pieces = {"Kari", "blåbær", "don't", "we've", "1905", "10:30",
                                   "Ås,",  "(CO2)",  "«ja»",  "x'y",   "''s",  "ÆØÅ",
                                   "å",    "e.g.",   "😀",    "--",    "a'll", "hei"};
    const QByteArrayList gaps = {" ", " ", " ", " ", "  ", "\n", " \n ", "\t", "", ", ", "\n\n", "   "};
    QByteArray text;
    for (int i = 0; i < words; ++i) {
        text += pieces[static_cast<qsizetype>(random() % static_cast<unsigned>(pieces.size()))];
        text += gaps[static_cast<qsizetype>(random() % static_cast<unsigned>(gaps.size()))];
    }
    return text;
}

TEST(PromptLimit, leavesShortPromptsAsTheyAre)
{
    for (const char* text : {"", "a", " ", "Kari Åse", "a  b\n\nc", "don't"})
        EXPECT_EQ(limitedPrompt(text), text);
    EXPECT_EQ(limitedPrompt(QByteArray(1024, 'x')), QByteArray(1024, 'x'));
}

TEST(PromptLimit, givesTheLibraryTheTokensThatTheWholePromptEndsWith)
{
    const Tokens tokens;
    std::mt19937 random(7);
    int cut = 0;
    for (int round = 0; round < 60; ++round) {
        const QByteArray whole = randomProse(random, 20 + round * 10);
        const QByteArray limited = limitedPrompt(whole);
        EXPECT_TRUE(whole.endsWith(limited));
        EXPECT_EQ(tokens.lastOf(limited), tokens.lastOf(whole)) << whole.constData();
        cut += limited.size() < whole.size() ? 1 : 0;
    }
    EXPECT_GT(cut, 20); // else this has shown nothing
}

TEST(PromptLimit, keepsTheEndOfALongUnbrokenRun)
{
    const QByteArray limited = limitedPrompt(QByteArray(50'000, 'x') + "END");
    EXPECT_EQ(limited.size(), 1024);
    EXPECT_TRUE(limited.endsWith("xEND"));
}

TEST(PromptLimit, keepsWhatItCanOfALongRunBeforeShortWords)
{
    const QByteArray limited = limitedPrompt(QByteArray(50'000, 'x') + " Kari Åse");
    EXPECT_TRUE(limited.endsWith("x Kari Åse"));
    EXPECT_GT(limited.size(), 1000);
    EXPECT_LE(limited.size(), 1024 + 12);
}

TEST(PromptLimit, neverSplitsACharacter)
{
    for (const QString& character : {u"å"_qs, u"€"_qs, u"😀"_qs}) {
        for (int shift = 0; shift < 4; ++shift) {
            const QByteArray whole = character.repeated(20'000).toUtf8() + QByteArray(shift, '!');
            const QByteArray limited = limitedPrompt(whole);
            EXPECT_TRUE(whole.endsWith(limited));
            EXPECT_GE(limited.size(), 1020);
            EXPECT_FALSE(QString::fromUtf8(limited).contains(QChar::ReplacementCharacter));
        }
    }
}

TEST(PromptLimit, boundsTheLibrarysWorkForAnyText)
{
    const QByteArray longWord(900, 'y');
    const QByteArray texts[] = {QByteArray(1'000'000, 'x'),         QByteArray(1'000'000, ' '),
                                QByteArray(1'000'000, '\n'),        QByteArray(longWord + ' ').repeated(1000),
                                QByteArray("a1").repeated(500'000), QByteArray("'").repeated(1'000'000),
                                QByteArray("'t").repeated(500'000), QByteArray("\xc3\xa5").repeated(500'000)};
    for (const QByteArray& text : texts) {
        QElapsedTimer timer;
        timer.start();
        const QByteArray limited = limitedPrompt(text);
        EXPECT_LT(timer.elapsed(), 1000);
        EXPECT_FALSE(limited.isEmpty());
        EXPECT_LE(limited.size(), 16'384);
        EXPECT_TRUE(text.endsWith(limited));
    }
}

TEST(PromptLimit, theLibraryTakesTheLongestTailQuickly)
{
    const Tokens tokens;
    for (const QByteArray& text :
         {QByteArray(50'000, 'x'), QByteArray("ab1!").repeated(12'500), QByteArray(50'000, ' ')}) {
        QElapsedTimer timer;
        timer.start();
        EXPECT_FALSE(tokens.lastOf(limitedPrompt(text)).empty());
        EXPECT_LT(timer.elapsed(), 10'000);
    }
}

} // namespace
} // namespace tulvane
