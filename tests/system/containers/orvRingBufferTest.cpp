#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <thread>
#include <type_traits>
#include <vector>

#include "system/containers/orvMPMC_RingBuffer.h"
#include "system/containers/orvSPSC_RingBuffer.h"

namespace
{

/// A ring of either kind on a block of its own.
template <typename Ring>
struct RingOnHeap
{
    explicit RingOnHeap(size_t count) : block(Ring::getBufferSizeToAllocate(count) / sizeof(uint64_t))
    {
        ring.initialize(block.data(), block.size() * sizeof(uint64_t), count);
    }
    ~RingOnHeap() { ring.uninitialize(); }

    std::vector<uint64_t> block;
    Ring ring;
};

template <typename Ring>
class BothRingsTest : public ::testing::Test
{
};
using RingTypes = ::testing::Types<orv::SPSC_RingBuffer<uint64_t>, orv::MPMC_RingBuffer<uint64_t>>;
TYPED_TEST_SUITE(BothRingsTest, RingTypes);

TYPED_TEST(BothRingsTest, SizeIsZeroUnlessThePowerOfTwoFitsIn32Bits)
{
    EXPECT_EQ(0u, TypeParam::getBufferSizeToAllocate(1000));
    EXPECT_EQ(0u, TypeParam::getBufferSizeToAllocate(static_cast<size_t>(1) << 32));
    EXPECT_EQ(TypeParam::getBufferSizeToAllocate(2) * 512, TypeParam::getBufferSizeToAllocate(1024));
}

TYPED_TEST(BothRingsTest, RingOfTwoHoldsTwoAndKeepsTheOrderOverManyLaps)
{
    RingOnHeap<TypeParam> heap(2);
    TypeParam& ring = heap.ring;
    EXPECT_TRUE(ring.wasEmpty());
    uint64_t next = 0;
    uint64_t value = 0;
    for (uint64_t expected = 0; expected < 1000; ++expected)
    {
        while (ring.try_push(next))
        {
            ++next;
        }
        ASSERT_EQ(expected + 2, next);
        ASSERT_TRUE(ring.try_pop(value));
        ASSERT_EQ(expected, value);
    }
    EXPECT_TRUE(ring.try_pop(value));
    EXPECT_EQ(1000u, value);
    EXPECT_FALSE(ring.try_pop(value));
    EXPECT_TRUE(ring.wasEmpty());
}

/// Pushes first, first + 1, ... count items, yielding whenever the ring is full.
template <typename Ring>
void produce(Ring& ring, uint64_t first, uint64_t count)
{
    for (uint64_t i = first; i < first + count; ++i)
    {
        while (!ring.try_push(i))
        {
            std::this_thread::yield();
        }
    }
}

/// Pops until remaining reaches 0, appending each item to received, yielding whenever the ring is empty.
template <typename Ring>
void consume(Ring& ring, std::atomic<uint64_t>& remaining, std::vector<uint64_t>& received)
{
    for (uint64_t value = 0; remaining.load() > 0;)
    {
        if (ring.try_pop(value))
        {
            received.push_back(value);
            remaining.fetch_sub(1);
        }
        else
        {
            std::this_thread::yield();
        }
    }
}

TYPED_TEST(BothRingsTest, EveryItemIsPoppedOnceAndEachProducerStaysInOrder)
{
    // The single-producer ring gets one producer and one consumer, the other kind two of each.
    const uint64_t pairs = std::is_same<TypeParam, orv::SPSC_RingBuffer<uint64_t>>::value ? 1 : 2;
    RingOnHeap<TypeParam> heap(16);
    // Producer p pushes p * span + 0, 1, 2 ...
    constexpr uint64_t span = 50000;
    std::atomic<uint64_t> remaining(pairs * span);
    std::vector<std::vector<uint64_t>> received(pairs);
    std::vector<std::thread> threads;
    for (uint64_t p = 0; p < pairs; ++p)
    {
        threads.emplace_back([&heap, p] { produce(heap.ring, p * span, span); });
        threads.emplace_back([&heap, &remaining, &received, p] { consume(heap.ring, remaining, received[p]); });
    }
    for (std::thread& thread : threads)
    {
        thread.join();
    }
    std::vector<int> seen(pairs * span, 0);
    for (const std::vector<uint64_t>& values : received)
    {
        // The lowest value each producer may still send to this consumer.
        uint64_t next[2] = {0, span};
        for (uint64_t value : values)
        {
            ASSERT_LE(next[value / span], value);
            next[value / span] = value + 1;
            ++seen[value];
        }
    }
    EXPECT_EQ(std::vector<int>(pairs * span, 1), seen);
    EXPECT_TRUE(heap.ring.wasEmpty());
}

template <typename Ring>
class BothRingsDeathTest : public ::testing::Test
{
};
TYPED_TEST_SUITE(BothRingsDeathTest, RingTypes);

TYPED_TEST(BothRingsDeathTest, BadCountsAndBuffersAreFatal)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(TypeParam::getBufferSizeToAllocate(1), "elementCountMax >= 2");
    TypeParam ring;
    EXPECT_DEATH(ring.initialize(nullptr, 64, 4), "buffer != NULL");
    char block[1024];
    EXPECT_DEATH(ring.initialize(block, 8, 4),
                 "bufferSize > 0 && bufferSize == getBufferSizeToAllocate\\(elementCountMax\\)");
    EXPECT_DEATH(ring.initialize(block, 0, 3), "bufferSize > 0");
}

} // namespace
