#include <gtest/gtest.h>

#include <set>

#include "system/containers/orvCounted.h"
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

void noop(void*, int, int, double)
{
}

using orvtest::Counted;

using PointerDeque = orv::OrvDeque<void*>;

void* token(size_t i)
{
    return reinterpret_cast<void*>(i + 1);
}

TEST(OrvDequeTest, ElementsComeOutInTheOrderTheyWentInAndCopiesAreDeep)
{
    Counted::live = 0;
    {
        orv::OrvDeque<Counted> deque;
        int pushed = 0;
        int popped = 0;
        // Uneven rounds cross block edges at every offset.
        for (int round = 1; round < 40; ++round)
        {
            for (int i = 0; i < round * 7; ++i)
            {
                deque.push_back(Counted(pushed++));
            }
            for (int i = 0; i < round * 5; ++i)
            {
                ASSERT_EQ(popped++, deque.front().value);
                deque.pop_front();
            }
            ASSERT_EQ(pushed - popped, Counted::live);
            ASSERT_EQ(popped, deque[0].value);
            ASSERT_EQ(pushed - 1, deque[deque.size() - 1].value);
        }
        // Over 1,500 long by the end: the block map has slid and grown on the way.
        EXPECT_GT(deque.getMapSize(), 8u);
        orv::OrvDeque<Counted> copy(deque);
        EXPECT_EQ(2 * (pushed - popped), Counted::live);
        copy.pop_front();
        EXPECT_EQ(popped, deque.front().value);
        EXPECT_EQ(popped + 1, copy.front().value);
    }
    EXPECT_EQ(0, Counted::live);
}

TEST(OrvDequeTest, HeadReturnsToTheMiddleOnlyWhenDrainedAtABlockEdge)
{
    PointerDeque deque;
    const auto drain = [&deque](size_t count)
    {
        for (size_t i = 0; i < count; ++i)
        {
            deque.push_back(token(i));
        }
        for (size_t i = 0; i < count; ++i)
        {
            deque.pop_front();
        }
    };
    // A 64-pointer block is 512 bytes.
    drain(64 * 2);
    EXPECT_EQ(4u, deque.getHeadBlockIndex());
    EXPECT_EQ(0u, deque.getHeadBlockFirstElementIndex());
    EXPECT_EQ(2u, deque.getRecycledBlockCount());
    // Drained inside a block: the block stays in its slot and the next push continues in it.
    drain(70);
    EXPECT_EQ(5u, deque.getHeadBlockIndex());
    EXPECT_EQ(6u, deque.getHeadBlockFirstElementIndex());
    deque.push_back(token(99));
    EXPECT_EQ(token(99), deque.front());
}

TEST(OrvQueueTest, SteadyRecordQueueKeepsRecordsWholeAndReusesTheBlocksOfOneBurst)
{
    orv::OrvQueue<Batch> queue;
    std::set<const Batch*> blocks;
    for (int cycle = 0; cycle < 2000; ++cycle)
    {
        for (int i = 0; i < 50; ++i)
        {
            queue.push(Batch{noop, &queue, i % 3 == 0, i, cycle, i * 0.5});
        }
        for (int i = 0; i < 50; ++i)
        {
            const Batch& batch = queue.front();
            ASSERT_TRUE(batch._method == noop && batch._userData == &queue && batch._blocking == (i % 3 == 0));
            ASSERT_TRUE(batch._firstIndex == i && batch._lastIndex == cycle && batch._dt == i * 0.5);
            blocks.insert(&batch - queue.getContainer().getHeadBlockFirstElementIndex());
            queue.pop();
        }
    }
    // 100,000 records through blocks of 12, yet only the blocks of one burst were ever made.
    EXPECT_LE(blocks.size(), 6u);
    EXPECT_LE(queue.getContainer().getRecycledBlockCount(), 6u);
}

} // namespace
