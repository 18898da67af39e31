#include <speech/whisper/WhisperParameters.h>

#include <gtest/gtest.h>

#include <cstring>

namespace tulvane {
namespace {

WhisperParameters parametersFor(const TranscriptionOptions& options)
{
    auto parameters = WhisperParameters::from(options);
    EXPECT_TRUE(parameters.has_value());
    return *std::move(parameters);
}

TEST(WhisperParameters, setsEachFieldThatItShould)
{
    const auto parameters = parametersFor(
        {.language = u"nn"_qs, .initialPrompt = u"Kari Åse"_qs, .threadCount = 7, .translate = true});
    const whisper_full_params params = parameters.forLibrary();
    EXPECT_EQ(params.strategy, WHISPER_SAMPLING_GREEDY);
    EXPECT_EQ(params.n_threads, 7);
    EXPECT_EQ(params.offset_ms, 0);
    EXPECT_TRUE(params.translate);
    EXPECT_TRUE(params.no_context);
    EXPECT_TRUE(params.no_timestamps);
    EXPECT_FALSE(params.single_segment);
    EXPECT_FALSE(params.print_special);
    EXPECT_FALSE(params.print_progress);
    EXPECT_FALSE(params.print_realtime);
    EXPECT_FALSE(params.print_timestamps);
    EXPECT_STREQ(params.initial_prompt, "Kari \xc3\x85se");
    EXPECT_STREQ(params.language, "nn");
    EXPECT_FALSE(params.detect_language);
    EXPECT_TRUE(params.suppress_blank);
    EXPECT_TRUE(params.suppress_nst);
    EXPECT_FLOAT_EQ(params.temperature_inc, 0.2F);
}

TEST(WhisperParameters, leavesEveryOtherFieldAtTheLibrarysDefault)
{
    const auto parameters =
        parametersFor({.language = u"no"_qs, .initialPrompt = u"Kari"_qs, .threadCount = 3});
    const whisper_full_params params = parameters.forLibrary();
    const whisper_full_params defaults = whisper_full_default_params(WHISPER_SAMPLING_GREEDY);
    EXPECT_FALSE(params.translate);
    EXPECT_EQ(params.n_max_text_ctx, defaults.n_max_text_ctx);
    EXPECT_EQ(params.duration_ms, defaults.duration_ms);
    EXPECT_EQ(params.token_timestamps, defaults.token_timestamps);
    EXPECT_EQ(params.max_len, defaults.max_len);
    EXPECT_EQ(params.split_on_word, defaults.split_on_word);
    EXPECT_EQ(params.max_tokens, defaults.max_tokens);
    EXPECT_EQ(params.debug_mode, defaults.debug_mode);
    EXPECT_EQ(params.audio_ctx, defaults.audio_ctx);
    EXPECT_EQ(params.tdrz_enable, defaults.tdrz_enable);
    EXPECT_EQ(params.suppress_regex, defaults.suppress_regex);
    EXPECT_EQ(params.carry_initial_prompt, defaults.carry_initial_prompt);
    EXPECT_EQ(params.prompt_tokens, defaults.prompt_tokens);
    EXPECT_EQ(params.prompt_n_tokens, defaults.prompt_n_tokens);
    EXPECT_EQ(params.temperature, defaults.temperature);
    EXPECT_EQ(params.max_initial_ts, defaults.max_initial_ts);
    EXPECT_EQ(params.length_penalty, defaults.length_penalty);
    EXPECT_EQ(params.temperature_inc, defaults.temperature_inc);
    EXPECT_EQ(params.entropy_thold, defaults.entropy_thold);
    EXPECT_EQ(params.logprob_thold, defaults.logprob_thold);
    EXPECT_EQ(params.no_speech_thold, defaults.no_speech_thold);
    EXPECT_EQ(params.greedy.best_of, defaults.greedy.best_of);
    EXPECT_EQ(params.beam_search.beam_size, defaults.beam_search.beam_size);
    EXPECT_EQ(params.new_segment_callback, defaults.new_segment_callback);
    EXPECT_EQ(params.progress_callback, defaults.progress_callback);
    EXPECT_EQ(params.encoder_begin_callback, defaults.encoder_begin_callback);
    EXPECT_EQ(params.abort_callback, defaults.abort_callback);
    EXPECT_EQ(params.logits_filter_callback, defaults.logits_filter_callback);
    EXPECT_EQ(params.grammar_rules, defaults.grammar_rules);
    EXPECT_EQ(params.vad, defaults.vad);
}

TEST(WhisperParameters, setsNoPromptWhereThereIsNone)
{
    EXPECT_EQ(parametersFor({}).forLibrary().initial_prompt, nullptr);
    for (const QString& empty : {u""_qs, u"  "_qs, u" \n\t\r\n "_qs, u"\u00a0\u2003\u3000"_qs, QString()})
        EXPECT_EQ(parametersFor({.initialPrompt = empty}).forLibrary().initial_prompt, nullptr);
}

TEST(WhisperParameters, trimsThePromptAtItsEndsOnly)
{
    EXPECT_STREQ(parametersFor({.initialPrompt = u" \n Ås,  Bø \t"_qs}).forLibrary().initial_prompt,
                 "\xc3\x85s,  B\xc3\xb8");
}

TEST(WhisperParameters, keepsAPromptWholeAcrossACharacterOfNoWidthInC)
{
    EXPECT_STREQ(parametersFor({.initialPrompt = QString(u"a"_qs + QChar::Null + u"b"_qs)})
                     .forLibrary()
                     .initial_prompt,
                 "ab");
}

TEST(WhisperParameters, keepsItsTextsWhenItIsMovedAndTheOptionsAreGone)
{
    auto parameters = std::make_unique<WhisperParameters>(parametersFor(
        {.language = u"a language that is long enough for the heap"_qs, .initialPrompt = u"Kari"_qs}));
    const WhisperParameters moved = std::move(*parameters);
    parameters.reset();
    EXPECT_STREQ(moved.forLibrary().language, "a language that is long enough for the heap");
    EXPECT_STREQ(moved.forLibrary().initial_prompt, "Kari");
}

TEST(WhisperParameters, failsWhereTheLanguageIsNoCString)
{
    const auto parameters = WhisperParameters::from({.language = QString(u"no"_qs + QChar::Null)});
    ASSERT_FALSE(parameters.has_value());
    EXPECT_EQ(parameters.error(), EngineError::transcriptionFailed(-1));
}

TEST(WhisperParameters, bringsTheThreadCountIntoWhatTheLibraryBears)
{
    const std::pair<qint64, int> expected[] = {
        {-2147483648LL, 1}, {-1, 1}, {0, 1}, {1, 1}, {8, 8}, {512, 512}, {513, 512}, {2147483647, 512}};
    for (const auto& [asked, given] : expected)
        EXPECT_EQ(parametersFor({.threadCount = asked}).forLibrary().n_threads, given) << asked;
}

TEST(WhisperParametersDeathTest, stopsAtAThreadCountBeyondThirtyTwoBits)
{
    EXPECT_DEATH((void)WhisperParameters::from({.threadCount = 2147483648LL}), "does not fit in 32 bits");
    EXPECT_DEATH((void)WhisperParameters::from({.threadCount = -2147483649LL}), "does not fit in 32 bits");
}

} // namespace
} // namespace tulvane
