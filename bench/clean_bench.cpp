// cleanTranscript per megabyte, beside the four noise patterns alone.
#include <speech/CleanTranscript.h>

#include <QRegularExpression>

#include <benchmark/benchmark.h>

#include <array>

namespace {

QString megabyteOfSpeech()
{
    const QString take =
        QStringLiteral(" Vi møtes klokka ti i morgen, (Latter) og da tar vi med kaffe. [Musikk]\n"
                       " So the (aside) meeting ends at noon. <|nospeech|> ♪♪  Ha det bra!\n\n");
    return take.repeated(1'000'000 / take.toUtf8().size());
}

void report(benchmark::State& state, const QString& text)
{
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * text.toUtf8().size());
}

void wholeCleanup(benchmark::State& state)
{
    const QString text = megabyteOfSpeech();
    for ([[maybe_unused]] auto round : state)
        benchmark::DoNotOptimize(tulvane::cleanTranscript(text, {}));
    report(state, text);
}
BENCHMARK(wholeCleanup)->Unit(benchmark::kMillisecond);

void fourPatternsAlone(benchmark::State& state)
{
    std::array patterns = {
        QRegularExpression(QStringLiteral(R"(\[[^\]]*\])")),
        QRegularExpression(QStringLiteral(R"(<\|[^|]*\|>)")), QRegularExpression(QStringLiteral("♪+")),
        QRegularExpression(QStringLiteral(R"(\((?:musikk|music|latter|laughter|applaus|applause|)"
                                          R"(utydelig|inaudible|stillhet|silence)\))"))};
    for (QRegularExpression& pattern : patterns) {
        pattern.setPatternOptions(QRegularExpression::CaseInsensitiveOption |
                                  QRegularExpression::UseUnicodePropertiesOption);
        pattern.optimize();
    }
    const QString text = megabyteOfSpeech();
    for ([[maybe_unused]] auto round : state) {
        QString cleaned = text;
        for (const QRegularExpression& pattern : patterns)
            cleaned.remove(pattern);
        benchmark::DoNotOptimize(cleaned);
    }
    report(state, text);
}
BENCHMARK(fourPatternsAlone)->Unit(benchmark::kMillisecond);

void onlyOpeningBrackets(benchmark::State& state)
{
    const QString text(1'000'000, u'[');
    for ([[maybe_unused]] auto round : state)
        benchmark::DoNotOptimize(tulvane::cleanTranscript(text, {}));
    report(state, text);
}
BENCHMARK(onlyOpeningBrackets)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
