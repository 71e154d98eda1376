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

/// Counts to twice the given number on two threads, each increment under the lock.
template <class Lock>
unsigned int countOnTwoThreads(unsigned int increments)
{
    Lock lock;
    unsigned int counter = 0;
    auto work = [&]()
    {
        for (unsigned int i = 0; i < increments; ++i)
        {
            orv::ScopedLock<Lock> guard(lock);
            ++counter;
        }
    };
    std::thread other(work);
    work();
    other.join();
    return counter;
}

TEST(ExclusiveLockTest, ConcurrentIncrementsUnderTheLockAreNeverLost)
{
    EXPECT_EQ(40000u, countOnTwoThreads<orv::Mutex>(20000));
    EXPECT_EQ(40000u, countOnTwoThreads<orv::SpinLock>(20000));
}

TEST(RWSpinLockTest, WriterExcludesEveryoneAndReadersExcludeOnlyWriters)
{
    orv::RWSpinLock lock;
    bool readerTaken = true;
    bool writerTaken = true;
    auto probe = [&]()
    {
        readerTaken = lock.trylockReader();
        writerTaken = lock.trylockWriter();
        if (readerTaken)
        {
            lock.unlockReader();
        }
    };
    {
        orv::ScopedLockRW<orv::RWSpinLock, true> writer(lock);
        onOtherThread(probe);
    }
    EXPECT_FALSE(readerTaken);
    EXPECT_FALSE(writerTaken);
    {
        orv::ScopedLockRW<orv::RWSpinLock, false> reader(lock);
        onOtherThread(probe);
    }
    EXPECT_TRUE(readerTaken);
    EXPECT_FALSE(writerTaken);
    // Both scopes gave the lock back.
    EXPECT_TRUE(lock.trylockWriter());
    lock.unlockWriter();
}

TEST(ConditionVarTest, NotificationWakesAWaiterAndATimeOutKeepsTheMutex)
{
    orv::Mutex mutex;
    orv::ConditionVar condition;
    orv::atomic32_t waiting;
    bool notified = false;
    std::thread waiter(
        [&]()
        {
            orv::ConditionLock hold(mutex);
            // The mutex stays held from here until waitFor releases it, so the notifier cannot come too early.
            orv::atomicStoreReleaseBool(waiting, true);
            notified = condition.waitFor(hold, 600000);
        });
    ASSERT_TRUE(orv::test::spinUntil([&]() { return orv::atomicLoadAcquireBool(waiting); }));
    {
        orv::ConditionLock hold(mutex);
        condition.notifyOne();
    }
    waiter.join();
    EXPECT_TRUE(notified);

    orv::ConditionLock hold(mutex);
    EXPECT_FALSE(condition.waitFor(hold, 1));
    bool takenElsewhere = true;
    onOtherThread([&]() { takenElsewhere = mutex.trylock(); });
    EXPECT_FALSE(takenElsewhere);
}

} // namespace
