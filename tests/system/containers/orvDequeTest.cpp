#include <gtest/gtest.h>

#include <set>

#include "system/containers/orvDeque.h"
#include "system/containers/orvQueue.h"

namespace
{

/// A record shaped like a batch of work: a function pointer, a pointer, a flag, two indices and a step.
struct Batch
{
    void (*_method)(void*, int, int, double) = nullptr;
    void* _userData = nullptr;
    bool _blocking = false;
    int _firstIndex = 0;
    int _lastIndex = 0;
    double _dt = 0.0;
};
static_assert(sizeof(Batch) == 40, "the record under test is 40 bytes");

void noop(void*, int, int, double) {}

/// Counts live instances, so construction and destruction can be checked.
struct Counted
{
    static int live;
    int value = 0;
    Counted(int v) : value(v) { ++live; }
    Counted(const Counted& other) : value(other.value) { ++live; }
    ~Counted() { --live; }
};
int Counted::live = 0;

using PointerDeque = orv::OrvDeque<void*>;

void* token(size_t i)
{
    return reinterpret_cast<void*>(i + 1);
}

TEST(OrvDequeTest, BlocksHoldFiveHundredTwelveBytesOfElements)
{
    EXPECT_EQ(64u, PointerDeque::_blockSize);
    EXPECT_EQ(12u, orv::OrvDeque<Batch>::_blockSize);
    EXPECT_EQ(1u, (orv::OrvDeque<char[600]>::_blockSize));
    EXPECT_EQ(4u, PointerDeque().getHeadBlockIndex());
}

TEST(OrvDequeTest, ElementsComeOutInTheOrderTheyWentIn)
{
    PointerDeque deque;
    size_t pushed = 0;
    size_t popped = 0;
    // Uneven rounds cross block edges at every offset.
    for (size_t round = 1; round < 40; ++round)
    {
        for (size_t i = 0; i < round * 7; ++i)
        {
            deque.push_back(token(pushed++));
        }
        for (size_t i = 0; i < round * 5; ++i)
        {
            ASSERT_EQ(token(popped++), deque.front());
            deque.pop_front();
        }
        ASSERT_EQ(pushed - popped, deque.size());
        ASSERT_EQ(token(popped), deque[0]);
        ASSERT_EQ(token(pushed - 1), deque[deque.size() - 1]);
    }
}

/// Pushes count elements, then pops them all.
void drain(PointerDeque& deque, size_t count)
{
    for (size_t i = 0; i < count; ++i)
    {
        deque.push_back(token(i));
    }
    for (size_t i = 0; i < count; ++i)
    {
        deque.pop_front();
    }
}

TEST(OrvDequeTest, HeadReturnsToTheMiddleOnlyWhenDrainedAtABlockEdge)
{
    PointerDeque deque;
    drain(deque, 64 * 2);
    EXPECT_EQ(4u, deque.getHeadBlockIndex());
    EXPECT_EQ(0u, deque.getHeadBlockFirstElementIndex());
    EXPECT_EQ(2u, deque.getRecycledBlockCount());
    // Drained inside a block: the block stays in its slot and the next push continues in it.
    drain(deque, 70);
    EXPECT_EQ(5u, deque.getHeadBlockIndex());
    EXPECT_EQ(6u, deque.getHeadBlockFirstElementIndex());
    deque.push_back(token(99));
    EXPECT_EQ(token(99), deque.front());
}

TEST(OrvDequeTest, SlotsSlideDownBeforeTheMapDoubles)
{
    PointerDeque deque;
    for (size_t i = 0; i < 64 * 4; ++i)
    {
        deque.push_back(token(i));
    }
    deque.pop_front();
    // Slots 4 to 7 are in use: the next block slides the head from 4 to 2.
    deque.push_back(token(1000));
    EXPECT_EQ(2u, deque.getHeadBlockIndex());
    EXPECT_EQ(8u, deque.getMapSize());
    // Keep pushing: the head slides to 1, then 0, then the map doubles.
    for (size_t i = 0; i < 64 * 5; ++i)
    {
        deque.push_back(token(2000 + i));
    }
    EXPECT_EQ(0u, deque.getHeadBlockIndex());
    EXPECT_EQ(16u, deque.getMapSize());
    for (size_t i = 1; i < 64 * 4; ++i)
    {
        ASSERT_EQ(token(i), deque.front());
        deque.pop_front();
    }
    EXPECT_EQ(token(1000), deque.front());
}

TEST(OrvDequeTest, SteadyQueueReusesItsBlocks)
{
    PointerDeque deque;
    std::set<void**> blocks;
    for (size_t cycle = 0; cycle < 2000; ++cycle)
    {
        for (size_t i = 0; i < 50; ++i)
        {
            deque.push_back(token(i));
        }
        for (size_t i = 0; i < 50; ++i)
        {
            blocks.insert(&deque.front() - deque.getHeadBlockFirstElementIndex());
            deque.pop_front();
        }
    }
    // 100,000 elements through 64-element blocks, yet only the blocks of one burst were ever made.
    EXPECT_LE(blocks.size(), 2u);
    EXPECT_LE(deque.getRecycledBlockCount(), 2u);
}

TEST(OrvDequeTest, RecordsAreCopiedWholeAndDestroyedOnPop)
{
    orv::OrvDeque<Batch> deque;
    for (int i = 0; i < 100; ++i)
    {
        Batch batch;
        batch._method = noop;
        batch._userData = &deque;
        batch._blocking = (i % 3 == 0);
        batch._firstIndex = i;
        batch._lastIndex = i * 2;
        batch._dt = i * 0.5;
        deque.push_back(batch);
    }
    for (int i = 0; i < 100; ++i)
    {
        const Batch& batch = deque.front();
        ASSERT_EQ(noop, batch._method);
        ASSERT_EQ(&deque, batch._userData);
        ASSERT_EQ(i % 3 == 0, batch._blocking);
        ASSERT_EQ(i, batch._firstIndex);
        ASSERT_EQ(i * 2, batch._lastIndex);
        ASSERT_EQ(i * 0.5, batch._dt);
        deque.pop_front();
    }

    Counted::live = 0;
    {
        orv::OrvDeque<Counted> counted;
        for (int i = 0; i < 30; ++i)
        {
            counted.push_back(Counted(i));
        }
        counted.pop_front();
        EXPECT_EQ(29, Counted::live);
        orv::OrvDeque<Counted> copy(counted);
        EXPECT_EQ(58, Counted::live);
        copy.pop_front();
        EXPECT_EQ(1, counted.front().value);
        EXPECT_EQ(2, copy.front().value);
    }
    EXPECT_EQ(0, Counted::live);
}

TEST(OrvQueueTest, IsFirstInFirstOut)
{
    orv::OrvQueue<Batch, orv::OrvDeque<Batch>> queue;
    for (int i = 0; i < 30; ++i)
    {
        Batch batch;
        batch._firstIndex = i;
        queue.push(batch);
    }
    EXPECT_EQ(30u, queue.size());
    for (int i = 0; i < 30; ++i)
    {
        ASSERT_EQ(i, queue.front()._firstIndex);
        queue.pop();
    }
    EXPECT_TRUE(queue.empty());
}

} // namespace
