// orvCore/behavior/operators/orvAbstractBehaviorOperator.cpp
#include "behavior/operators/orvAbstractBehaviorOperator.h"

#include "system/inspection/orvInspectable.h"

namespace orv
{

ORV_IMPLEMENT_ABSTRACT_RTTI(AbstractBehaviorOperator, "34beca5e-b074-4122-954b-0a1388be7a56",
                            "orv::AbstractBehaviorOperator")

void AbstractBehaviorOperator::addAttributes()
{
    _rtti->addBaseClass<AbstractBehavior>();
}

AbstractBehaviorOperator::AbstractBehaviorOperator() = default;

AbstractBehaviorOperator::~AbstractBehaviorOperator() = default;

} // namespace orv
