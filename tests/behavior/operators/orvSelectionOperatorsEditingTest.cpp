#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "behavior/behaviors/orvCompositeBehavior.h"
#include "behavior/callBacks/orvConstantValueCallback.h"
#include "behavior/operators/orvAlternativeBehaviorOperator.h"
#include "behavior/operators/orvNoOrderBehaviorOperator.h"
#include "behavior/operators/orvParallelBehaviorOperator.h"
#include "behavior/operators/orvRandomBehaviorOperator.h"
#include "support/orvCoreTestSupport.h"
#include "support/orvLogCapture.h"
#include "support/orvRecordingBehavior.h"
#include "system/inspection/orvAbstractAttribute.h"
#include "system/inspection/orvRTTI.h"

namespace
{

using orv::AbstractBehavior;
using orv::AbstractBehaviorContainer;
using orv::AlternativeBehaviorOperator;
using orv::BoolCallBackPointer;
using orv::NoOrderBehaviorOperator;
using orv::ParallelBehaviorOperator;
using orv::RandomBehaviorOperator;
using orv::RTTI;
using orv::SmartPointer;
using orvtest::RecordingBehavior;
using orvtest::RecordingNode;
using FloatPointer = orv::ScalarCallBackPointer<float>;
constexpr orv::LogSeverity::Value kError = orv::LogSeverity::LOG_ERROR;

/// A container that is locked when the test says so: the parent that makes its children's edits refused.
class LockableContainer : public AbstractBehaviorContainer
{
public:
    bool isLocked() const override { return _locked; }
    bool checkChildrenBehaviorsConnection(bool) const override { return true; }
    bool checkChildBehaviorLooping(const AbstractBehavior*) const override { return false; }
    bool cleanChildrenBehaviors(bool) override { return true; }
    bool _locked = false;
};

/// The last count attribute names of the class, in order: the class's own, after its bases'.
std::vector<std::string> ownAttributeNames(const char* typeName, unsigned int count)
{
    std::vector<std::string> names;
    const RTTI* rtti = RTTI::getRTTI(RTTI::getTypeID(typeName));
    if (rtti != nullptr && rtti->getAttributesCount() >= count)
    {
        for (unsigned int i = rtti->getAttributesCount() - count; i < rtti->getAttributesCount(); ++i)
        {
            names.push_back(rtti->getAttribute(i)->getName());
        }
    }
    return names;
}

/// Nodes held by the test, a lockable parent, and the error log of the core.
class SelectionEditingTest : public orvtest::CoreTest
{
protected:
    void SetUp() override
    {
        CoreTest::SetUp();
        _log = new orvtest::LogCapture();
    }
    void TearDown() override
    {
        delete _log;
        // The nodes go before the library stops, the lockable parent's children too.
        _lockable.touchChildrenBehaviors().clear();
        _held.clear();
        CoreTest::TearDown();
    }
    template <class Node>
    Node* hold(Node* node)
    {
        _held.push_back(SmartPointer<AbstractBehavior>(node));
        return node;
    }
    /// A node whose parent is the lockable container.
    AbstractBehavior* lockedNode()
    {
        AbstractBehavior* node = hold(new RecordingNode());
        EXPECT_TRUE(_lockable.addChildBehavior(node));
        return node;
    }
    /// True when one error line is exactly prefix followed by reason.
    bool refused(const std::string& prefix, const std::string& reason) const
    {
        for (const orvtest::LogCapture::Line& line : _log->getLines())
        {
            if (line._severity == kError && line._message == prefix + reason)
            {
                return true;
            }
        }
        ADD_FAILURE() << "no error line \"" << prefix + reason << "\" among:\n" << _log->describe();
        return false;
    }

