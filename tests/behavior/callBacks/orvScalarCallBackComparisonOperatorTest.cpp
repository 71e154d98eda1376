#include <gtest/gtest.h>

#include <string>

#include "behavior/callBacks/orvScalarCallBackComparisonOperator.h"
#include "behavior/callBacks/orvScalarCallBackPointer.h"
#include "support/orvCoreTestSupport.h"
#include "support/orvLogCapture.h"

namespace
{

using Comparison = orv::ScalarCallBackComparisonOperator<unsigned int>;
using Scalar = orv::ScalarCallBackPointer<unsigned int>;

/// An unsigned value that writes its name into a journal when it is called.
class JournalValue : public orv::ITypedCallBack<unsigned int>
{
public:
    JournalValue(unsigned int value, char name, std::string& journal) : _value(value), _name(name), _journal(journal) {}
    unsigned int call(int) override
    {
        _journal += _name;
        return _value;
    }

private:
    unsigned int _value;
    char _name;
    std::string& _journal;
};

class ScalarCallBackComparisonOperatorTest : public orvtest::CoreTest
{
protected:
    Scalar value(unsigned int v, char name = 'x') { return Scalar(new JournalValue(v, name, _journal)); }

    /// The answers of one comparison for left values 2, 3 and 4 against 3, as "FTF".
    std::string answers(orv::BoolCallBackPointer (*compare)(const Scalar&, const Scalar&))
    {
        std::string text;
        for (unsigned int left = 2; left <= 4; ++left)
        {
            text += compare(value(left), value(3))->call(0) ? 'T' : 'F';
        }
        return text;
    }

    std::string _journal;
};

TEST_F(ScalarCallBackComparisonOperatorTest, EachOperatorSyntaxBuildsItsComparison)
{
    EXPECT_EQ("FTF", answers([](const Scalar& a, const Scalar& b) { return a == b; }));
    EXPECT_EQ("TFT", answers([](const Scalar& a, const Scalar& b) { return a != b; }));
    EXPECT_EQ("TFF", answers([](const Scalar& a, const Scalar& b) { return a < b; }));
    EXPECT_EQ("TTF", answers([](const Scalar& a, const Scalar& b) { return a <= b; }));
    EXPECT_EQ("FFT", answers([](const Scalar& a, const Scalar& b) { return a > b; }));
    EXPECT_EQ("FTT", answers([](const Scalar& a, const Scalar& b) { return a >= b; }));
    // The left operand is called first.
    _journal.clear();
    (value(1, 'a') > value(2, 'b'))->call(0);
    EXPECT_EQ("ab", _journal);
}

TEST_F(ScalarCallBackComparisonOperatorTest, CodesPutInferiorBeforeInferiorEqual)
{
    Comparison comparison(Comparison::ComparisonOperator::EQUAL, value(2), value(2));
    const char* const expected = "TFFTFT";
    for (unsigned int code = 0; code < 6; ++code)
    {
        comparison.setOperatorTypeUInt(code);
        EXPECT_EQ(expected[code] == 'T', comparison.call(0)) << "code " << code;
    }
    EXPECT_EQ(2u, static_cast<unsigned int>(Comparison::ComparisonOperator::INFERIOR));
    EXPECT_EQ(3u, static_cast<unsigned int>(Comparison::ComparisonOperator::INFERIOR_EQUAL));
    comparison.setOperatorTypeUInt(99);
    EXPECT_EQ(Comparison::ComparisonOperator::END, comparison.getOperatorType());
}

TEST_F(ScalarCallBackComparisonOperatorTest, NullOperandsAreRefusedWithALogLine)
{
    orvtest::LogCapture capture;
    EXPECT_EQ(nullptr, (value(1) == Scalar()).getImpl());
    EXPECT_EQ(1, capture.countLines(orv::LogSeverity::LOG_ERROR, {"null"})) << capture.describe();
}

using ScalarCallBackComparisonOperatorDeathTest = ScalarCallBackComparisonOperatorTest;

TEST_F(ScalarCallBackComparisonOperatorDeathTest, ACodeOutsideTheSixOrAMissingOperandIsFatalWhenCalled)
{
    Comparison comparison(Comparison::ComparisonOperator::END, value(1), value(1));
    EXPECT_DEATH(comparison.call(0), "No valid operator defined for ScalarCallBackComparisonOperator");
    EXPECT_DEATH(Comparison().call(0), "missing operand");
}

} // namespace
