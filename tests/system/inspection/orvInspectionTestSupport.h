// tests/system/inspection/orvInspectionTestSupport.h
#pragma once

#include "support/orvCoreTestSupport.h"
#include "system/inspection/orvRTTI.h"

namespace orvtest
{

/// A started library with its class registries. Brings the registries up itself only when initCore did not.
class InspectionTest : public CoreTest
{
protected:
    void SetUp() override
    {
        CoreTest::SetUp();
        _ownsRegistries = !orv::RTTI::areStaticRTTIsAllocated();
        if (_ownsRegistries)
        {
            orv::resetRTTIConcatBuffer();
            orv::RTTI::allocateStaticRTTIs();
            orv::RTTI::createRTTIs();
        }
    }
    void TearDown() override
    {
        if (_ownsRegistries)
        {
            orv::RTTI::destroyRTTIs();
            orv::RTTI::deallocateStaticRTTIs();
        }
        CoreTest::TearDown();
    }

private:
    bool _ownsRegistries = false;
};

} // namespace orvtest
