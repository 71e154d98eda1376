#include <gtest/gtest.h>

#include <string>

#include "behavior/callBacks/orvCountTrigger.h"
#include "behavior/callBacks/orvLogicalOperatorCallBack.h"
#include "behavior/callBacks/orvTriggerWorld.h"
#include "support/orvLogCapture.h"

namespace
{

using orv::BoolCallBackPointer;
using orv::ComparisonOperator;
using orv::CountTrigger;

class CountTriggerTest : public orvtest::TriggerWorld
{
protected:
    /// A bound trigger of that condition and threshold for entity 0.
    BoolCallBackPointer makeTrigger(ComparisonOperator::Value condition, unsigned int threshold)
    {
        CountTrigger* trigger = new CountTrigger(condition);
        trigger->setBehaviorGraph(graph());
        trigger->setTriggerCount(0, threshold);
        _trigger = trigger;
        return BoolCallBackPointer(trigger);
    }
    /// The answers of condition for entity 0 in the next frames, as "FTF".
    std::string answersOverFrames(BoolCallBackPointer condition, int frames)
    {
        std::string text;
        for (int i = 0; i < frames; ++i)
        {
            nextFrame();
            text += condition->call(0) ? 'T' : 'F';
        }
        return text;
    }

    CountTrigger* _trigger = nullptr;
};

TEST_F(CountTriggerTest, EqualToThreeIsTrueExactlyInTheThirdEvaluatedFrameUntilReset)
{
    BoolCallBackPointer trigger = makeTrigger(ComparisonOperator::EQUAL, 3);
    // Frame 0 is a real frame: reset and called in it, the trigger gives its stored answer and counts nothing.
    _trigger->reset(0);
    EXPECT_FALSE(trigger->call(0));
    EXPECT_EQ(0u, _trigger->getCurrentCount(0));
    EXPECT_EQ("FFTFF", answersOverFrames(trigger, 5));
    _trigger->reset(1);
    EXPECT_EQ(5u, _trigger->getCurrentCount(0));
    _trigger->reset(0);
    EXPECT_EQ("FFT", answersOverFrames(trigger, 3));
}

TEST_F(CountTriggerTest, EachCodeComparesTheCountWithTheThresholdAndUnknownCodesCompareAsEqual)
{
    // Counts 1, 2, 3 against a threshold of 2; code 9 is kept as END, which compares as EQUAL.
    const struct
    {
        unsigned int code;
        const char* answers;
    } cases[] = {{0, "FTF"}, {1, "TFT"}, {2, "TTF"}, {3, "TFF"}, {4, "FFT"}, {5, "FTT"}, {6, "FTF"}, {9, "FTF"}};
    for (const auto& c : cases)
    {
        BoolCallBackPointer trigger = makeTrigger(ComparisonOperator::EQUAL, 2);
        _trigger->setEnableConditionUInt(c.code);
        EXPECT_EQ(c.answers, answersOverFrames(trigger, 3)) << "code " << c.code;
    }
}

TEST_F(CountTriggerTest, CountsOnceAFrameAndOnlyWhenReachedBehindAShortCircuit)
{
    BoolCallBackPointer trigger = makeTrigger(ComparisonOperator::EQUAL, 1);
    EXPECT_EQ("TF", answersOverFrames(trigger && trigger, 2));
    EXPECT_EQ(2u, _trigger->getCurrentCount(0));
    answersOverFrames(constant(false) && trigger, 2);
    answersOverFrames(constant(true) || trigger, 2);
    EXPECT_EQ(2u, _trigger->getCurrentCount(0));
    answersOverFrames(constant(false) || trigger, 2);
    EXPECT_EQ(4u, _trigger->getCurrentCount(0));
}

TEST_F(CountTriggerTest, RebindingAfterAnAddedEntityGrowsTheArraysWithTheDefaultThreshold)
{
    BoolCallBackPointer trigger = makeTrigger(ComparisonOperator::EQUAL, 5);
    _trigger->setDefaultTriggerCount(2);
    addEntities(1);
    _trigger->setBehaviorGraph(graph());
    ASSERT_EQ(3, _trigger->getUsedCount());
    EXPECT_EQ(5u, _trigger->getTriggerCount(0));
    EXPECT_EQ(2u, _trigger->getTriggerCount(2));
    EXPECT_EQ(0u, _trigger->getCurrentCount(2));
    EXPECT_EQ(static_cast<int>(_maxEntities), _trigger->getCallsCountArrayCapacity());
}

TEST_F(CountTriggerTest, HostCallsForAnEntityWithoutAnEntryAreRefusedWithALogLine)
{
    BoolCallBackPointer trigger = makeTrigger(ComparisonOperator::EQUAL, 1);
    orvtest::LogCapture capture;
    _trigger->setTriggerCount(-1, 4);
    EXPECT_EQ(0u, _trigger->getTriggerCount(7));
    _trigger->setCallsCountArrayCapacity(-3);
    EXPECT_EQ(3, capture.countLines(orv::LogSeverity::LOG_ERROR, {"trigger"})) << capture.describe();
}

using CountTriggerDeathTest = CountTriggerTest;

TEST_F(CountTriggerDeathTest, AnUnboundTriggerIsFatalWhenCalled)
{
    CountTrigger trigger;
    EXPECT_DEATH(trigger.call(0), "not bound to a behavior graph");
}

TEST_F(CountTriggerDeathTest, AnEntityWithoutAnEntryIsFatalWhenCalledOrReset)
{
    BoolCallBackPointer trigger = makeTrigger(ComparisonOperator::EQUAL, 1);
    EXPECT_DEATH(trigger->call(2), "entity 2 has no entry");
    EXPECT_DEATH(_trigger->reset(-1), "entity -1 has no entry");
}

} // namespace
