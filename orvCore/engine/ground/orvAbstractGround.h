// orvCore/engine/ground/orvAbstractGround.h
#pragma once

#include "system/inspection/orvInspectable.h"

namespace orv
{

/// A surface that entities are fitted to. Hosts derive their own.
class AbstractGround
{
    ORV_DECLARE_ABSTRACT_RTTI(AbstractGround)

public:
    virtual ~AbstractGround();
};

} // namespace orv
