// orvCore/engine/simulation/orvGroupEntityType.h
#pragma once

#include "system/inspection/orvInspectable.h"

#include <cstdint>

#include "engine/simulation/orvAbstractEntityType.h"

namespace orv
{

/// A kind of group.
class GroupEntityType : public AbstractEntityType
{
    ORV_DECLARE_RTTI(GroupEntityType)

public:
    explicit GroupEntityType(int maxCount = 0);

    bool isGroup() const override { return true; }

    uint32_t getColorABGR() const { return _colorABGR; }
    void setColorABGR(uint32_t color) { _colorABGR = color; }
    float getGroupLaxness() const { return _groupLaxness; }
    void setGroupLaxness(float laxness) { _groupLaxness = laxness; }

private:
    uint32_t _colorABGR = 4294967295u;
    float _groupLaxness = 0.5f;
};

} // namespace orv
