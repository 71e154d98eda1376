// orvCore/engine/ground/orvNoGround.h
#pragma once

#include "system/inspection/orvInspectable.h"

#include "engine/ground/orvAbstractGround.h"

namespace orv
{

/// The absence of a ground: nothing fits an entity to it unless a path asks for it.
class NoGround : public AbstractGround
{
    ORV_DECLARE_RTTI(NoGround)
};

} // namespace orv
