// orvCore/knowledgeBase/orvKnowledgeBase.cpp
#include "knowledgeBase/orvKnowledgeBase.h"

namespace orv
{

KnowledgeBase::~KnowledgeBase() = default;

} // namespace orv
