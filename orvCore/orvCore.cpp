// orvCore/orvCore.cpp
#include "orvCore.h"

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

// Step 9 and step 11 of the start: the class descriptors, group by group, in their fixed order.
void createClassDescriptors() {}
void createRemainingClassDescriptors() {}

// The reverse of the two above, torn down by finishCore.
void destroyRemainingClassDescriptors() {}
void destroyClassDescriptors() {}

} // namespace

void initCore()
{
    if (initCount == 0)
    {
        orvAssert(orv::getDefaultAllocator() != NULL);
        initializeStringAllocator(getDefaultAllocator());
        initializeRTTIAllocator(getDefaultAllocator());

        Log::allocateStaticLogs();
        AbstractLogOutputter::allocateStaticLogOutputters();
        allocateCoreLog();

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
