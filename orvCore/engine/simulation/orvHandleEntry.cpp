// orvCore/engine/simulation/orvHandleEntry.cpp
#include "engine/simulation/orvHandleEntry.h"

namespace orv
{

ORV_IMPLEMENT_RTTI(HandleEntry, "a2b8401e-0244-4807-9f3f-4208f25898f6", "orv::HandleEntry")

void HandleEntry::addAttributes()
{
    addAccessorsAttribute<unsigned int>("handleInfo", &HandleEntry::getHandleInfoAsUint32,
                                        &HandleEntry::setHandleInfoAsUint32);
    addAttribute("entityIndex", &HandleEntry::_contentIndex);
}

} // namespace orv
