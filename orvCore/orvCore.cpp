// orvCore/orvCore.cpp
#include "orvCore.h"

#include "behavior/behaviors/orvAbstractUserBehavior.h"
#include "behavior/behaviors/orvCompositeBehavior.h"
#include "behavior/callBacks/orvAbstractOperatorCallBack.h"
#include "behavior/callBacks/orvAbstractTrigger.h"
#include "behavior/callBacks/orvBehaviorStatusCallBack.h"
#include "behavior/callBacks/orvBoolCallBackPointer.h"
#include "behavior/callBacks/orvConstantValueCallback.h"
#include "behavior/callBacks/orvCountTrigger.h"
#include "behavior/callBacks/orvDelayTrigger.h"
#include "behavior/callBacks/orvEmptyVoidCallBack.h"
#include "behavior/callBacks/orvITypedCallBack.h"
#include "behavior/callBacks/orvIVoidCallBack.h"
#include "behavior/callBacks/orvLogicalNotBoolCallBack.h"
#include "behavior/callBacks/orvLogicalOperatorCallBack.h"
#include "behavior/callBacks/orvScalarCallBackComparisonOperator.h"
#include "behavior/callBacks/orvScalarCallBackPointer.h"
#include "behavior/callBacks/orvSequenceTrigger.h"
#include "behavior/callBacks/orvVoidFunctionCallBack.h"
#include "behavior/engine/orvAbstractBehavior.h"
#include "behavior/engine/orvBehaviorContext.h"
#include "behavior/engine/orvBehaviorGraph.h"
#include "behavior/operators/orvAbstractBehaviorOperator.h"
#include "behavior/operators/orvAlternativeBehaviorOperator.h"
#include "behavior/operators/orvBlockBehaviorOperator.h"
#include "behavior/operators/orvFinalBehaviorOperator.h"
#include "behavior/operators/orvInitialBehaviorOperator.h"
#include "behavior/operators/orvLoopBehaviorOperator.h"
#include "behavior/operators/orvNoOrderBehaviorOperator.h"
#include "behavior/operators/orvParallelBehaviorOperator.h"
#include "behavior/operators/orvRandomBehaviorOperator.h"
#include "behavior/utils/orvBehaviorPrototype.h"
#include "behavior/utils/orvStaticArrayTargetProvider.h"
#include "behavior/utils/orvStaticTargetProvider.h"
#include "behavior/utils/orvWaypointTargetProvider.h"
#include "engine/ground/orvAbstractGround.h"
#include "engine/ground/orvGroundManager.h"
#include "engine/ground/orvNoGround.h"
#include "engine/simulation/orvAbstractEntityType.h"
#include "engine/simulation/orvEntitiesManager.h"
#include "engine/simulation/orvEntity.h"
#include "engine/simulation/orvEntityType.h"
#include "engine/simulation/orvGroup.h"
#include "engine/simulation/orvGroupEntityType.h"
#include "engine/simulation/orvGroupsManager.h"
#include "engine/simulation/orvHandleEntry.h"
#include "engine/simulation/orvIContext.h"
#include "engine/simulation/orvSimulation.h"
#include "engine/simulation/orvSimulationUserEvent.h"
#include "engine/simulation/orvSimulationUserEventsList.h"
#include "knowledgeBase/orvKBContext.h"
#include "math/types/orvInterval.h"
#include "system/containers/orvIndexTriplet.h"
#include "system/inspection/orvInspectable.h"
#include "system/inspection/orvRTTI.h"
#include "system/inspection/orvReferenceCounter.h"
#include "system/utils/orvStringUtils.h"

#include "math/random/orvRandomNumberGenerator.h"
#include "math/types/orvQuaternion.h"
#include "math/types/orvVector3.h"
#include "system/containers/orvString.h"
#include "system/debug/orvAssert.h"
#include "system/genericPatterns/orvSingleton.h"
#include "system/inspection/orvRTTIAllocator.h"
#include "system/log/orvAbstractLogOutputter.h"
#include "system/log/orvCoreLog.h"
#include "system/log/orvLog.h"

