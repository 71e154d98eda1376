// orvCore/engine/simulation/orvEntityType.h
#pragma once

#include "system/inspection/orvInspectable.h"

#include <cstdint>

#include "engine/simulation/orvAbstractEntityType.h"

namespace orv
{

/// A kind of entity: the body measures and scale range its new instances get. Owned by its simulation; set up on
/// the host thread.
class EntityType : public AbstractEntityType
{
    ORV_DECLARE_RTTI(EntityType)

public:
    /// A type with room for maxCount instances, maxCount >= 0 (fatal otherwise).
    explicit EntityType(int maxCount = 0);

    /// Bounds of the uniform scale of new instances, each > 0; 1 and 1 by default. New instances draw their
    /// scale in [min, max] from the process-wide generator when the two differ.
    float getScaleMin() const { return _scaleMin; }
    float getScaleMax() const { return _scaleMax; }
    void setScaleRange(float scaleMin, float scaleMax)
    {
        _scaleMin = scaleMin;
        _scaleMax = scaleMax;
    }
    /// Measures copied into each new instance, in metres, each >= 0: radius, height, personal space radius.
    float getRadius() const { return _radius; }
    void setRadius(float radius) { _radius = radius; }
    float getHeight() const { return _height; }
    void setHeight(float height) { _height = height; }
    float getPersonalSpaceRadius() const { return _personalSpaceRadius; }
    void setPersonalSpaceRadius(float radius) { _personalSpaceRadius = radius; }
    /// The host's character file for the type's instances; empty by default. Not read by the library.
    const OrvString& getCharacterFile() const { return _characterFile; }
    void setCharacterFile(const OrvString& file) { _characterFile = file; }
    /// Pelvis height over body height, 1 by default; kept for the host.
    float getPelvisHeightRatio() const { return _pelvisHeightRatio; }
    void setPelvisHeightRatio(float ratio) { _pelvisHeightRatio = ratio; }
    /// Display colour for the host, one byte each of alpha, blue, green and red; all ones by default.
    uint32_t getColorABGR() const { return _colorABGR; }
    void setColorABGR(uint32_t color) { _colorABGR = color; }

private:
    float _scaleMin = 1.0f;
    float _scaleMax = 1.0f;
    float _radius = 0.15f;
    float _height = 1.75f;
    float _personalSpaceRadius = 0.2f;
    OrvString _characterFile;
    float _pelvisHeightRatio = 1.0f;
    uint32_t _colorABGR = 4294967295u;
};

} // namespace orv
