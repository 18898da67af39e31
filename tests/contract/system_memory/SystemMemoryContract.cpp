// What every adapter of the port must hold to.
#include <platform/fake/FakeSystemMemory.h>
#ifdef TULVANE_HAS_PROCESS_MEMORY
#include <platform/linux/process/ProcessMemory.h>
#endif

#include <gtest/gtest.h>

#include <memory>

namespace tulvane {
namespace {

template <class Memory>
class SystemMemoryContract : public ::testing::Test {
protected:
    std::unique_ptr<SystemMemory> m_memory = std::make_unique<Memory>();
};

#ifdef TULVANE_HAS_PROCESS_MEMORY
using Backends = ::testing::Types<FakeSystemMemory, ProcessMemory>;
#else
using Backends = ::testing::Types<FakeSystemMemory>;
#endif
TYPED_TEST_SUITE(SystemMemoryContract, Backends);

TYPED_TEST(SystemMemoryContract, thereIsSomeMemory)
{
    EXPECT_GT(this->m_memory->available(), 10'000'000);
}

TYPED_TEST(SystemMemoryContract, whatIsLittleCanBeReserved)
{
    EXPECT_TRUE(this->m_memory->canReserve(0));
    EXPECT_TRUE(this->m_memory->canReserve(-1));
    EXPECT_TRUE(this->m_memory->canReserve(1));
    EXPECT_TRUE(this->m_memory->canReserve(1'000'000));
}

TYPED_TEST(SystemMemoryContract, reservingTakesNothing)
{
    for (int i = 0; i < 100'000; ++i)
        ASSERT_TRUE(this->m_memory->canReserve(10'000'000));
}

} // namespace
} // namespace tulvane