namespace orv
{

namespace
{

// Not atomic and not locked: start and stop belong to one host thread.
unsigned int initCount = 0;

// The class descriptors of the start, group by group, in their fixed order. A class whose descriptor already
// exists through a base or an attribute of a class listed earlier is only counted again.
void createClassDescriptors()
{
    HandleEntry::createClassRTTI(true);
    ITypedCallBack<bool>::createClassRTTI(true);
    ITypedCallBack<unsigned int>::createClassRTTI(true);
    ITypedCallBack<float>::createClassRTTI(true);
    AbstractBehavior::createClassRTTI(true);
    Entity::createClassRTTI(true);
    AbstractEntityType::createClassRTTI(true);
    EntityType::createClassRTTI(true);
    GroupEntityType::createClassRTTI(true);

    IContext::createClassRTTI(true);
    BehaviorContext::createClassRTTI(true);
    EntitiesManager::createClassRTTI(true);
    GroupsManager::createClassRTTI(true);
    SimulationUserEvent::createClassRTTI(true);
    SimulationUserEventsList::createClassRTTI(true);

    RandomNumberGenerator::createClassRTTI(true);
    IndexTriplet<int>::createClassRTTI(true);
    IndexTriplet<unsigned int>::createClassRTTI(true);

    IVoidCallBack::createClassRTTI(true);
    AbstractTrigger::createClassRTTI(true);
    AbstractOperatorCallBack::createClassRTTI(true);
    LogicalOperatorCallBack::createClassRTTI(true);
    LogicalNotBoolCallBack::createClassRTTI(true);
    AbstractUserBehavior::createClassRTTI(true);
    ConstantValueCallback<bool>::createClassRTTI(true);
    ConstantValueCallback<float>::createClassRTTI(true);
    EmptyVoidCallBack::createClassRTTI(true);
    DelayTrigger::createClassRTTI(true);
    SequenceTrigger::createClassRTTI(true);
    BehaviorStatusCallBack::createClassRTTI(true);
    CountTrigger::createClassRTTI(true);
    BehaviorPrototype::createClassRTTI(true);
    SmartPointer<ITypedCallBack<bool>>::createClassRTTI(true);
    SmartPointer<ITypedCallBack<unsigned int>>::createClassRTTI(true);
    SmartPointer<ITypedCallBack<float>>::createClassRTTI(true);
    BoolCallBackPointer::createClassRTTI(true);
    ScalarCallBackPointer<unsigned int>::createClassRTTI(true);
    ScalarCallBackPointer<float>::createClassRTTI(true);

    Simulation::createClassRTTI(true);
    NoGround::createClassRTTI(true);
    Interval<float>::createClassRTTI(true);
    AbstractGround::createClassRTTI(true);
    GroundManager::createClassRTTI(true);

    VoidFunctionCallBack::createClassRTTI(true);
}

// The descriptors created after the stream tables are ready.
void createRemainingClassDescriptors()
{
    StaticTargetProvider::createClassRTTI(true);
    StaticArrayTargetProvider::createClassRTTI(true);
    WaypointTargetProvider::createClassRTTI(true);
    AbstractBehavior::BehaviorStatusData::createClassRTTI(true);
    BehaviorGraph::createClassRTTI(true);
    ScalarCallBackComparisonOperator<unsigned int>::createClassRTTI(true);

    Group::createClassRTTI(true);
    ReferenceCounter::createClassRTTI(true);

    CompositeBehavior::createClassRTTI(true);
    AbstractBehaviorOperator::createClassRTTI(true);
    InitialBehaviorOperator::createClassRTTI(true);
    FinalBehaviorOperator::createClassRTTI(true);
    ParallelBehaviorOperator::createClassRTTI(true);
    NoOrderBehaviorOperator::createClassRTTI(true);
    LoopBehaviorOperator::createClassRTTI(true);
    RandomBehaviorOperator::createClassRTTI(true);
    AlternativeBehaviorOperator::createClassRTTI(true);
    BlockBehaviorOperator::createClassRTTI(true);
    KBContext::createClassRTTI(true);
}

void destroyRemainingClassDescriptors()
{
    KBContext::destroyClassRTTI(true);
    BlockBehaviorOperator::destroyClassRTTI(true);
    AlternativeBehaviorOperator::destroyClassRTTI(true);
    RandomBehaviorOperator::destroyClassRTTI(true);
    LoopBehaviorOperator::destroyClassRTTI(true);
    NoOrderBehaviorOperator::destroyClassRTTI(true);
    ParallelBehaviorOperator::destroyClassRTTI(true);
    FinalBehaviorOperator::destroyClassRTTI(true);
    InitialBehaviorOperator::destroyClassRTTI(true);
    AbstractBehaviorOperator::destroyClassRTTI(true);
    CompositeBehavior::destroyClassRTTI(true);

    ReferenceCounter::destroyClassRTTI(true);
    Group::destroyClassRTTI(true);

    ScalarCallBackComparisonOperator<unsigned int>::destroyClassRTTI(true);
    BehaviorGraph::destroyClassRTTI(true);
    AbstractBehavior::BehaviorStatusData::destroyClassRTTI(true);
    WaypointTargetProvider::destroyClassRTTI(true);
    StaticArrayTargetProvider::destroyClassRTTI(true);
    StaticTargetProvider::destroyClassRTTI(true);
}

// The reverse of createClassDescriptors, but for the physics interfaces, which go after IndexTriplet<unsigned int>
// and ahead of the triangle partition, and for the three smart pointers of call-backs, which go ahead of the
// call-back pointers.
void destroyClassDescriptors()
{
    VoidFunctionCallBack::destroyClassRTTI(true);

    GroundManager::destroyClassRTTI(true);
    AbstractGround::destroyClassRTTI(true);
    Interval<float>::destroyClassRTTI(true);
    NoGround::destroyClassRTTI(true);
    Simulation::destroyClassRTTI(true);

    SmartPointer<ITypedCallBack<float>>::destroyClassRTTI(true);
    SmartPointer<ITypedCallBack<unsigned int>>::destroyClassRTTI(true);
    SmartPointer<ITypedCallBack<bool>>::destroyClassRTTI(true);
    ScalarCallBackPointer<float>::destroyClassRTTI(true);
    ScalarCallBackPointer<unsigned int>::destroyClassRTTI(true);
    BoolCallBackPointer::destroyClassRTTI(true);
    BehaviorPrototype::destroyClassRTTI(true);
    CountTrigger::destroyClassRTTI(true);
    BehaviorStatusCallBack::destroyClassRTTI(true);
    SequenceTrigger::destroyClassRTTI(true);
    DelayTrigger::destroyClassRTTI(true);
    EmptyVoidCallBack::destroyClassRTTI(true);
    ConstantValueCallback<float>::destroyClassRTTI(true);
    ConstantValueCallback<bool>::destroyClassRTTI(true);
    AbstractUserBehavior::destroyClassRTTI(true);
    LogicalNotBoolCallBack::destroyClassRTTI(true);
    LogicalOperatorCallBack::destroyClassRTTI(true);
    AbstractOperatorCallBack::destroyClassRTTI(true);
    AbstractTrigger::destroyClassRTTI(true);
    IVoidCallBack::destroyClassRTTI(true);

    IndexTriplet<unsigned int>::destroyClassRTTI(true);
    IndexTriplet<int>::destroyClassRTTI(true);
    RandomNumberGenerator::destroyClassRTTI(true);

    SimulationUserEventsList::destroyClassRTTI(true);
    SimulationUserEvent::destroyClassRTTI(true);
    GroupsManager::destroyClassRTTI(true);
    EntitiesManager::destroyClassRTTI(true);
    BehaviorContext::destroyClassRTTI(true);
    IContext::destroyClassRTTI(true);

    GroupEntityType::destroyClassRTTI(true);
    EntityType::destroyClassRTTI(true);
    AbstractEntityType::destroyClassRTTI(true);
    Entity::destroyClassRTTI(true);
    AbstractBehavior::destroyClassRTTI(true);
    ITypedCallBack<float>::destroyClassRTTI(true);
    ITypedCallBack<unsigned int>::destroyClassRTTI(true);
    ITypedCallBack<bool>::destroyClassRTTI(true);
    HandleEntry::destroyClassRTTI(true);
}

} // namespace

void initCore()
{
    if (initCount == 0)
    {
        // Both name buffers are reused from their start at every full start.
        resetAlphaNumericCopiesBuffer();
        resetRTTIConcatBuffer();
        orvAssert(orv::getDefaultAllocator() != NULL);
        initializeStringAllocator(getDefaultAllocator());
        initializeRTTIAllocator(getDefaultAllocator());

        Log::allocateStaticLogs();
        AbstractLogOutputter::allocateStaticLogOutputters();
        allocateCoreLog();

        RTTI::allocateStaticRTTIs();
        RTTI::createRTTIs();

        // Built here, on the thread that starts the library, and not later on a worker.
        Vector3::getNullVector();
        Quaternion::getNullVector();
        Quaternion::getIdentity();

        createClassDescriptors();
        createRemainingClassDescriptors();

        // The process-wide generator comes last.
        Singleton<RandomNumberGenerator>::create(0u);
    }
    ++initCount;
}

void finishCore()
{
    --initCount;
    if (initCount != 0)
    {
        return;
    }
    Singleton<RandomNumberGenerator>::destroy();

    destroyRemainingClassDescriptors();
    destroyClassDescriptors();
    RTTI::destroyRTTIs();
    RTTI::deallocateStaticRTTIs();

    deallocateCoreLog();
    AbstractLogOutputter::deallocateStaticLogOutputters();
    Log::deallocateStaticLogs();

    uninitializeRTTIAllocator();
    uninitializeStringAllocator();
}

unsigned int getCoreInitCount()
{
    return initCount;
}

const ProductInformation& getCoreProductInformation()
{
    static const ProductInformation information(
        "OrvaneCore", "OrvaneCore crowd simulation library. Copyright (c) Orvane. All rights reserved.", 5, 2, 0, 0,
        "5.2[d749892]-2015/09/02", "2015/09/02");
    return information;
}

} // namespace orv

extern "C"
{

    void orvInitCore()
    {
        orv::initCore();
    }

    void orvFinishCore()
    {
        orv::finishCore();
    }

    void orvUseCoreDefaultAllocator()
    {
        orv::useCoreDefaultAllocator();
    }
}
