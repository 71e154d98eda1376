#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "system/inspection/orvInspectionTestSupport.h"
#include "system/inspection/orvReferenceCounter.h"
#include "system/inspection/orvSmartPointer.h"

namespace orvtest
{

/// Counts its deletions in a variable of the test.
class Tracked : public orv::ReferenceCounter
{
    ORV_DECLARE_RTTI(Tracked)

public:
    Tracked() = default;
    explicit Tracked(int* deletions) : _deletions(deletions) {}
    ~Tracked() override
    {
        if (_deletions != nullptr)
        {
            ++*_deletions;
        }
    }

private:
    int* _deletions = nullptr;
};

ORV_IMPLEMENT_RTTI(Tracked, "a3d1e0c2-6f4b-4d8e-9a71-2c5b8e9f0d13", "orvtest::Tracked")

void Tracked::addAttributes()
{
    _rtti->addBaseClass<orv::ReferenceCounter>();
}

} // namespace orvtest

namespace
{

using orv::SmartPointer;
using orvtest::Tracked;

TEST(SmartPointerTest, TheLastHoldDeletesTheObjectWhetherCopiedAssignedOrJoinedByAPlainPointer)
{
    int oldDeletions = 0;
    int deletions = 0;
    SmartPointer<Tracked> held(new Tracked(&oldDeletions));
    {
        SmartPointer<Tracked> first(new Tracked(&deletions));
        held = first;
        EXPECT_EQ(1, oldDeletions);
        SmartPointer<Tracked>& alias = held;
        held = alias;
        SmartPointer<Tracked> again(first.getImpl());
        EXPECT_EQ(3u, first.getReferenceCount());
    }
    EXPECT_EQ(1u, held.getReferenceCount());
    EXPECT_EQ(0, deletions);
    held = SmartPointer<Tracked>();
    EXPECT_TRUE(!held);
    EXPECT_EQ(1, deletions);
}

TEST(SmartPointerTest, CopiesOnManyThreadsLeaveTheCountAsItWas)
{
    int deletions = 0;
    SmartPointer<Tracked> shared(new Tracked(&deletions));
    std::vector<std::thread> workers;
    for (int t = 0; t < 4; ++t)
    {
        workers.emplace_back(
            [&shared]()
            {
                for (int i = 0; i < 20000; ++i)
                {
                    SmartPointer<Tracked> copy(shared);
                }
            });
    }
    for (std::thread& worker : workers)
    {
        worker.join();
    }
    EXPECT_EQ(1u, shared.getReferenceCount());
    EXPECT_EQ(0, deletions);
}

using SmartPointerRTTITest = orvtest::InspectionTest;

TEST_F(SmartPointerRTTITest, ASmartPointerIsNamedAndIdentifiedFromItsPointeeAndHoldsIt)
{
    Tracked::createClassRTTI(true);
    SmartPointer<Tracked>::createClassRTTI(true);
    const orv::RTTI* rtti = SmartPointer<Tracked>::getClassRTTI();
    ASSERT_NE(nullptr, rtti);
    EXPECT_STREQ("orv::SmartPointer<orvtest::Tracked>", rtti->getTypeName());
    EXPECT_EQ(orv::Uuid("fa5e1ceb-a5b7-4ece-a7ac-1cb993c84838") + Tracked::getClassRTTI()->getTypeID(),
              rtti->getTypeID());
    EXPECT_EQ(rtti, SmartPointer<Tracked>().getRTTI());
    SmartPointer<Tracked>::destroyClassRTTI(true);
    EXPECT_EQ(1u, Tracked::getClassRTTI()->getCounter());
    Tracked::destroyClassRTTI(true);
    EXPECT_EQ(nullptr, Tracked::_rtti);
}

} // namespace
