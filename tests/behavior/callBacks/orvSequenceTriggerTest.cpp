#include <gtest/gtest.h>

#include "behavior/callBacks/orvCountTrigger.h"
#include "behavior/callBacks/orvLogicalOperatorCallBack.h"
#include "behavior/callBacks/orvSequenceTrigger.h"
#include "behavior/callBacks/orvTriggerWorld.h"
#include "support/orvLogCapture.h"

namespace
{

using orv::BoolCallBackPointer;
using orv::ComparisonOperator;
using orv::CountTrigger;
using orv::SequenceTrigger;

class SequenceTriggerTest : public orvtest::TriggerWorld
{
protected:
    SequenceTrigger* _sequence = new SequenceTrigger();
    BoolCallBackPointer _hold{_sequence};
};

TEST_F(SequenceTriggerTest, StepsThatAreAllTrueCompleteInTheFirstEvaluationAsDoesAnEmptySequence)
{
    SequenceTrigger* empty = new SequenceTrigger();
    BoolCallBackPointer hold(empty);
    empty->setBehaviorGraph(graph());
    for (int i = 0; i < 3; ++i)
    {
        _sequence->addStep(constant(true));
    }
    _sequence->setBehaviorGraph(graph());
    nextFrame();
    EXPECT_TRUE(_sequence->call(0));
    EXPECT_EQ(3u, _sequence->getCurrentStep(0));
    EXPECT_TRUE(empty->call(1));
}

TEST_F(SequenceTriggerTest, StepTriggersAreBoundThroughOperatorsAndResetWhenTheirStepIsReached)
{
    // Step 0 passes in the second frame; step 1, a count under an operator, starts counting only then.
    CountTrigger* first = new CountTrigger(ComparisonOperator::EQUAL);
    CountTrigger* second = new CountTrigger(ComparisonOperator::EQUAL);
    _sequence->addStep(BoolCallBackPointer(first));
    _sequence->addStep(constant(true) && BoolCallBackPointer(second));
    _sequence->setBehaviorGraph(graph());
    ASSERT_EQ(graph(), second->getBehaviorGraph());
    first->setTriggerCount(0, 2);
    second->setTriggerCount(0, 2);

    nextFrame();
    EXPECT_FALSE(_sequence->call(0));
    EXPECT_EQ(0u, second->getCurrentCount(0));
    nextFrame();
    EXPECT_FALSE(_sequence->call(0));
    EXPECT_EQ(1u, second->getCurrentCount(0));
    nextFrame();
    EXPECT_TRUE(_sequence->call(0));
    nextFrame();
    EXPECT_TRUE(_sequence->call(0));

    // A reset goes back to step 0 and starts its triggers over.
    _sequence->reset(0);
    EXPECT_EQ(0u, _sequence->getCurrentStep(0));
    EXPECT_EQ(0u, first->getCurrentCount(0));
}

TEST_F(SequenceTriggerTest, AStepAddedToABoundSequenceIsBoundAtOnceAndANullStepIsRefused)
{
    _sequence->setBehaviorGraph(graph());
    CountTrigger* late = new CountTrigger();
    _sequence->addStep(BoolCallBackPointer(late));
    EXPECT_EQ(graph(), late->getBehaviorGraph());
    EXPECT_EQ(2, late->getUsedCount());

    orvtest::LogCapture capture;
    _sequence->addStep(BoolCallBackPointer());
    EXPECT_EQ(1u, _sequence->getSequence().size());
    EXPECT_TRUE(capture.hasLine(orv::LogSeverity::LOG_ERROR, {"null"}));
}

} // namespace
