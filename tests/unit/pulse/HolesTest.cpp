#include <platform/linux/pulse/Fragments.h>
#include <platform/linux/pulse/TapFeed.h>

#include <gmock/gmock.h>

#include <deque>
#include <optional>

using namespace tulvane;
using ::testing::ElementsAre;

namespace {

using Samples = std::vector<float>;

/// A recording stream with these fragments ready.
class ScriptedStream {
public:
    struct Fragment {
        Samples samples;
        std::size_t holeSamples = 0; ///< so many, lost, where there are none
    };

    static Fragment sound(Samples samples) { return {std::move(samples), 0}; }
    static Fragment hole(std::size_t samples) { return {{}, samples}; }

    explicit ScriptedStream(std::deque<Fragment> fragments) : m_fragments(std::move(fragments)) {}

    [[nodiscard]] std::size_t readableSize() const { return m_fragments.empty() ? 0 : 1; }
    bool peek(const void** data, std::size_t* bytes)
    {
        if (breaks)
            return false;
        const Samples& samples = m_fragments.front().samples;
        *data = samples.empty() ? nullptr : samples.data();
        *bytes = size();
        return true;
    }
    void drop() { m_fragments.pop_front(); }
    [[nodiscard]] std::size_t left() const { return m_fragments.size(); }

    bool breaks = false;

private:
    [[nodiscard]] std::size_t size() const
    {
        const Fragment& first = m_fragments.front();
        return sizeof(float) * (first.samples.empty() ? first.holeSamples : first.samples.size());
    }

    std::deque<Fragment> m_fragments;
};

using Fragments = std::deque<ScriptedStream::Fragment>;

class Holes : public testing::Test {
protected:
    /// What the tap gets of it, a list a call.
    std::vector<Samples> heard(ScriptedStream& stream)
    {
        std::vector<Samples> buffers;
        m_feed.install(
            4, [&](std::span<const float> buffer) { buffers.emplace_back(buffer.begin(), buffer.end()); });
        takeFragments(stream, [&](const void* data, std::size_t bytes) { m_feed.deliver(data, bytes); });
        m_feed.remove();
        return buffers;
    }

    TapFeed m_feed;
};

} // namespace

TEST_F(Holes, AreSilenceOfTheirLengthBetweenWhatWasHeard)
{
    ScriptedStream stream(
        Fragments{ScriptedStream::sound({1, 2}), ScriptedStream::hole(3), ScriptedStream::sound({5})});
    EXPECT_THAT(heard(stream), ElementsAre(Samples{1, 2}, Samples{0, 0, 0}, Samples{5}));
    EXPECT_EQ(stream.left(), 0U);
}

TEST_F(Holes, LongerThanABufferComeInSeveral)
{
    ScriptedStream stream(Fragments{ScriptedStream::hole(10), ScriptedStream::sound({1, 2, 3, 4, 5})});
    EXPECT_THAT(heard(stream),
                ElementsAre(Samples(4, 0), Samples(4, 0), Samples(2, 0), Samples{1, 2, 3, 4}, Samples{5}));
}

TEST_F(Holes, AreTakenOutOfTheStreamThoughNobodyListens)
{
    ScriptedStream stream(Fragments{ScriptedStream::hole(3), ScriptedStream::sound({1})});
    takeFragments(stream, [&](const void* data, std::size_t bytes) { m_feed.deliver(data, bytes); });
    EXPECT_EQ(stream.left(), 0U);
}

TEST_F(Holes, AStreamThatCannotBeReadIsLeftAlone)
{
    ScriptedStream broken(Fragments{ScriptedStream::sound({1})});
    broken.breaks = true;
    EXPECT_TRUE(heard(broken).empty());
    EXPECT_EQ(broken.left(), 1U);
    // Readable, and then nothing to read: a drop now would be an error.
    ScriptedStream empty(Fragments{ScriptedStream::hole(0)});
    EXPECT_TRUE(heard(empty).empty());
    EXPECT_EQ(empty.left(), 1U);
}
