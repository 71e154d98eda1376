#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <thread>
#include <vector>

#include "system/containers/orvMPMC_RingBuffer.h"
#include "system/containers/orvSPSC_RingBuffer.h"

namespace
{

/// A ring of either kind on a malloc block of its own.
template <typename Ring>
class RingOnHeap
{
public:
    explicit RingOnHeap(size_t count)
    {
        const size_t bytes = Ring::getBufferSizeToAllocate(count);
        _block = malloc(bytes);
        _ring.initialize(_block, bytes, count);
    }
    ~RingOnHeap()
    {
        _ring.uninitialize();
        free(_block);
    }
    Ring& ring() { return _ring; }

private:
    void* _block = nullptr;
    Ring _ring;
};

template <typename Ring>
class BothRingsTest : public ::testing::Test
{
};
using RingTypes = ::testing::Types<orv::SPSC_RingBuffer<uint64_t>, orv::MPMC_RingBuffer<uint64_t>>;
TYPED_TEST_SUITE(BothRingsTest, RingTypes);

TYPED_TEST(BothRingsTest, SizeIsZeroUnlessThePowerOfTwoFitsIn32Bits)
{
    EXPECT_EQ(0u, TypeParam::getBufferSizeToAllocate(3));
    EXPECT_EQ(0u, TypeParam::getBufferSizeToAllocate(1000));
    EXPECT_EQ(0u, TypeParam::getBufferSizeToAllocate(static_cast<size_t>(1) << 32));
    const size_t two = TypeParam::getBufferSizeToAllocate(2);
    EXPECT_GE(two, 2 * sizeof(uint64_t));
    EXPECT_EQ(two * 512, TypeParam::getBufferSizeToAllocate(1024));
}

TYPED_TEST(BothRingsTest, RingOfTwoHoldsTwo)
{
    RingOnHeap<TypeParam> heap(2);
    TypeParam& ring = heap.ring();
    EXPECT_TRUE(ring.wasInitialized());
    EXPECT_TRUE(ring.wasEmpty());
    EXPECT_TRUE(ring.try_push(1));
    EXPECT_TRUE(ring.try_push(2));
    EXPECT_FALSE(ring.try_push(3));
    uint64_t value = 0;
    EXPECT_TRUE(ring.try_pop(value));
    EXPECT_EQ(1u, value);
    EXPECT_TRUE(ring.try_push(3));
    EXPECT_TRUE(ring.try_pop(value));
    EXPECT_EQ(2u, value);
    EXPECT_TRUE(ring.try_pop(value));
    EXPECT_EQ(3u, value);
    EXPECT_FALSE(ring.try_pop(value));
    EXPECT_TRUE(ring.wasEmpty());
}

TYPED_TEST(BothRingsTest, OrderHoldsAcrossManyLaps)
{
    RingOnHeap<TypeParam> heap(8);
    TypeParam& ring = heap.ring();
    uint64_t next = 0;
    uint64_t expected = 0;
    for (int lap = 0; lap < 1000; ++lap)
    {
        while (ring.try_push(next))
        {
            ++next;
        }
        for (int i = 0; i < 5; ++i)
        {
            uint64_t value = 0;
            ASSERT_TRUE(ring.try_pop(value));
            ASSERT_EQ(expected++, value);
        }
    }
    // Each lap fills all 8 slots and takes 5 out, so 3 stay behind.
    EXPECT_EQ(3u, next - expected);
    EXPECT_EQ(8u + 999u * 5u, next);
}

/// Pushes first, first + 1, ... count items, yielding whenever the ring is full.
template <typename Ring>
void produce(Ring& ring, uint64_t first, uint64_t count)
{
    for (uint64_t i = first; i < first + count;)
    {
        if (ring.try_push(i))
        {
            ++i;
        }
        else
        {
            std::this_thread::yield();
        }
    }
}

TEST(SPSC_RingBufferTest, OneConsumerSeesOneProducerInOrder)
{
    RingOnHeap<orv::SPSC_RingBuffer<uint64_t>> heap(64);
    constexpr uint64_t count = 100000;
    std::thread producer([&heap] { produce(heap.ring(), 0, count); });
    for (uint64_t expected = 0, value = 0; expected < count;)
    {
        if (heap.ring().try_pop(value))
        {
            ASSERT_EQ(expected++, value);
        }
        else
        {
            std::this_thread::yield();
        }
    }
    producer.join();
    EXPECT_TRUE(heap.ring().wasEmpty());
}

TEST(MPMC_RingBufferTest, EveryItemIsPoppedOnceAndEachProducerStaysInOrder)
{
    RingOnHeap<orv::MPMC_RingBuffer<uint64_t>> heap(16);
    // Producer p pushes p * span + 0, 1, 2 ...; two producers and two consumers.
    constexpr uint64_t span = 50000;
    std::vector<std::vector<uint64_t>> received(2);
    std::atomic<uint64_t> remaining(2 * span);
    std::vector<std::thread> threads;
    for (uint64_t p = 0; p < 2; ++p)
    {
        threads.emplace_back([&heap, p] { produce(heap.ring(), p * span, span); });
        threads.emplace_back([&heap, &remaining, &received, p] {
            for (uint64_t value = 0; remaining.load() > 0;)
            {
                if (heap.ring().try_pop(value))
                {
                    received[p].push_back(value);
                    remaining.fetch_sub(1);
                }
                else
                {
                    std::this_thread::yield();
                }
            }
        });
    }
    for (std::thread& thread : threads)
    {
        thread.join();
    }
    std::vector<int> seen(2 * span, 0);
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
    EXPECT_EQ(std::vector<int>(2 * span, 1), seen);
    EXPECT_TRUE(heap.ring().wasEmpty());
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
