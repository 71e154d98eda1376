// orvCore/engine/ground/orvAbstractGround.cpp
#include "engine/ground/orvAbstractGround.h"

namespace orv
{

ORV_IMPLEMENT_ABSTRACT_RTTI(AbstractGround, "769be201-8368-4dfe-93c3-d832f9abf9c1", "orv::AbstractGround")

void AbstractGround::addAttributes()
{
}

AbstractGround::~AbstractGround() = default;

} // namespace orv
