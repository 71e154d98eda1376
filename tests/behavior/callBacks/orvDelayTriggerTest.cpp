#include <gtest/gtest.h>

#include "behavior/callBacks/orvDelayTrigger.h"
#include "behavior/callBacks/orvTriggerWorld.h"

namespace
{

using orv::BoolCallBackPointer;
using orv::DelayTrigger;

class DelayTriggerTest : public orvtest::TriggerWorld
{
protected:
    void SetUp() override
    {
        TriggerWorld::SetUp();
        _trigger->setBehaviorGraph(graph());
    }

    DelayTrigger* _trigger = new DelayTrigger();
    BoolCallBackPointer _hold{_trigger};
};

TEST_F(DelayTriggerTest, BecomesTrueInTheFirstFrameStrictlyPastTheDelayAndStaysTrue)
{
    _trigger->setTriggerDelay(0, 2.0);
    while (_simulation->getDuration() < 10.0)
    {
        nextFrame(0.5);
    }
    _trigger->reset(0);
    EXPECT_EQ(10.0, _simulation->getDuration());
    // Frames at 10.5 to 12.0 are not past the delay; 12.5 is, and so are all after it.
    for (int i = 0; i < 4; ++i)
    {
        nextFrame(0.5);
        EXPECT_FALSE(_trigger->call(0)) << "at " << _simulation->getDuration();
    }
    nextFrame(0.5);
    EXPECT_TRUE(_trigger->call(0));
    EXPECT_DOUBLE_EQ(2.5, _trigger->getCurrentDelay(0));
    nextFrame(3.0);
    EXPECT_TRUE(_trigger->call(0));
}

TEST_F(DelayTriggerTest, NewEntitiesTakeTheDefaultDelayAndAClockFromTimeZero)
{
    _trigger->setDefaultTriggerDelay(1.5);
    addEntities(1);
    _trigger->setBehaviorGraph(graph());
    EXPECT_EQ(0.0, _trigger->getTriggerDelay(0));
    EXPECT_EQ(1.5, _trigger->getTriggerDelay(2));
    nextFrame(1.0);
    nextFrame(1.0);
    EXPECT_DOUBLE_EQ(2.0, _trigger->getCurrentDelay(2));
    EXPECT_TRUE(_trigger->call(2));
}

} // namespace
