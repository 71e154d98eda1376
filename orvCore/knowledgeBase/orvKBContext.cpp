// orvCore/knowledgeBase/orvKBContext.cpp
#include "knowledgeBase/orvKBContext.h"

namespace orv
{

KBContext::KBContext() : IContext(true, false) {}

KBContext::~KBContext() = default;

void KBContext::setContextType()
{
    assignContextType(ContextType::KNOWLEDGE_BASE);
}

void KBContext::allocateComponentsArrays() {}

void KBContext::deallocateComponentsArrays() {}

void KBContext::doInit() {}

void KBContext::doUpdate(Time) {}

void KBContext::doFinish() {}

} // namespace orv
