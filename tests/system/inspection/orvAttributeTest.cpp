#include <gtest/gtest.h>

#include "math/types/orvVector3.h"
#include "system/inspection/orvAccessorsAttribute.h"
#include "system/inspection/orvAttribute.h"
#include "system/inspection/orvContainerAccessorsAttribute.h"
#include "system/inspection/orvInspectionTestSupport.h"
#include "system/inspection/orvRTTI.h"
#include "system/serialization/orvBinaryStream.h"

namespace orvtest::attributes
{

using orv::Vector3;

/// A value class with a member of each form, an accessor pair of each form and indexed accessors.
class Gauge
{
    ORV_DECLARE_VALUE_RTTI(Gauge)

public:
    const Vector3& getPosition() const { return _position; }
    void setPosition(const Vector3& position) { _position = position; }
    Gauge* getNext() const { return _next; }
    void setNext(Gauge* next) { _next = next; }
    const Gauge* getPeer() const { return _peer; }
    void setPeer(const Gauge* peer) { _peer = peer; }
    int getDigit(unsigned int index) const { return _digits[index]; }
    void setDigit(unsigned int index, const int& digit) { _digits[index] = digit; }

    int _count = 0;
    Gauge* _next = nullptr;
    const Gauge* _peer = nullptr;
    Vector3 _position;
    int _digits[3] = {0, 0, 0};
};

/// A plain base with a virtual accessor pair, placed second so that its members need an adjusted this.
class Knob
{
public:
    virtual ~Knob() = default;
    virtual int getTurns() const { return _turns; }
    void setTurns(int turns) { _turns = turns; }

    int _turns = 0;
};

/// A first base with data, so that Knob does not start the object.
class Spacer
{
public:
    virtual ~Spacer() = default;
    double _padding = 0.0;
};

/// An owner whose attributes come from its second base, one of them overridden.
class Panel : public Spacer, public Knob
{
    ORV_DECLARE_RTTI(Panel)

public:
    int getTurns() const override { return _turns + 100; }
};

/// A by-value part that points back at its owner; counts its live instances.
class Joint
{
    ORV_DECLARE_VALUE_RTTI(Joint)

public:
    Joint() { ++_live; }
    Joint(const Joint& other) : _angle(other._angle), _owner(other._owner) { ++_live; }
    Joint& operator=(const Joint&) = default;
    ~Joint() { --_live; }

    static inline int _live = 0;
    float _angle = 0.0f;
    class Rig* _owner = nullptr;
};

/// An owner whose state is only reachable through accessors; counts their calls.
class Rig
{
    ORV_DECLARE_VALUE_RTTI(Rig)

public:
    int getSpeed() const
    {
        ++_speedGets;
        return _speed;
    }
    void setSpeed(int speed)
    {
        ++_speedSets;
        _speed = speed;
    }
    const Joint& getJoint() const { return _joint; }
    void setJoint(const Joint& joint)
    {
        ++_jointSets;
        _ownerSeenBySetter = joint._owner;
        _joint = joint;
    }

    int _speed = 0;
    Joint _joint;
    mutable int _speedGets = 0;
    int _speedSets = 0;
    int _jointSets = 0;
    const Rig* _ownerSeenBySetter = nullptr;
};

ORV_IMPLEMENT_RTTI(Gauge, "4a4bd1e2-7b6a-4d07-9d0b-43f1d2f4a6a1", "orvtest::Gauge")
ORV_IMPLEMENT_RTTI(Panel, "0f3f8b5e-1c55-4f58-a6a8-3b9c7f2d6e11", "orvtest::Panel")
ORV_IMPLEMENT_RTTI(Joint, "9b1d5c3a-2e4f-4a6b-8c7d-0e1f2a3b4c33", "orvtest::Joint")
ORV_IMPLEMENT_RTTI(Rig, "5e6f7a8b-9c0d-4e1f-a2b3-c4d5e6f7a844", "orvtest::Rig")

void Gauge::addAttributes()
{
    addAttribute("item count", &Gauge::_count);
    addAttribute("next", &Gauge::_next);
    addAttribute("peer", &Gauge::_peer);
    addAccessorsAttribute<const Vector3&>("position", &Gauge::getPosition, &Gauge::setPosition);
    addAccessorsAttribute<Gauge*>("next by accessors", &Gauge::getNext, &Gauge::setNext);
    addAccessorsAttribute<const Gauge*>("peer by accessors", &Gauge::getPeer, &Gauge::setPeer);
    // Each element is an attribute of its own.
    _rtti->addAttribute(
        orv::ContainerAccessorsAttribute<int, Gauge>("first digit", _rtti, &Gauge::getDigit, &Gauge::setDigit, 0));
    _rtti->addAttribute(
        orv::ContainerAccessorsAttribute<int, Gauge>("last digit", _rtti, &Gauge::getDigit, &Gauge::setDigit, 2));
}

void Panel::addAttributes()
{
    addAccessorsAttribute<int>("turns", &Knob::getTurns, &Knob::setTurns);
}

void Joint::addAttributes()
{
    addAttribute("angle", &Joint::_angle);
    addAttribute("owner", &Joint::_owner);
}

void Rig::addAttributes()
{
    addAccessorsAttribute<int>("speed", &Rig::getSpeed, &Rig::setSpeed);
    addAccessorsAttribute<const Joint&>("joint", &Rig::getJoint, &Rig::setJoint);
}

} // namespace orvtest::attributes

