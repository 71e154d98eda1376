// orvCore/knowledgeBase/orvKBContext.cpp
#include "knowledgeBase/orvKBContext.h"

namespace orv
{

ORV_IMPLEMENT_RTTI(KBContext, "7f0405a7-ef65-4a21-811b-64d718b8e581", "orv::KBContext")

void KBContext::addAttributes()
{
    _rtti->addBaseClass<IContext>();
}

KBContext::KBContext() : IContext(true, false)
{
}

KBContext::~KBContext() = default;

void KBContext::setContextType()
{
    assignContextType(ContextType::KNOWLEDGE_BASE);
}

void KBContext::allocateComponentsArrays()
{
}

void KBContext::deallocateComponentsArrays()
{
}

void KBContext::doInit()
{
}

void KBContext::doUpdate(Time)
{
}

void KBContext::doFinish()
{
}

} // namespace orv
