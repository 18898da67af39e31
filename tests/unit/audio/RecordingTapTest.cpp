#include <audio/RecordingTap.h>

#include <gmock/gmock.h>

#include <cstdlib>
#include <new>

using namespace tulvane;
using ::testing::ElementsAre;

namespace {
/// While set, no allocation of this many bytes or more succeeds.
std::size_t allocationLimit = 0;
} // namespace

// The only way to meet an allocation that fails: the program's own operator new.
void* operator new(std::size_t size)
{
    if (allocationLimit > 0 && size >= allocationLimit)
        throw std::bad_alloc();
    if (void* const memory = std::malloc(size > 0 ? size : 1))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

TEST(RecordingTap, ABufferThatFindsNoMemoryIsDroppedAndTheRestIsKept)
{
    const SystemClock clock;
    const auto buffer = std::make_shared<SampleBuffer>();
    RecordingTap tap(buffer, *SampleConverter::create(16000, 1), clock);
    buffer->reset();
    const std::vector<float> first{0.1F, 0.2F};
    const std::vector<float> large(100000, 0.5F);
    const std::vector<float> last{0.3F};
    tap.process(first);
    allocationLimit = 100000;
    tap.process(large);
    allocationLimit = 0;
    tap.process(last);
    EXPECT_THAT(buffer->take(), ElementsAre(0.1F, 0.2F, 0.3F));
}
