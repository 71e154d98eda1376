// orvCore/behavior/callBacks/orvAbstractOperatorCallBack.cpp
#include "behavior/callBacks/orvAbstractOperatorCallBack.h"

#include "system/inspection/orvInspectable.h"

namespace orv
{

ORV_IMPLEMENT_ABSTRACT_RTTI(AbstractOperatorCallBack, "a208d475-754b-40d8-8c88-3b1c3e4583e3",
                            "orv::AbstractOperatorCallBack")

void AbstractOperatorCallBack::addAttributes()
{
    _rtti->addBaseClass<ITypedCallBack<bool>>();
}

} // namespace orv
