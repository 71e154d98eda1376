#include <gtest/gtest.h>

#include <thread>

#include "orvTestSpinWait.h"
#include "system/thread/orvAtomic.h"
#include "system/thread/orvConditionVar.h"
#include "system/thread/orvMutex.h"
#include "system/thread/orvRWSpinLock.h"
#include "system/thread/orvScopedLock.h"
#include "system/thread/orvSpinLock.h"

namespace
{

/// Runs the probe on a thread of its own and waits for its end.
template <class Probe>
void onOtherThread(Probe probe)
{
    std::thread(probe).join();
}

template <class Lock>
class ExclusiveLockTest : public ::testing::Test
{
protected:
    Lock _lock;
};

using ExclusiveLocks = ::testing::Types<orv::Mutex, orv::SpinLock>;
TYPED_TEST_SUITE(ExclusiveLockTest, ExclusiveLocks);

TYPED_TEST(ExclusiveLockTest, ConcurrentIncrementsUnderTheLockAreNeverLost)
{
    const unsigned int kIncrements = 20000;
    unsigned int counter = 0;
    auto work = [&]()
    {
        for (unsigned int i = 0; i < kIncrements; ++i)
        {
            orv::ScopedLock<TypeParam> guard(this->_lock);
            ++counter;
        }
    };
    std::thread other(work);
    work();
    other.join();
    EXPECT_EQ(2 * kIncrements, counter);
}

TYPED_TEST(ExclusiveLockTest, TrylockFailsOnlyWhileAnotherThreadHoldsTheLock)
{
    bool takenElsewhere = true;
    {
        orv::ScopedLock<TypeParam> guard(this->_lock);
        onOtherThread([&]() { takenElsewhere = this->_lock.trylock(); });
    }
    EXPECT_FALSE(takenElsewhere);
    EXPECT_TRUE(this->_lock.trylock());
    this->_lock.unlock();
}

TEST(RWSpinLockTest, WriterExcludesEveryoneAndReadersExcludeOnlyWriters)
{
    orv::RWSpinLock lock;
    bool readerTaken = true;
    bool writerTaken = true;
    {
        orv::ScopedLockRW<orv::RWSpinLock, true> writer(lock);
        onOtherThread(
            [&]()
            {
                readerTaken = lock.trylockReader();
                writerTaken = lock.trylockWriter();
            });
    }
    EXPECT_FALSE(readerTaken);
    EXPECT_FALSE(writerTaken);
    {
        orv::ScopedLockRW<orv::RWSpinLock, false> reader(lock);
        onOtherThread(
            [&]()
            {
                readerTaken = lock.trylockReader();
                writerTaken = lock.trylockWriter();
                if (readerTaken)
                {
                    lock.unlockReader();
                }
            });
    }
    EXPECT_TRUE(readerTaken);
    EXPECT_FALSE(writerTaken);
    // Both scopes gave the lock back.
    EXPECT_TRUE(lock.trylockWriter());
    lock.unlockWriter();
}

class ConditionVarTest : public ::testing::Test
{
protected:
    orv::Mutex _mutex;
    orv::ConditionVar _condition;
};

TEST_F(ConditionVarTest, WaitForTimesOutWithoutNotificationAndKeepsTheMutex)
{
    orv::ConditionLock hold(_mutex);
    EXPECT_FALSE(_condition.waitFor(hold, 1));
    bool takenElsewhere = true;
    onOtherThread([&]() { takenElsewhere = _mutex.trylock(); });
    EXPECT_FALSE(takenElsewhere);
}

TEST_F(ConditionVarTest, NotificationWakesAWaiterBeforeItsLimit)
{
    orv::atomic32_t waiting;
    bool notified = false;
    std::thread waiter(
        [&]()
        {
            orv::ConditionLock hold(_mutex);
            // The mutex stays held from here until waitFor releases it, so the notifier cannot come too early.
            orv::atomicStoreReleaseBool(waiting, true);
            notified = _condition.waitFor(hold, 600000);
        });
    ASSERT_TRUE(orv::test::spinUntil([&]() { return orv::atomicLoadAcquireBool(waiting); }));
    {
        orv::ConditionLock hold(_mutex);
        _condition.notifyOne();
    }
    waiter.join();
    EXPECT_TRUE(notified);
}

} // namespace
