// orvCore/behavior/behaviors/orvAbstractUserBehavior.cpp
#include "behavior/behaviors/orvAbstractUserBehavior.h"

#include "system/inspection/orvInspectable.h"

namespace orv
{

ORV_IMPLEMENT_ABSTRACT_RTTI(AbstractUserBehavior, "412af4ab-550d-4e7b-bee1-bd6ba4575d8b", "orv::AbstractUserBehavior")

void AbstractUserBehavior::addAttributes()
{
    _rtti->addBaseClass<AbstractBehavior>();
}

AbstractUserBehavior::AbstractUserBehavior() = default;

AbstractUserBehavior::~AbstractUserBehavior() = default;

bool AbstractUserBehavior::canAddNextBehaviorCandidate(const AbstractBehavior* candidate, OrvString& reason) const
{
    return canAddSingleNextBehaviorCandidate(candidate, reason, "AbstractUserBehavior");
}

bool AbstractUserBehavior::addNextBehaviorCandidate(AbstractBehavior* candidate)
{
    return addSingleNextBehaviorCandidate(candidate);
}

bool AbstractUserBehavior::removeNextBehaviorCandidate(AbstractBehavior* candidate)
{
    return removeSingleNextBehaviorCandidate(candidate);
}

bool AbstractUserBehavior::checkNextBehaviorCandidatesConnection() const
{
    return checkSingleNextBehaviorCandidate("AbstractUserBehavior can not have more than 1 next behavior candidate");
}

} // namespace orv
