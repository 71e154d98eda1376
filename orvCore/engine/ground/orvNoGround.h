// orvCore/engine/ground/orvNoGround.h
#pragma once

#include "system/inspection/orvClassDescriptor.h"

#include "engine/ground/orvAbstractGround.h"

namespace orv
{

/// The absence of a ground: a ground with no surface. Nothing makes one yet.
class NoGround : public AbstractGround
{
    ORV_DECLARE_RTTI(NoGround)
};

} // namespace orv
