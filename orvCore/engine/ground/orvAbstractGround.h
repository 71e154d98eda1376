// orvCore/engine/ground/orvAbstractGround.h
#pragma once

namespace orv
{

/// A surface that entities are fitted to. Hosts derive their own.
class AbstractGround
{
public:
    virtual ~AbstractGround();
};

} // namespace orv
