// orvCore/engine/simulation/orvEntity.h
#pragma once

#include "system/inspection/orvInspectable.h"

#include <cstdint>

#include "engine/simulation/orvEntityHandle.h"
#include "math/random/orvRandomNumberGenerator.h"
#include "math/types/orvQuaternion.h"
#include "math/types/orvVector3.h"

namespace orv
{

class AbstractEntityType;
class AbstractGround;

/// One simulated agent. Lies by value in its manager's dense array and moves when others are destroyed:
/// the outside world keeps its EntityHandle. Written by one worker at a time during a frame.
class Entity
{
    ORV_DECLARE_RTTI(Entity)

public:
    /// Radius given to a new entity, in metres.
    static constexpr float DEFAULT_RADIUS = 0.15f;
    /// Personal space given to a new entity, in metres.
    static constexpr float DEFAULT_PERSONAL_SPACE = 0.2f;
    /// Height given to a new entity, in metres.
    static constexpr float DEFAULT_HEIGHT = 1.75f;

    /// An entity at the origin, facing the identity, with the default radius, personal space and height.
    Entity();
    Entity(const Vector3& position, const Quaternion& orientation, float radius, float personalSpace, float height);
    Entity(const Entity& other) = default;
    virtual ~Entity();

    /// Copies every field but the generator and the physics pointer: a moved entity takes over the
    /// generator state of the slot it lands in.
    Entity& operator=(const Entity& other);

    /// Which mechanism fits the entity to the ground, as a code from 0 to 5.
    int getGroundAdaptResponsible(const AbstractGround& ground) const;

    float getRadius() const { return _radius; }
    void setRadius(float radius) { _radius = radius; }
    float getPersonalSpace() const { return _personalSpace; }
    void setPersonalSpace(float personalSpace) { _personalSpace = personalSpace; }
    float getHeight() const { return _height; }
    void setHeight(float height) { _height = height; }
    const Quaternion& getBodyOrientation() const { return _bodyOrientation; }
    void setBodyOrientation(const Quaternion& orientation) { _bodyOrientation = orientation; }
    const Quaternion& getMoveOrientation() const { return _moveOrientation; }
    void setMoveOrientation(const Quaternion& orientation) { _moveOrientation = orientation; }
    const Quaternion& getLastMoveOrientation() const { return _lastMoveOrientation; }
    void setLastMoveOrientation(const Quaternion& orientation) { _lastMoveOrientation = orientation; }
    float getSpeed() const { return _speed; }
    void setSpeed(float speed) { _speed = speed; }
    const Vector3& getPosition() const { return _position; }
    void setPosition(const Vector3& position) { _position = position; }
    float getScale() const { return _scale; }
    void setScale(float scale) { _scale = scale; }
    int getLod() const { return _lod; }
    void setLod(int lod) { _lod = lod; }
    const RandomNumberGenerator& getRNG() const { return _rng; }
    RandomNumberGenerator& touchRNG() { return _rng; }
    AbstractEntityType* getEntityType() const { return _entityType; }
    void setEntityType(AbstractEntityType* entityType) { _entityType = entityType; }
    int getIndexInEntityType() const { return _indexInEntityType; }
    void setIndexInEntityType(int index) { _indexInEntityType = index; }
    EntityHandle getParentGroupHandle() const { return _parentGroupHandle; }
    void setParentGroupHandle(EntityHandle handle) { _parentGroupHandle = handle; }
    int getId() const { return _id; }
    void setId(int id) { _id = id; }
    EntityHandle getHandle() const { return _handle; }
    void setHandle(EntityHandle handle) { _handle = handle; }

    void useMotionComponent(bool use) { _motionComponent = use; }
    bool isUsingMotionComponent() const { return _motionComponent; }
    void usePathComponent(bool use) { _pathComponent = use; }
    bool isUsingPathComponent() const { return _pathComponent; }
    void setMotionLocomotion(bool locomotion) { _motionLocomotion = locomotion; }
    bool getMotionLocomotion() const { return _motionLocomotion; }
    void incrBeMotionUse() { ++_beMotionUse; }
    void decrBeMotionUse() { --_beMotionUse; }
    int getBeMotionUse() const { return _beMotionUse; }
    void incrBeGroundAdaptUse() { ++_beGroundAdaptUse; }
    void decrBeGroundAdaptUse() { --_beGroundAdaptUse; }
    int getBeGroundAdaptUse() const { return _beGroundAdaptUse; }
    void setGroundAdaptationMode(int mode) { _groundAdaptMode = mode; }
    int getGroundAdaptationMode() const { return _groundAdaptMode; }
    /// The host's link to a physics body. Not owned, and not copied by assignment.
    const void* getPhysicUserPointer() const { return _physicUserPointer; }
    void setPhysicUserPointer(const void* pointer) { _physicUserPointer = pointer; }

private:
    float _radius = DEFAULT_RADIUS;
    float _personalSpace = DEFAULT_PERSONAL_SPACE;
    float _height = DEFAULT_HEIGHT;
    Quaternion _bodyOrientation = Quaternion::getIdentity();
    Quaternion _moveOrientation = Quaternion::getIdentity();
    float _speed = 0.0f;
    Vector3 _position = Vector3::getNullVector();
    float _scale = 1.0f;
    int _lod = 0;
    RandomNumberGenerator _rng;
    Quaternion _lastMoveOrientation = Quaternion::getIdentity();
    AbstractEntityType* _entityType = nullptr;
    int _indexInEntityType = -1;
    EntityHandle _parentGroupHandle;
    int _id = -1;
    EntityHandle _handle;
    bool _motionComponent = false;
    bool _pathComponent = false;
    bool _motionLocomotion = false;
    int _beMotionUse = 0;
    int _beGroundAdaptUse = 0;
    int _groundAdaptMode = 2;
    const void* _physicUserPointer = nullptr;
};

} // namespace orv
