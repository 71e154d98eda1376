// orvCore/engine/ground/orvAbstractGround.h
#pragma once

#include "system/inspection/orvClassDescriptor.h"

namespace orv
{

/// The base of a surface that entities stand on; hosts derive their own. It declares no query yet, and the ground
/// manager holds no ground. Made and changed on the host thread.
class AbstractGround
{
    ORV_DECLARE_ABSTRACT_RTTI(AbstractGround)

public:
    /// Grounds are deleted through their base.
    virtual ~AbstractGround();
};

} // namespace orv
