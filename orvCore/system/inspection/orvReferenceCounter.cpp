// orvCore/system/inspection/orvReferenceCounter.cpp
#include "system/inspection/orvReferenceCounter.h"

namespace orv
{

ORV_IMPLEMENT_RTTI(ReferenceCounter, "f6d44596-134b-406d-804e-3eb0e5326a0e", "orv::ReferenceCounter")

ReferenceCounter::~ReferenceCounter() = default;

void ReferenceCounter::addAttributes()
{
}

} // namespace orv
