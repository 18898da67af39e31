#include "../dictation/ControllerFixture.h"
#include "Footprint.h"

#include <support/Soak.h>

#include <algorithm>

namespace tulvane::test {

namespace {

using namespace std::chrono_literals;

/// Dictation after dictation over the fakes, which forget what they have noted.
class DictationSoak : public ControllerFixture {
protected:
    /// Most end in the field; the others are abandoned, silent, or fail.
    void one(int number)
    {
        boards.generalBoard.tellReads();
        engine.transcribeError =
            number % 10 == 7 ? std::optional(EngineError::transcriptionFailed(-7)) : std::nullopt;
        engine.text = QStringLiteral(" dette er tekst nummer %1").arg(number);
        press();
        speak(16000, number % 10 == 5 ? 0.0F : 0.5F);
        if (number % 10 == 3)
            controller->cancel();
        else
            press();
        if (isInserted(number)) {
            ASSERT_EQ(phase(), QStringLiteral("inserting")) << number;
            boards.generalBoard.frontProgramReads();
        }
        settle();
        advance(10s);
        ASSERT_EQ(phase(), QStringLiteral("idle")) << number;
        ASSERT_FALSE(input.hasTap()) << number;
        forget();
    }
    [[nodiscard]] static bool isInserted(int number) { return number % 2 == 0; }

    /// The processor time below which 95 % of so many dictations stay.
    double slowOnes(int count)
    {
        std::vector<double> times;
        for (int i = 0; i < count; ++i, ++m_number) {
            const double begun = processorTime();
            one(m_number);
            if (isInserted(m_number))
                times.push_back(processorTime() - begun);
        }
        std::ranges::sort(times);
        return times.at(times.size() * 95 / 100);
    }

private:
    void forget()
    {
        input.forgetCalls();
        keys.forget();
        engine.transcriptions.clear();
        engine.loads.clear();
        sounds.played.clear();
        privacy.calls.clear();
        phases.clear();
        log.clear();
    }

    int m_number = 0;
};

TEST_F(DictationSoak, LeavesNothingBehindAndBecomesNoSlower)
{
    const int count = soakCount(1'500, 10'000);
    const int window = count / 10;
    std::ignore = slowOnes(window); // what is made once is made, the history is full
    const Footprint before = Footprint::now();
    const double early = slowOnes(window);
    std::ignore = slowOnes(count - 3 * window);
    double late = slowOnes(window);
    // What has become slower stays so; what another program has slowed down does not.
    for (int again = 0; again < 4 && late > 1.1 * early; ++again)
        late = slowOnes(window);
    const Footprint after = Footprint::now();

    std::printf("%d dictations: heap %zu -> %zu bytes, resident %zu -> %zu kB, descriptors %lld -> %lld, "
                "threads %lld -> %lld, p95 %.3f -> %.3f ms\n",
                count, before.heap, after.heap, before.resident / 1024, after.resident / 1024,
                static_cast<long long>(before.descriptors), static_cast<long long>(after.descriptors),
                static_cast<long long>(before.threads), static_cast<long long>(after.threads), early, late);
    EXPECT_LT(static_cast<double>(after.resident), 1.02 * static_cast<double>(before.resident));
    // Nothing takes less than 32 bytes, and every second dictation ends in the field.
    EXPECT_LT(after.heap, before.heap + 16 * static_cast<std::size_t>(count - 2 * window));
    EXPECT_EQ(after.descriptors, before.descriptors);
    EXPECT_EQ(after.threads, before.threads);
    EXPECT_LE(late, 1.1 * early);
    EXPECT_FALSE(input.isOpen());
    EXPECT_TRUE(scheduler.pending().empty());
}

} // namespace

} // namespace tulvane::test
