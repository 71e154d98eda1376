// orvCore/engine/simulation/orvEntity.cpp
#include "engine/simulation/orvEntity.h"

#include "engine/ground/orvNoGround.h"
#include "engine/simulation/orvAbstractEntityType.h"

namespace orv
{

ORV_IMPLEMENT_RTTI(Entity, "0c688260-b5bb-4cab-99d5-b91f49208830", "orv::Entity")

void Entity::addAttributes()
{
    addAttribute("entityType", &Entity::_entityType);
    addAttribute("entityHandle", &Entity::_handle);
    addAttribute("radius", &Entity::_radius);
    addAttribute("personalSpace", &Entity::_personalSpace);
    addAttribute("height", &Entity::_height);
    addAttribute("bodyOrientation", &Entity::_bodyOrientation);
    addAttribute("moveOrientation", &Entity::_moveOrientation);
    addAttribute("speed", &Entity::_speed);
    addAttribute("position", &Entity::_position);
    addAttribute("scale", &Entity::_scale);
    addAttribute("lod", &Entity::_lod);
    addAttribute("parentGroupHandle", &Entity::_parentGroupHandle);
    addAttribute("lastMoveOrientation", &Entity::_lastMoveOrientation);
    addAttribute("indexInEntityType", &Entity::_indexInEntityType);
    addAttribute("rng", &Entity::_rng);
}

Entity::Entity() = default;

Entity::Entity(const Vector3& position, const Quaternion& orientation, float radius, float personalSpace, float height)
    : _radius(radius), _personalSpace(personalSpace), _height(height), _bodyOrientation(orientation),
      _moveOrientation(orientation), _position(position), _lastMoveOrientation(orientation)
{
}

Entity::~Entity() = default;

Entity& Entity::operator=(const Entity& other)
{
    if (this == &other)
    {
        return *this;
    }
    _radius = other._radius;
    _personalSpace = other._personalSpace;
    _height = other._height;
    _bodyOrientation = other._bodyOrientation;
    _moveOrientation = other._moveOrientation;
    _speed = other._speed;
    _position = other._position;
    _scale = other._scale;
    _lod = other._lod;
    // _rng stays: the destination keeps its own generator state.
    _lastMoveOrientation = other._lastMoveOrientation;
    _entityType = other._entityType;
    _indexInEntityType = other._indexInEntityType;
    _parentGroupHandle = other._parentGroupHandle;
    _id = other._id;
    _handle = other._handle;
    _motionComponent = other._motionComponent;
    _pathComponent = other._pathComponent;
    _motionLocomotion = other._motionLocomotion;
    _beMotionUse = other._beMotionUse;
    _beGroundAdaptUse = other._beGroundAdaptUse;
    _groundAdaptMode = other._groundAdaptMode;
    // _physicUserPointer stays with the slot as well.
    return *this;
}

GroundAdaptResponsible::Value Entity::getGroundAdaptResponsible(const AbstractGround& ground) const
{
    if (dynamic_cast<const NoGround*>(&ground) != nullptr && !_pathComponent)
    {
        return GroundAdaptResponsible::NONE;
    }
    if (_groundAdaptMode == 1)
    {
        return GroundAdaptResponsible::DEFAULT_ADAPTATION;
    }
    if (_groundAdaptMode != 2)
    {
        return GroundAdaptResponsible::NONE;
    }
    if (!_motionComponent)
    {
        return GroundAdaptResponsible::DEFAULT_ADAPTATION;
    }
    if (_motionLocomotion)
    {
        return _beGroundAdaptUse != 0 ? GroundAdaptResponsible::LOCOMOTION_WITH_GROUND_ADAPT_BEHAVIOR
                                      : GroundAdaptResponsible::LOCOMOTION;
    }
    if (_beMotionUse != 0)
    {
        return GroundAdaptResponsible::MOTION_BEHAVIOR;
    }
    if (_beGroundAdaptUse == 0)
    {
        return GroundAdaptResponsible::DEFAULT_ADAPTATION;
    }
    return GroundAdaptResponsible::GROUND_ADAPT_BEHAVIOR;
}

} // namespace orv
