// orvCore/orvCore.cpp
#include "orvCore.h"

#include "behavior/engine/orvBehaviorContext.h"
#include "behavior/engine/orvBehaviorGraph.h"
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

    Simulation::createClassRTTI(true);
    NoGround::createClassRTTI(true);
    Interval<float>::createClassRTTI(true);
    AbstractGround::createClassRTTI(true);
    GroundManager::createClassRTTI(true);
}

// The descriptors created after the stream tables are ready.
void createRemainingClassDescriptors()
{
    BehaviorGraph::createClassRTTI(true);

    Group::createClassRTTI(true);
    ReferenceCounter::createClassRTTI(true);

    KBContext::createClassRTTI(true);
}

void destroyRemainingClassDescriptors()
{
    KBContext::destroyClassRTTI(true);

    ReferenceCounter::destroyClassRTTI(true);
    Group::destroyClassRTTI(true);

    BehaviorGraph::destroyClassRTTI(true);
}

// The reverse of createClassDescriptors, but for the physics interfaces, which go after IndexTriplet<unsigned int>
// and ahead of the triangle partition.
void destroyClassDescriptors()
{
    GroundManager::destroyClassRTTI(true);
    AbstractGround::destroyClassRTTI(true);
    Interval<float>::destroyClassRTTI(true);
    NoGround::destroyClassRTTI(true);
    Simulation::destroyClassRTTI(true);

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