    orvtest::LogCapture* _log = nullptr;
    LockableContainer _lockable;
    std::vector<SmartPointer<AbstractBehavior>> _held;
};

const std::string kSetAtPosition = "Can not explicitely set requested next behavior at requested position for current "
                                   "behavior : ";
const std::string kSetCondition = "Can not explicitely set condition at required position for current behavior : ";
const std::string kConnection = "Invalid connection for next behavior candidates : ";

TEST_F(SelectionEditingTest, ClassesAreRegisteredWithTheirIdentifiersAndAttributes)
{
    const struct
    {
        const char* name;
        const char* uuid;
        bool timeConsuming;
    } classes[] = {
        {"orv::ParallelBehaviorOperator", "6e57dddf-2a0e-47cf-a96f-e784b81c8190", true},
        {"orv::NoOrderBehaviorOperator", "424fbc61-2600-4adc-a009-f920c11f84d3", true},
        {"orv::RandomBehaviorOperator", "9e197ca8-f404-4d66-b888-6519f522171d", false},
        {"orv::AlternativeBehaviorOperator", "0ff18840-76b3-49c0-b504-4b6741f62248", false},
    };
    for (const auto& c : classes)
    {
        EXPECT_EQ(orv::Uuid(c.uuid), RTTI::getTypeID(c.name)) << c.name;
        void* instance = RTTI::createInstance(RTTI::getTypeID(c.name));
        ASSERT_NE(nullptr, instance) << c.name;
        AbstractBehavior* node = static_cast<AbstractBehavior*>(static_cast<orv::ReferenceCounter*>(instance));
        hold(node);
        EXPECT_STREQ(c.name, node->getRTTI()->getTypeName());
        EXPECT_EQ(c.timeConsuming, node->isTimeConsuming()) << c.name;
    }
    EXPECT_EQ((std::vector<std::string>{"childrenBehaviors", "exitMode"}),
              ownAttributeNames("orv::ParallelBehaviorOperator", 2));
    EXPECT_EQ(
        (std::vector<std::string>{"childrenBehaviors", "childrenBehaviorsRunArrayCapacity", "childrenBhehaviorsRun",
                                  "currentChildBehaviorRunIdArrayCapacity", "currentChildBehaviorRunId"}),
        ownAttributeNames("orv::NoOrderBehaviorOperator", 5));
    EXPECT_EQ((std::vector<std::string>{"conditions", "weights"}), ownAttributeNames("orv::RandomBehaviorOperator", 2));
    EXPECT_EQ(std::vector<std::string>{"conditions"}, ownAttributeNames("orv::AlternativeBehaviorOperator", 1));
}

TEST_F(SelectionEditingTest, RandomEditsAreRefusedWithTheirTexts)
{
    RandomBehaviorOperator* random = hold(new RandomBehaviorOperator());
    AbstractBehavior* free = hold(new RecordingNode());
    AbstractBehavior* locked = lockedNode();
    ASSERT_TRUE(random->addNextBehaviorCandidate(locked));
    EXPECT_EQ(1.0f, random->getWeight(0)->call(0));
    EXPECT_EQ(nullptr, random->getCondition(0).getImpl());
    EXPECT_EQ(nullptr, random->getWeight(1).getImpl());

    _lockable._locked = true;
    EXPECT_FALSE(random->setRandomNextBehavior(0, random));
    EXPECT_TRUE(refused(kSetAtPosition, "requested next behavior is same as current behavior (forbidden connection)"));
    EXPECT_FALSE(random->setRandomNextBehavior(0, locked));
    EXPECT_TRUE(refused(kSetAtPosition, "requested next behavior belongs to a parent behavior that is locked"));
    EXPECT_FALSE(random->setRandomNextBehavior(1, free));
    EXPECT_TRUE(refused(kSetAtPosition, "requested position is out of bounds"));
    EXPECT_FALSE(random->setRandomNextBehavior(0, free));
    EXPECT_TRUE(
        refused(kSetAtPosition,
                "next behavior currently set at requested position belongs to a parent behavior that is locked"));
    EXPECT_FALSE(random->setCondition(1, BoolCallBackPointer()));
    EXPECT_TRUE(refused(kSetCondition, "requested position is out of bounds"));
    EXPECT_FALSE(random->setWeight(3, FloatPointer()));
    EXPECT_TRUE(refused("Can not explicitely set weight at required position for current behavior : ",
                        "requested position is out of bounds"));

    // The operator's own parent locked comes first.
    _lockable._locked = false;
    _lockable.removeChildBehavior(locked);
    ASSERT_TRUE(_lockable.addChildBehavior(random));
    _lockable._locked = true;
    _log->clear();
    EXPECT_FALSE(random->setRandomNextBehavior(5, random));
    EXPECT_FALSE(random->setCondition(5, BoolCallBackPointer()));
    EXPECT_FALSE(random->setWeight(5, FloatPointer()));
    EXPECT_EQ(3, _log->countLines(kError, {"current behavior belongs to a parent behavior that is locked"}));
    EXPECT_EQ(locked, random->getRandomNextBehavior(0));
}

TEST_F(SelectionEditingTest, RandomConnectionCheckNamesTheFirstProblem)
{
    RandomBehaviorOperator* random = hold(new RandomBehaviorOperator());
    EXPECT_FALSE(random->checkNextBehaviorCandidatesConnection());
    EXPECT_TRUE(refused(kConnection, "RandomBehaviorOperator must have at least 1 next behavior candidate"));
    AbstractBehavior* a = hold(new RecordingNode());
    AbstractBehavior* b = hold(new RecordingNode());
    ASSERT_TRUE(random->addRandomNextBehavior(a, FloatPointer(new orv::ConstantValueCallback<float>(2.0f)),
                                              BoolCallBackPointer()));
    ASSERT_TRUE(random->addNextBehaviorCandidate(b));
    EXPECT_TRUE(random->checkNextBehaviorCandidatesConnection());
    ASSERT_TRUE(random->setWeight(1, FloatPointer()));
    EXPECT_FALSE(random->checkNextBehaviorCandidatesConnection());
    EXPECT_TRUE(refused(kConnection, "a weight used for selection is NULL"));
    ASSERT_TRUE(random->setRandomNextBehavior(0, nullptr));
    EXPECT_FALSE(random->checkNextBehaviorCandidatesConnection());
    EXPECT_TRUE(refused(kConnection, "a next behavior candidate for selection is NULL"));
    random->touchNextBehaviorCandidates().push_back(a);
    EXPECT_FALSE(random->checkNextBehaviorCandidatesConnection());
    EXPECT_TRUE(refused(kConnection, "count of next behavior candidates and weights differ"));

    // Removing takes the weight and the condition at the follower's place; an unknown follower is refused.
    random->touchNextBehaviorCandidates().pop_back();
    ASSERT_TRUE(random->setRandomNextBehavior(0, a));
    ASSERT_TRUE(random->removeRandomNextBehavior(a));
    EXPECT_EQ(b, random->getRandomNextBehavior(0));
    EXPECT_EQ(nullptr, random->getWeight(0).getImpl());
    EXPECT_EQ(nullptr, random->getWeight(1).getImpl());
    EXPECT_FALSE(random->removeNextBehaviorCandidate(a));
    EXPECT_EQ(1u, random->getWeights().size());
}

TEST_F(SelectionEditingTest, AlternativeEditsAreRefusedWithTheirTexts)
{
    AlternativeBehaviorOperator* alternative = hold(new AlternativeBehaviorOperator());
    AbstractBehavior* free = hold(new RecordingNode());
    AbstractBehavior* locked = lockedNode();
    ASSERT_TRUE(alternative->setDefaultNextBehavior(locked));
    ASSERT_TRUE(alternative->addConditionalNextBehavior(hold(new RecordingNode()), BoolCallBackPointer()));

    EXPECT_FALSE(alternative->setConditionalNextBehavior(0, free));
    EXPECT_TRUE(refused(kSetAtPosition, "requested position is forbidden (position 0 is dedicated to default next "
                                        "behavior, use \"setDefaultNextBehavior\" instead)"));
    EXPECT_FALSE(alternative->setConditionalNextBehavior(2, free));
    EXPECT_TRUE(refused(kSetAtPosition, "requested position is out of bounds"));
    EXPECT_FALSE(alternative->setCondition(0, BoolCallBackPointer()));
    EXPECT_TRUE(
        refused(kSetCondition, "requested position is forbidden (position 0 is dedicated to default next behavior)"));
    EXPECT_FALSE(alternative->setCondition(2, BoolCallBackPointer()));
    EXPECT_TRUE(refused(kSetCondition, "requested position is out of bounds"));
    EXPECT_FALSE(alternative->removeConditionalNextBehavior(locked));
    EXPECT_TRUE(refused("Can not remove next behavior candidate from current behavior : ",
                        "removing default next behavior is forbidden"));
    EXPECT_FALSE(alternative->addConditionalNextBehavior(nullptr, BoolCallBackPointer()));
    EXPECT_TRUE(
        refused("Can not accept next behavior candidate for current behavior : ", "behavior candidate is NULL"));

    const std::string setDefault =
        "Can not explicitely set requested next behavior as default next behavior for current behavior : ";
    _lockable._locked = true;
    EXPECT_FALSE(alternative->setDefaultNextBehavior(free));
    EXPECT_TRUE(refused(setDefault, "next behavior currently set belongs to a parent behavior that is locked"));
    EXPECT_FALSE(alternative->setDefaultNextBehavior(locked));
    EXPECT_TRUE(refused(setDefault, "requested next behavior belongs to a parent behavior that is locked"));
    EXPECT_FALSE(alternative->setConditionalNextBehavior(1, locked));
    EXPECT_TRUE(refused(kSetAtPosition, "requested next behavior belongs to a parent behavior that is locked"));
    EXPECT_EQ(locked, alternative->getDefaultNextBehavior());

    _lockable._locked = false;
    ASSERT_TRUE(_lockable.addChildBehavior(alternative));
    _lockable._locked = true;
    _log->clear();
    EXPECT_FALSE(alternative->setDefaultNextBehavior(free));
    EXPECT_FALSE(alternative->setConditionalNextBehavior(0, free));
    EXPECT_FALSE(alternative->setCondition(0, BoolCallBackPointer()));
    EXPECT_EQ(3, _log->countLines(kError, {"current behavior belongs to a parent behavior that is locked"}));
}

TEST_F(SelectionEditingTest, AlternativeKeepsPositionZeroForTheDefaultAndChecksFromPositionOne)
{
    AlternativeBehaviorOperator* alternative = hold(new AlternativeBehaviorOperator());
    EXPECT_FALSE(alternative->checkNextBehaviorCandidatesConnection());
    EXPECT_TRUE(refused(kConnection, "AlternativeBehaviorOperator must have at least 1 next behavior candidate"));
    AbstractBehavior* a = hold(new RecordingNode());
    AbstractBehavior* d = hold(new RecordingNode());
    ASSERT_TRUE(alternative->addConditionalNextBehavior(a, BoolCallBackPointer()));
    EXPECT_EQ(nullptr, alternative->getDefaultNextBehavior());
    EXPECT_EQ(a, alternative->getConditionalNextBehavior(1));
    EXPECT_FALSE(alternative->checkNextBehaviorCandidatesConnection());
    EXPECT_TRUE(refused(kConnection, "a condition used for evaluation is NULL"));
    ASSERT_TRUE(alternative->setCondition(1, BoolCallBackPointer(new orv::ConstantValueCallback<bool>(true))));
    EXPECT_TRUE(alternative->checkNextBehaviorCandidatesConnection());
    ASSERT_TRUE(alternative->setConditionalNextBehavior(1, nullptr));
    EXPECT_FALSE(alternative->checkNextBehaviorCandidatesConnection());
    EXPECT_TRUE(refused(kConnection, "a next behavior to evaluate is NULL"));
    alternative->touchNextBehaviorCandidates().push_back(d);
    EXPECT_FALSE(alternative->checkNextBehaviorCandidatesConnection());
    EXPECT_TRUE(refused(kConnection, "count of next behavior candidates and conditions differ"));
    alternative->touchNextBehaviorCandidates().pop_back();

    ASSERT_TRUE(alternative->setDefaultNextBehavior(d));
    EXPECT_EQ(d, alternative->getDefaultNextBehavior());
    EXPECT_EQ(nullptr, alternative->getCondition(0).getImpl());
    EXPECT_NE(nullptr, alternative->getCondition(1).getImpl());
    AlternativeBehaviorOperator* fresh = hold(new AlternativeBehaviorOperator());
    ASSERT_TRUE(fresh->setDefaultNextBehavior(d));
    EXPECT_EQ(1u, fresh->getConditions().size());
}

/// The children rules the parallel and the no-order operators share, run on either.
template <class Container>
void checkChildrenRules(const std::string& name)
{
    orvtest::LogCapture log;
    SmartPointer<AbstractBehavior> held(new Container());
    Container& container = static_cast<Container&>(*held);
    EXPECT_TRUE(container.checkChildrenBehaviorsConnection(true)) << name;

    RecordingBehavior* good = new RecordingBehavior();
    RecordingBehavior* notFinal = new RecordingBehavior();
    RandomBehaviorOperator* wrongType = new RandomBehaviorOperator();
    Container* nested = new Container();
    RecordingBehavior* foreign = new RecordingBehavior();
    SmartPointer<AbstractBehavior> holdForeign(foreign);
    SmartPointer<AbstractBehavior> holdTarget(new RecordingNode());
    ASSERT_TRUE(notFinal->addNextBehaviorCandidate(holdTarget.getImpl()));
    for (AbstractBehavior* child : {static_cast<AbstractBehavior*>(good), static_cast<AbstractBehavior*>(notFinal),
                                    static_cast<AbstractBehavior*>(wrongType), static_cast<AbstractBehavior*>(nested)})
    {
        ASSERT_TRUE(container.addChildBehavior(child));
    }
    nested->touchChildrenBehaviors().push_back(SmartPointer<AbstractBehavior>());
    Container other;
    ASSERT_TRUE(other.addChildBehavior(foreign));
    container.touchChildrenBehaviors().push_back(SmartPointer<AbstractBehavior>(foreign));
    container.touchChildrenBehaviors().push_back(SmartPointer<AbstractBehavior>());

    log.clear();
    EXPECT_FALSE(container.checkChildrenBehaviorsConnection(true));
    const std::string report =
        "Invalid connection for children behaviors contained in " + name +
        " : \n\t- 1 children behaviors are NULL"
        "\n\t- 1 children behaviors are not of the required type (only AbstractBehaviorContainer or "
        "AbstractUserBehavior types allowed, type AbstractBehaviorOperator is forbidden)"
        "\n\t- 1 children behaviors were added to current behavior but belong to another parent behavior"
        "\n\t- 1 children behaviors are not final (setting a next behavior for a contained behavior is forbidden)"
        "\n\t- 1 children behaviors are behavior containers that have connection issues";
    ASSERT_FALSE(log.getLines().empty());
    EXPECT_EQ(report, log.getLines().back()._message);

    // The clean drops the null and the foreign child, removes the operator child, and cuts the follower; the
    // nested container of the same kind is removed too, as it is neither a composite nor a host behaviour.
    log.clear();
    EXPECT_TRUE(container.cleanChildrenBehaviors(true)) << log.describe();
    EXPECT_EQ(2u, container.getChildrenBehaviors().size());
    EXPECT_TRUE(container.hasChildBehavior(good));
    EXPECT_TRUE(notFinal->isFinal());
    EXPECT_EQ(&other, foreign->getParentBehavior());
    EXPECT_TRUE(container.checkChildrenBehaviorsConnection(true));

    // The one-follower rule names the class.
    AbstractBehavior* next = new RecordingNode();
    SmartPointer<AbstractBehavior> holdNext(next);
    ASSERT_TRUE(container.setNextBehavior(next));
    EXPECT_FALSE(container.addNextBehaviorCandidate(holdTarget.getImpl()));
    EXPECT_TRUE(log.hasLine(kError, {("(" + name + " allows at most 1 next behavior candidate)").c_str()}));
    container.touchNextBehaviorCandidates().push_back(holdTarget.getImpl());
    EXPECT_FALSE(container.checkNextBehaviorCandidatesConnection());
    EXPECT_TRUE(log.hasLine(kError, {("Invalid connection for next behavior candidates : " + name +
                                      " can not have more than 1 next behavior candidate")
                                         .c_str()}));
    EXPECT_FALSE(container.checkChildBehaviorLooping(good));
}

TEST_F(SelectionEditingTest, ParallelChildrenRulesReportAndRepairEachProblem)
{
    checkChildrenRules<ParallelBehaviorOperator>("ParallelBehaviorOperator");
}

TEST_F(SelectionEditingTest, NoOrderChildrenRulesReportAndRepairEachProblem)
{
    checkChildrenRules<NoOrderBehaviorOperator>("NoOrderBehaviorOperator");
}

TEST_F(SelectionEditingTest, ALockedContainerIsLeftAloneByTheCleanWithoutALogLine)
{
    SmartPointer<AbstractBehavior> held(new ParallelBehaviorOperator());
    ParallelBehaviorOperator& parallel = static_cast<ParallelBehaviorOperator&>(*held);
    ASSERT_TRUE(parallel.addChildBehavior(new RecordingBehavior()));
    parallel.allocate(1);
    parallel.init();
    ASSERT_TRUE(parallel.isLocked());
    parallel.touchChildrenBehaviors().push_back(SmartPointer<AbstractBehavior>());
    _log->clear();
    EXPECT_TRUE(parallel.cleanChildrenBehaviors(true));
    EXPECT_EQ(2u, parallel.getChildrenBehaviors().size());
    EXPECT_TRUE(_log->getLines().empty()) << _log->describe();
    parallel.touchChildrenBehaviors().pop_back();
    parallel.finish();
}

using SelectionEditingDeathTest = SelectionEditingTest;

TEST_F(SelectionEditingDeathTest, ANegativeCapacityOfTheNoOrderRunsIsFatal)
{
    NoOrderBehaviorOperator* noOrder = hold(new NoOrderBehaviorOperator());
    EXPECT_DEATH(noOrder->setChildrenBehaviorsRunArrayCapacity(-1), "value >= 0");
    EXPECT_DEATH(noOrder->setCurrentChildBehaviorRunIdArrayCapacity(-1), "value >= 0");
}

} // namespace
