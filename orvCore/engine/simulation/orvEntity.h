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

/// Which mechanism fits an entity to the ground, as Entity::getGroundAdaptResponsible tells it.
struct GroundAdaptResponsible
{
    enum Value
    {
        NONE = 0,                                  ///< Nothing: no ground and no path, or adaptation is off.
        MOTION_BEHAVIOR = 1,                       ///< The behaviour that moves the entity, while it is in use.
        GROUND_ADAPT_BEHAVIOR = 2,                 ///< A ground-adaptation behaviour of the motion component.
        LOCOMOTION_WITH_GROUND_ADAPT_BEHAVIOR = 3, ///< Locomotion, helped by a ground-adaptation behaviour.
        DEFAULT_ADAPTATION = 4,                    ///< The default adaptation: forced, or no behaviour takes it.
        LOCOMOTION = 5,                            ///< Locomotion alone.
        END = 6
    };
};

/// One simulated agent. Lies by value in its manager's dense array and moves when others are destroyed:
/// the outside world keeps its EntityHandle. Written by one worker at a time during a frame, by the host between
/// frames; the manager creates, moves and destroys it on the host thread.
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
    /// An entity at a position, in metres, whose body, motion and last motion face the orientation.
    Entity(const Vector3& position, const Quaternion& orientation, float radius, float personalSpace, float height);
    /// A full copy, the generator and the physics pointer included.
    Entity(const Entity& other) = default;
    virtual ~Entity();

    /// Copies every field but the generator and the physics pointer: a moved entity takes over the
    /// generator state of the slot it lands in.
    Entity& operator=(const Entity& other);

    /// Which mechanism fits the entity to the ground under it. Any thread that may read the entity.
    GroundAdaptResponsible::Value getGroundAdaptResponsible(const AbstractGround& ground) const;

    /// Body radius and radius of personal space, in metres, each >= 0.
    float getRadius() const { return _radius; }
    void setRadius(float radius) { _radius = radius; }
    float getPersonalSpace() const { return _personalSpace; }
    void setPersonalSpace(float personalSpace) { _personalSpace = personalSpace; }
    /// Height, in metres, >= 0.
    float getHeight() const { return _height; }
    void setHeight(float height) { _height = height; }
    /// Unit quaternions: where the body faces, where it moves, and where it moved at the end of the last frame.
    const Quaternion& getBodyOrientation() const { return _bodyOrientation; }
    void setBodyOrientation(const Quaternion& orientation) { _bodyOrientation = orientation; }
    const Quaternion& getMoveOrientation() const { return _moveOrientation; }
    void setMoveOrientation(const Quaternion& orientation) { _moveOrientation = orientation; }
    const Quaternion& getLastMoveOrientation() const { return _lastMoveOrientation; }
    void setLastMoveOrientation(const Quaternion& orientation) { _lastMoveOrientation = orientation; }
    /// Speed along the move orientation, in metres per second.
    float getSpeed() const { return _speed; }
    void setSpeed(float speed) { _speed = speed; }
    /// World position, in metres.
    const Vector3& getPosition() const { return _position; }
    void setPosition(const Vector3& position) { _position = position; }
    /// Uniform scale, a factor > 0; 1 is the type's size.
    float getScale() const { return _scale; }
    void setScale(float scale) { _scale = scale; }
    /// Level of detail, 0 by default.
    int getLod() const { return _lod; }
    void setLod(int lod) { _lod = lod; }
    /// The entity's own generator. Stays with the array element when the entity moves.
    const RandomNumberGenerator& getRNG() const { return _rng; }
    RandomNumberGenerator& touchRNG() { return _rng; }
    /// Its type, not owned; null while it has none. Set by the type.
    AbstractEntityType* getEntityType() const { return _entityType; }
    void setEntityType(AbstractEntityType* entityType) { _entityType = entityType; }
    /// Its slot in its type, or -1. Set by the type.
    int getIndexInEntityType() const { return _indexInEntityType; }
    void setIndexInEntityType(int index) { _indexInEntityType = index; }
    /// The handle of its group; the zero handle when it has none.
    EntityHandle getParentGroupHandle() const { return _parentGroupHandle; }
    void setParentGroupHandle(EntityHandle handle) { _parentGroupHandle = handle; }
    /// Number unique over the run, from 0 in order of creation; -1 before creation. Set by the manager.
    int getId() const { return _id; }
    void setId(int id) { _id = id; }
    /// Its own handle. Set by the manager.
    EntityHandle getHandle() const { return _handle; }
    void setHandle(EntityHandle handle) { _handle = handle; }

    /// Usage flags, false by default: a motion component, a path component, locomotion in the motion component.
    void useMotionComponent(bool use) { _motionComponent = use; }
    bool isUsingMotionComponent() const { return _motionComponent; }
    void usePathComponent(bool use) { _pathComponent = use; }
    bool isUsingPathComponent() const { return _pathComponent; }
    void setMotionLocomotion(bool locomotion) { _motionLocomotion = locomotion; }
    bool getMotionLocomotion() const { return _motionLocomotion; }
    /// Counts of the behaviours in use that move the entity, raised and lowered by those behaviours; 0 at rest.
    void incrBeMotionUse() { ++_beMotionUse; }
    void decrBeMotionUse() { --_beMotionUse; }
    int getBeMotionUse() const { return _beMotionUse; }
    /// Counts of the behaviours in use that fit the entity to the ground, as for the motion ones.
    void incrBeGroundAdaptUse() { ++_beGroundAdaptUse; }
    void decrBeGroundAdaptUse() { --_beGroundAdaptUse; }
    int getBeGroundAdaptUse() const { return _beGroundAdaptUse; }
    /// Ground adaptation mode: 2 (the default) lets the motion component and behaviours decide, 1 forces the
    /// default adaptation, any other value turns adaptation off.
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
    // Last, past every other member: the generator's state is kilobytes, and the members that the frame, moves
    // and destruction touch stay together in a few cache lines ahead of it.
    RandomNumberGenerator _rng;
};

} // namespace orv
