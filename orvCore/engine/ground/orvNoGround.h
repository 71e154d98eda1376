// orvCore/engine/ground/orvNoGround.h
#pragma once

#include "engine/ground/orvAbstractGround.h"

namespace orv
{

/// The absence of a ground: nothing fits an entity to it unless a path asks for it.
class NoGround : public AbstractGround
{
};

} // namespace orv
