#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "behavior/engine/orvBehaviorContext.h"
#include "engine/simulation/orvSimulation.h"
#include "support/orvBatchQueueDrain.h"
#include "support/orvCoreTestSupport.h"
#include "support/orvLogCapture.h"

namespace
{

using orv::IContext;
using orv::ProcessingBatch;
using orvtest::drain;

/// A context that takes part in every kind of slice.
class SlicedContext : public IContext
{
public:
    SlicedContext(bool multithread, bool groupsFirst) : IContext(multithread, groupsFirst) {}
    void setContextType() override { assignContextType(ContextType::NAVIGATION); }
    void allocateComponentsArrays() override {}
    void deallocateComponentsArrays() override {}
    void doInit() override { ++_initCount; }
    void doUpdate(orv::Time) override {}
    void doFinish() override { ++_finishCount; }
    bool registeredOnInitEntityType() const override { return true; }
    bool registeredOnInitGroupEntityType() const override { return true; }
    bool registeredOnInitEntityComponents() const override { return true; }
    bool registeredOnUpdateEntityComponents() const override { return true; }
    bool registeredOnUpdateGroupComponents() const override { return true; }
    bool registeredOnFinishEntityComponents() const override { return true; }
    void onFinishEntityComponents(int, int) override { ++_finishCount; }

