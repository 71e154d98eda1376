#include <gtest/gtest.h>

#include "behavior/behaviors/orvAbstractUserBehavior.h"
#include "support/orvCoreTestSupport.h"
#include "support/orvLogCapture.h"
#include "support/orvRecordingBehavior.h"

namespace
{

using orv::AbstractBehavior;
using orvtest::RecordingBehavior;

class AbstractUserBehaviorTest : public orvtest::CoreTest
{
protected:
    RecordingBehavior _behavior;
    RecordingBehavior _next;
    RecordingBehavior _other;
};

TEST_F(AbstractUserBehaviorTest, ItTakesOneFollowerSelectedByDefaultAndRefusesASecond)
{
    orvtest::LogCapture log;
    EXPECT_TRUE(_behavior.isTimeConsuming());
    ASSERT_TRUE(_behavior.addNextBehaviorCandidate(&_next));
    EXPECT_EQ(0u, _behavior.getNextBehaviorSelectedId());
    EXPECT_EQ(&_next, _behavior.getNextBehavior());
    orv::OrvString reason;
    EXPECT_FALSE(_behavior.canAddNextBehaviorCandidate(&_other, reason));
    EXPECT_STREQ("Can not accept next behavior candidate for current behavior : current behavior already has a next "
                 "behavior candidate (AbstractUserBehavior allows at most 1 next behavior candidate)",
                 reason.c_str());
    EXPECT_FALSE(_behavior.addNextBehaviorCandidate(&_other));
    EXPECT_TRUE(log.hasLine(orv::LogSeverity::LOG_ERROR, {"AbstractUserBehavior allows at most 1"}));
    ASSERT_TRUE(_behavior.removeNextBehaviorCandidate(&_next));
    EXPECT_EQ(AbstractBehavior::_nextBehaviorInvalidId, _behavior.getNextBehaviorSelectedId());
    EXPECT_TRUE(_behavior.isFinal());
}

TEST_F(AbstractUserBehaviorTest, TwoFollowersFailTheConnectionCheckWithItsOwnLine)
{
    orvtest::LogCapture log;
    _behavior.touchNextBehaviorCandidates().push_back(&_next);
    EXPECT_TRUE(_behavior.checkNextBehaviorCandidatesConnection());
    _behavior.touchNextBehaviorCandidates().push_back(&_other);
    EXPECT_FALSE(_behavior.checkNextBehaviorCandidatesConnection());
    EXPECT_TRUE(log.hasLine(orv::LogSeverity::LOG_ERROR,
                            {"AbstractUserBehavior can not have more than 1 next behavior candidate"}))
        << log.describe();
}

} // namespace
