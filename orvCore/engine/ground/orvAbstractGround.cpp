// orvCore/engine/ground/orvAbstractGround.cpp
#include "engine/ground/orvAbstractGround.h"

namespace orv
{

AbstractGround::~AbstractGround() = default;

} // namespace orv