    int _initCount = 0;
    int _finishCount = 0;
};

/// A host context that declares a descriptor; the tests leave it unregistered.
class DescribedContext : public SlicedContext
{
    ORV_DECLARE_RTTI(DescribedContext)

public:
    DescribedContext() : SlicedContext(true, false) {}
};

std::vector<std::string> messagesOf(const orvtest::LogCapture& capture)
{
    std::vector<std::string> messages;
    for (const orvtest::LogCapture::Line& line : capture.getLines())
    {
        messages.push_back(line._message);
    }
    return messages;
}

std::vector<std::pair<int, int>> slicesOf(const std::vector<ProcessingBatch>& batches, orv::BatchUpdateMethod method)
{
    std::vector<std::pair<int, int>> slices;
    for (const ProcessingBatch& batch : batches)
    {
        if (batch._updateMethod == method)
        {
            slices.emplace_back(batch._firstIndex, batch._lastIndex);
        }
    }
    return slices;
}

ORV_IMPLEMENT_RTTI(DescribedContext, "0b7e4a8c-5c7e-4f7e-9b0e-3f1f2d6c9a41", "orvtest::DescribedContext")

void DescribedContext::addAttributes()
{
    _rtti->addBaseClass<orv::IContext>();
}

class IContextTest : public orvtest::CoreTest
{
protected:
    std::vector<ProcessingBatch> frame(IContext& context, int entityCount, int groupCount)
    {
        orv::ProcessingBatchQueue queue;
        context.enqueueUpdate(queue, 0.04, entityCount, groupCount);
        return drain(queue);
    }
};

TEST_F(IContextTest, AutomaticSliceSizeGivesAboutAHundredSlices)
{
    SlicedContext context(true, false);
    std::vector<std::pair<int, int>> slices = slicesOf(frame(context, 100, 0), &IContext::updateEntityComponentsBatch);
    ASSERT_EQ(50u, slices.size());
    EXPECT_EQ(std::make_pair(0, 1), slices.front());
    EXPECT_EQ(std::make_pair(98, 99), slices.back());

    slices = slicesOf(frame(context, 99, 0), &IContext::updateEntityComponentsBatch);
    ASSERT_EQ(99u, slices.size());
    EXPECT_EQ(std::make_pair(98, 98), slices.back());

    slices = slicesOf(frame(context, 1, 0), &IContext::updateEntityComponentsBatch);
    ASSERT_EQ(1u, slices.size());
    EXPECT_EQ(std::make_pair(0, 0), slices.front());
}

TEST_F(IContextTest, ConfiguredSliceSizeCoversTheCountWithAShorterLastSlice)
{
    SlicedContext context(true, false);
    context.setEntityBatchSize(4);
    EXPECT_EQ((std::vector<std::pair<int, int>>{{0, 3}, {4, 7}, {8, 9}}),
              slicesOf(frame(context, 10, 0), &IContext::updateEntityComponentsBatch));
    context.setEntityBatchSize(50);
    EXPECT_EQ((std::vector<std::pair<int, int>>{{0, 9}}),
              slicesOf(frame(context, 10, 0), &IContext::updateEntityComponentsBatch));
}

TEST_F(IContextTest, FrameOrdersGroupsAgainstEntitiesAroundOneEmptyBlockingBatch)
{
    SlicedContext groupsFirst(true, true);
    std::vector<ProcessingBatch> batches = frame(groupsFirst, 3, 2);
    ASSERT_EQ(8u, batches.size());
    EXPECT_EQ(&IContext::preUpdateBatch, batches[0]._updateMethod);
    EXPECT_EQ(&IContext::updateGroupComponentsBatch, batches[1]._updateMethod);
    EXPECT_EQ(&IContext::updateGroupComponentsBatch, batches[2]._updateMethod);
    EXPECT_FALSE(batches[1]._blocking);
    EXPECT_EQ(&orv::Simulation::emptyBlockingBatch, batches[3]._updateMethod);
    EXPECT_EQ(&IContext::updateEntityComponentsBatch, batches[4]._updateMethod);
    EXPECT_EQ(&IContext::postUpdateBatch, batches[7]._updateMethod);

    SlicedContext entitiesFirst(false, false);
    batches = frame(entitiesFirst, 1, 1);
    ASSERT_EQ(5u, batches.size());
    EXPECT_EQ(&IContext::updateEntityComponentsBatch, batches[1]._updateMethod);
    EXPECT_TRUE(batches[1]._blocking);
    EXPECT_EQ(&IContext::updateGroupComponentsBatch, batches[3]._updateMethod);
}

TEST_F(IContextTest, PerTypeInitialisationRunsInParallelOnlyForTwoTypesOrMore)
{
    SlicedContext context(true, false);
    orv::ProcessingBatchQueue queue;
    context.enqueueInit(queue, 1, 0);
    std::vector<ProcessingBatch> batches = drain(queue);
    ASSERT_EQ(2u, batches.size());
    EXPECT_EQ(&IContext::initEntityTypeBatch, batches[1]._updateMethod);
    EXPECT_TRUE(batches[1]._blocking);

    context.enqueueInit(queue, 2, 3);
    batches = drain(queue);
    ASSERT_EQ(1u + 3u + 4u, batches.size());
    EXPECT_EQ(&IContext::initEntityTypeBatch, batches[1]._updateMethod);
    EXPECT_FALSE(batches[1]._blocking);
    EXPECT_EQ(1, batches[2]._firstIndex);
    EXPECT_EQ(&orv::Simulation::emptyBlockingBatch, batches[3]._updateMethod);
    EXPECT_EQ(&IContext::initGroupEntityTypeBatch, batches[4]._updateMethod);
    EXPECT_EQ(&orv::Simulation::emptyBlockingBatch, batches[7]._updateMethod);
}

TEST_F(IContextTest, InitBatchRunsOnceAndLogsOnce)
{
    orvtest::LogCapture capture;
    SlicedContext context(true, false);
    IContext::initBatch(0.0, &context, 0, 0);
    IContext::initBatch(0.0, &context, 0, 0);
    EXPECT_EQ(1, context._initCount);
    EXPECT_TRUE(context.isInitialized());
    EXPECT_EQ(IContext::ContextType::NAVIGATION, context.getContextType());
    EXPECT_EQ(std::vector<std::string>{"orv::IContext initialized"}, messagesOf(capture));

    context.finish();
    EXPECT_FALSE(context.isInitialized());
    EXPECT_EQ(1, context._finishCount);
}

TEST_F(IContextTest, LogLinesNameTheRegisteredClassOrFallBackToTheBase)
{
    orvtest::LogCapture capture;
    DescribedContext unregistered;
    IContext::initBatch(0.0, &unregistered, 0, 0);
    unregistered.finish();
    DescribedContext::createClassRTTI(true);
    DescribedContext registered;
    IContext::initBatch(0.0, &registered, 0, 0);
    registered.finish();
    DescribedContext::destroyClassRTTI(true);
    EXPECT_EQ((std::vector<std::string>{"orv::IContext initialized", "orv::IContext finished",
                                        "orvtest::DescribedContext initialized", "orvtest::DescribedContext finished"}),
              messagesOf(capture));
}

TEST_F(IContextTest, FinishOfAContextNeverInitialisedCallsNothing)
{
    SlicedContext context(true, false);
    context.finish();
    EXPECT_EQ(0, context._finishCount);
}

TEST_F(IContextTest, LogLinesAreBuiltOnlyWhenTheFilterLetsThemThrough)
{
    orvtest::LogCapture capture;
    orv::getCoreLog().setSeverityFilter(orv::LogSeverity::LOG_WARNING);
    SlicedContext context(true, false);
    IContext::initBatch(0.0, &context, 0, 0);
    context.finish();
    EXPECT_TRUE(capture.getLines().empty());
    orv::getCoreLog().setSeverityFilter(orv::LogSeverity::LOG_INFO);
}

using IContextDeathTest = IContextTest;

TEST_F(IContextDeathTest, DeletingAnInitialisedContextIsFatal)
{
    EXPECT_DEATH(
        {
            IContext* context = new SlicedContext(true, false);
            IContext::initBatch(0.0, context, 0, 0);
            delete context;
        },
        "A context can only be deleted after being finished.");
}

} // namespace
