// orvCore/engine/simulation/orvGroupEntityType.h
#pragma once

#include "system/inspection/orvClassDescriptor.h"

#include <cstdint>

#include "engine/simulation/orvAbstractEntityType.h"

namespace orv
{

/// A kind of group, made by Simulation::createGroupEntityType before the simulation is initialised. Owned by its
/// simulation; changed on the host thread only. Its colour and laxness are kept but not saved in snapshots.
class GroupEntityType : public AbstractEntityType
{
    ORV_DECLARE_RTTI(GroupEntityType)

public:
    /// A type with room for maxCount groups.
    explicit GroupEntityType(int maxCount = 0);

    /// True: this is a type of groups.
    bool isGroup() const override { return true; }

    /// Display colour as an ABGR word; 0xFFFFFFFF by default.
    uint32_t getColorABGR() const { return _colorABGR; }
    void setColorABGR(uint32_t color) { _colorABGR = color; }
    /// How loosely members keep to their group; 0.5 by default. Read by no part of the library yet.
    float getGroupLaxness() const { return _groupLaxness; }
    void setGroupLaxness(float laxness) { _groupLaxness = laxness; }

private:
    uint32_t _colorABGR = 4294967295u;
    float _groupLaxness = 0.5f;
};

} // namespace orv