namespace
{

using namespace orvtest::attributes;
using orv::AbstractAttribute;
using orv::AbstractAttributeT;
using orv::RTTI;
using orv::RTTIAccessor;

/// The test classes registered as initCore registers the library's.
class AttributeTest : public orvtest::InspectionTest
{
protected:
    void SetUp() override
    {
        InspectionTest::SetUp();
        Gauge::createClassRTTI(true);
        Panel::createClassRTTI(true);
        Joint::createClassRTTI(true);
        Rig::createClassRTTI(true);
    }
    void TearDown() override
    {
        Rig::destroyClassRTTI(true);
        Joint::destroyClassRTTI(true);
        Panel::destroyClassRTTI(true);
        Gauge::destroyClassRTTI(true);
        InspectionTest::TearDown();
    }

    template <typename T, typename Owner>
    static const AbstractAttributeT<T, Owner>& typed(const char* name)
    {
        const AbstractAttribute* attribute = Owner::getClassRTTI()->getAttribute(name);
        EXPECT_NE(nullptr, attribute) << name;
        EXPECT_EQ(RTTIAccessor<T>::getClassRTTI(), attribute->getAttributeRTTI()) << name;
        return *static_cast<const AbstractAttributeT<T, Owner>*>(attribute);
    }
};

TEST_F(AttributeTest, EachFormReadsAndWritesThroughItsOwnPairOnAnUntypedInstance)
{
    Gauge* gauge = static_cast<Gauge*>(RTTI::createInstance(RTTI::getTypeID("orvtest::Gauge")));
    ASSERT_NE(nullptr, gauge);
    Gauge other;
    typed<int, Gauge>("item count").setValue(*gauge, 42);
    typed<Gauge*, Gauge>("next").setPointer(gauge, &other);
    typed<const Gauge*, Gauge>("peer by accessors").setConstPointer(*gauge, &other);
    typed<const Vector3&, Gauge>("position").setConstReference(*gauge, Vector3(1.0f, 2.0f, 3.0f));
    EXPECT_EQ(42, gauge->_count);
    EXPECT_EQ(&other, (typed<Gauge*, Gauge>("next by accessors").getPointer(gauge)));
    EXPECT_EQ(&other, (typed<const Gauge*, Gauge>("peer").getConstPointer(*gauge)));
    EXPECT_EQ(&gauge->_position, (&typed<const Vector3&, Gauge>("position").getConstReference(*gauge)));
    EXPECT_EQ(Vector3(1.0f, 2.0f, 3.0f), gauge->_position);
    // Indexed accessors reach their own element only.
    typed<int, Gauge>("first digit").setValue(*gauge, 4);
    typed<int, Gauge>("last digit").setValue(*gauge, 6);
    EXPECT_EQ(4, gauge->_digits[0]);
    EXPECT_EQ(0, gauge->_digits[1]);
    EXPECT_EQ(6, (typed<int, Gauge>("lastDigit").getValue(*gauge)));
    delete gauge;
}

TEST_F(AttributeTest, AccessorsOfASecondBaseGetTheAdjustedThisAndVirtualDispatch)
{
    Panel panel;
    typed<int, Panel>("turns").setValue(panel, 7);
    EXPECT_EQ(7, panel._turns);
    EXPECT_EQ(107, (typed<int, Panel>("turns").getValue(panel)));
}

TEST_F(AttributeTest, AccessorSettersRunOnceAfterBothReadPassesWithResolvedValues)
{
    Rig written;
    written._speed = 12;
    written._joint._angle = 0.5f;
    written._joint._owner = &written;
    orv::BinaryStream stream;
    stream.pack(written);

    Rig read;
    const int liveJoints = Joint::_live;
    stream.clear();
    stream.unpack(read);
    EXPECT_EQ(12, read._speed);
    EXPECT_EQ(1, read._speedSets);
    // The value form reads over the getter's value in each pass.
    EXPECT_EQ(2, read._speedGets);
    EXPECT_EQ(1, read._jointSets);
    EXPECT_FLOAT_EQ(0.5f, read._joint._angle);
    // The pointer inside the temporary was final when the setter saw it, and the temporary is gone.
    EXPECT_EQ(&read, read._ownerSeenBySetter);
    EXPECT_EQ(liveJoints, Joint::_live);
}

using AttributeDeathTest = AttributeTest;

TEST_F(AttributeDeathTest, APairTheClassDoesNotImplementIsFatal)
{
    const AbstractAttributeT<int, Gauge> bare("count", Gauge::getClassRTTI());
    Gauge gauge;
    EXPECT_DEATH(bare.getValue(gauge),
                 "Not implemented in AbstractAttributeT derived class, for the attribute count of "
                 "type int from an object of type orvtest::Gauge");
}

} // namespace
