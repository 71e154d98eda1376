// orvCore/system/inspection/orvAbstractAttribute.cpp
#include "system/inspection/orvAbstractAttribute.h"

#include "system/utils/orvStringUtils.h"

namespace orv
{

AbstractAttribute::AbstractAttribute(const char* name, const RTTI* ownerRTTI)
    : _attributeType(AttributeType::VALUE), _name(alphaNumerizeNameStr(name)), _ownerRTTI(ownerRTTI)
{
}

AbstractAttribute::AbstractAttribute(const AbstractAttribute& other)
    : _attributeType(other._attributeType), _name(other._name), _ownerRTTI(other._ownerRTTI)
{
}

AbstractAttribute& AbstractAttribute::operator=(const AbstractAttribute& other)
{
    _attributeType = other._attributeType;
    _name = other._name;
    _ownerRTTI = other._ownerRTTI;
    return *this;
}

AbstractAttribute::~AbstractAttribute()
{
}

const RTTI* AbstractAttribute::getOwnerRTTI() const
{
    return _ownerRTTI;
}

} // namespace orv
