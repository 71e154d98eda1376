#include <gtest/gtest.h>

#include "behavior/callBacks/orvBehaviorStatusCallBack.h"
#include "behavior/callBacks/orvConstantValueCallback.h"
#include "behavior/callBacks/orvLogicalNotBoolCallBack.h"
#include "behavior/callBacks/orvLogicalOperatorCallBack.h"
#include "behavior/callBacks/orvVoidFunctionCallBack.h"
#include "support/orvCoreTestSupport.h"
#include "support/orvLogCapture.h"
#include "system/serialization/orvBinaryStream.h"

namespace
{

using orv::BoolCallBackPointer;
using orv::LogicalOperatorCallBack;
using Operator = LogicalOperatorCallBack::LogicalOperator;

/// A condition that gives a fixed answer and counts its calls.
class CountingCondition : public orv::ITypedCallBack<bool>
{
public:
    explicit CountingCondition(bool value) : _value(value) {}
    bool call(int) override
    {
        ++_calls;
        return _value;
    }
    int _calls = 0;

private:
    bool _value;
};

using LogicalOperatorCallBackTest = orvtest::CoreTest;

TEST_F(LogicalOperatorCallBackTest, AndAndOrCallTheRightSideOnlyWhenTheLeftLeavesTheAnswerOpenAndXorAlways)
{
    const struct
    {
        Operator::Value operatorType;
        bool left, right, answer;
        int rightCalls;
    } cases[] = {{Operator::AND, false, true, false, 0}, {Operator::AND, true, false, false, 1},
                 {Operator::AND, true, true, true, 1},   {Operator::OR, true, false, true, 0},
                 {Operator::OR, false, true, true, 1},   {Operator::OR, false, false, false, 1},
                 {Operator::XOR, true, true, false, 1},  {Operator::XOR, false, true, true, 1}};
    for (const auto& c : cases)
    {
        CountingCondition* right = new CountingCondition(c.right);
        BoolCallBackPointer left(new CountingCondition(c.left));
        BoolCallBackPointer condition = c.operatorType == Operator::AND  ? left && BoolCallBackPointer(right)
                                        : c.operatorType == Operator::OR ? left || BoolCallBackPointer(right)
                                                                         : left ^ BoolCallBackPointer(right);
        EXPECT_EQ(c.answer, condition->call(0)) << c.operatorType << c.left << c.right;
        EXPECT_EQ(c.rightCalls, right->_calls) << c.operatorType << c.left << c.right;
    }
}

TEST_F(LogicalOperatorCallBackTest, OperatorsShareTheirOperandsAndExposeThemForTheBindingWalk)
{
    BoolCallBackPointer a(new CountingCondition(true));
    BoolCallBackPointer b(new CountingCondition(false));
    BoolCallBackPointer both = a && b;
    BoolCallBackPointer negation = !a;
    EXPECT_EQ(3u, a.getReferenceCount());

    auto* binary = dynamic_cast<orv::AbstractOperatorCallBack*>(both.getImpl());
    ASSERT_NE(nullptr, binary);
    EXPECT_EQ(2, binary->getOperandsCount());
    EXPECT_EQ(a.getImpl(), binary->getOperand(0).getImpl());
    EXPECT_EQ(b.getImpl(), binary->getOperand(7).getImpl());
    auto* unary = dynamic_cast<orv::AbstractOperatorCallBack*>(negation.getImpl());
    ASSERT_NE(nullptr, unary);
    EXPECT_EQ(1, unary->getOperandsCount());
    EXPECT_EQ(a.getImpl(), unary->getOperand(3).getImpl());
    EXPECT_FALSE(negation->call(0));
    EXPECT_TRUE((!b)->call(0));
}

TEST_F(LogicalOperatorCallBackTest, NullOperandsAreRefusedWithALogLine)
{
    orvtest::LogCapture capture;
    BoolCallBackPointer a(new CountingCondition(true));
    BoolCallBackPointer none;
    EXPECT_EQ(nullptr, (a && none).getImpl());
    EXPECT_EQ(nullptr, (none || a).getImpl());
    EXPECT_EQ(nullptr, (!none).getImpl());
    LogicalOperatorCallBack callBack(a, a, Operator::AND);
    callBack.setBoolCallBack1(none);
    EXPECT_EQ(a.getImpl(), callBack.getBoolCallBack1().getImpl());
    EXPECT_EQ(4, capture.countLines(orv::LogSeverity::LOG_ERROR, {"null"})) << capture.describe();
}

TEST_F(LogicalOperatorCallBackTest, LeavesGiveTheirValueWhateverTheEntity)
{
    EXPECT_FALSE(orv::ConstantValueCallback<bool>().call(3));
    EXPECT_FLOAT_EQ(0.25f, orv::ConstantValueCallback<float>(0.25f).call(9));
    // Without a node to watch, the status call-back is false, also for the status of a node at rest.
    EXPECT_FALSE(orv::BehaviorStatusCallBack(nullptr, orv::AbstractBehavior::RunStatus::IDLE).call(0));
    static int lastEntity = -1;
    orv::VoidFunctionCallBack([](int entity) { lastEntity = entity; }).call(4);
    EXPECT_EQ(4, lastEntity);
    orv::VoidFunctionCallBack().call(5);
}

TEST_F(LogicalOperatorCallBackTest, AConditionTreeComesBackFromABinaryStreamHeldOnceWithItsSharedOperand)
{
    // (a AND a) OR NOT a, with one constant shared three times: it goes as pointers, so it comes back shared.
    BoolCallBackPointer a(new orv::ConstantValueCallback<bool>(true));
    BoolCallBackPointer tree = (a && a) || !a;
    orv::BinaryStream stream;
    stream.pack(tree);

    BoolCallBackPointer read;
    stream.unpack(read);
    ASSERT_FALSE(!read);
    EXPECT_NE(tree.getImpl(), read.getImpl());
    EXPECT_EQ(1u, read.getReferenceCount());
    EXPECT_TRUE(read->call(0));
    const auto* orNode = dynamic_cast<const LogicalOperatorCallBack*>(read.getImpl());
    ASSERT_NE(nullptr, orNode);
    EXPECT_EQ(Operator::OR, orNode->getOperatorType());
    const auto* andNode = dynamic_cast<const LogicalOperatorCallBack*>(orNode->getBoolCallBack0().getImpl());
    const auto* notNode = dynamic_cast<const orv::LogicalNotBoolCallBack*>(orNode->getBoolCallBack1().getImpl());
    ASSERT_NE(nullptr, andNode);
    ASSERT_NE(nullptr, notNode);
    // The leaf is held by both sides of the AND and by the NOT, and by nothing else: none leaks, none is freed early.
    EXPECT_EQ(andNode->getBoolCallBack0().getImpl(), notNode->getBoolCallBack().getImpl());
    EXPECT_EQ(andNode->getBoolCallBack1().getImpl(), notNode->getBoolCallBack().getImpl());
    EXPECT_EQ(3u, notNode->getBoolCallBack().getReferenceCount());
}

using LogicalOperatorCallBackDeathTest = LogicalOperatorCallBackTest;

TEST_F(LogicalOperatorCallBackDeathTest, AnOperatorOutsideTheThreeOrAMissingOperandIsFatalWhenCalled)
{
    BoolCallBackPointer a(new CountingCondition(true));
    LogicalOperatorCallBack callBack(a, a, Operator::AND);
    // A code read from a file past the enumeration is kept as END.
    callBack.setOperatorTypeUInt(42);
    EXPECT_DEATH(callBack.call(0), "No valid operator defined for LogicalOperatorCallBack");
    EXPECT_DEATH(LogicalOperatorCallBack().call(0), "missing operand");
    EXPECT_DEATH(orv::LogicalNotBoolCallBack().call(0), "missing operand");
}

} // namespace
