#include <gtest/gtest.h>

#include "orvTestSpinWait.h"
#include "system/thread/orvTaskBase.h"
#include "system/thread/orvThread.h"

namespace
{

struct RoutineProbe
{
    int _value = 0;
    int _seenValue = 0;
    orv::threadid_t _seenId;
};

void* recordRoutine(void* arg)
{
    RoutineProbe* probe = static_cast<RoutineProbe*>(arg);
    probe->_seenValue = probe->_value;
    probe->_seenId = std::this_thread::get_id();
    return NULL;
}

void* idleRoutine(void*)
{
    return NULL;
}

TEST(ThreadTest, CreatedThreadRunsTheRoutineAndJoinFreesTheRecordForReuse)
{
    orv::threaddef_t thread;
    for (int round = 1; round <= 2; ++round)
    {
        RoutineProbe probe;
        probe._value = round;
        ASSERT_TRUE(orv::createThread(thread, recordRoutine, &probe, 65536));
        const orv::threadid_t startedId = thread._threadId;
        ASSERT_TRUE(orv::joinThread(thread));
        EXPECT_EQ(round, probe._seenValue);
        EXPECT_EQ(startedId, probe._seenId);
        EXPECT_EQ(nullptr, thread._arg);
    }
    EXPECT_FALSE(orv::joinThread(thread));
}

class ThreadDeathTest : public ::testing::Test
{
protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(ThreadDeathTest, CreatingOnARecordInUseOrStartingANullTaskIsFatal)
{
    RoutineProbe probe;
    orv::threaddef_t thread;
    ASSERT_TRUE(orv::createThread(thread, idleRoutine, &probe, 0));
    EXPECT_DEATH(orv::createThread(thread, idleRoutine, &probe, 0), "threadDef._arg == NULL");
    orv::joinThread(thread);
    // A thread started with a null argument still occupies the record until it is joined.
    ASSERT_TRUE(orv::createThread(thread, idleRoutine, NULL, 0));
    EXPECT_DEATH(orv::createThread(thread, idleRoutine, &probe, 0), "threadDef._threadTBB.joinable\\(\\) == false");
    orv::joinThread(thread);
    EXPECT_DEATH(orv::startTask(thread, NULL), "task != NULL");
}

} // namespace
