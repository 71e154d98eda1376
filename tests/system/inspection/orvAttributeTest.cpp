#include <gtest/gtest.h>

#include "math/types/orvVector3.h"
#include "system/containers/orvString.h"
#include "system/inspection/orvAccessorsAttribute.h"
#include "system/inspection/orvAttribute.h"
#include "system/inspection/orvContainerAccessorsAttribute.h"
#include "system/inspection/orvInspectionTestSupport.h"
#include "system/inspection/orvRTTI.h"
#include "system/serialization/orvBinaryStream.h"

namespace orvtest::attributes
{

using orv::AbstractAttribute;
using orv::AbstractAttributeT;
using orv::OrvString;
using orv::RTTI;
using orv::RTTIAccessor;
using orv::Uuid;
using orv::Vector3;

/// A value class with a member of each form and an accessor pair of each form.
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

    int _count = 0;
    Gauge* _next = nullptr;
    const Gauge* _peer = nullptr;
    Vector3 _position;
};

/// A plain base with a virtual accessor pair, placed second so that its members need an adjusted this.
class Knob
{
public:
    virtual ~Knob() = default;
    virtual int getTurns() const { return _turns; }
    void setTurns(int turns) { _turns = turns; }
    OrvString& touchLabel() { return _label; }
    void setLabel(const OrvString& label) { _label = label; }

    int _turns = 0;
    OrvString _label;
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

/// An indexed class: each element is a named attribute.
class Triplet
{
    ORV_DECLARE_VALUE_RTTI(Triplet)

public:
    int get(unsigned int index) const { return _values[index]; }
    void set(unsigned int index, const int& value) { _values[index] = value; }
    const Vector3& getCorner(unsigned int index) const { return _corners[index]; }
    void setCorner(unsigned int index, const Vector3& corner) { _corners[index] = corner; }

    int _values[3] = {0, 0, 0};
    Vector3 _corners[2];
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

    const char* getTag() const { return _tag; }
    void setTag(const char* tag) { _tag = tag; }

    int _speed = 0;
    Joint _joint;
    const char* _tag = nullptr;
    mutable int _speedGets = 0;
    int _speedSets = 0;
    int _jointSets = 0;
    const Rig* _ownerSeenBySetter = nullptr;
};

ORV_IMPLEMENT_RTTI(Gauge, "4a4bd1e2-7b6a-4d07-9d0b-43f1d2f4a6a1", "orvtest::Gauge")
ORV_IMPLEMENT_RTTI(Panel, "0f3f8b5e-1c55-4f58-a6a8-3b9c7f2d6e11", "orvtest::Panel")
ORV_IMPLEMENT_RTTI(Triplet, "c7e0a2d4-8d4b-4a0e-b5f1-6a2f0c3d9e22", "orvtest::Triplet")
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
}

void Panel::addAttributes()
{
    addAccessorsAttribute<int>("turns", &Knob::getTurns, &Knob::setTurns);
    addAccessorsAttribute<OrvString>("label", &Knob::touchLabel, &Knob::setLabel);
}

void Triplet::addAttributes()
{
    const char* names[3] = {"a", "b", "c"};
    for (unsigned int i = 0; i < 3; ++i)
    {
        _rtti->addAttribute(
            orv::ContainerAccessorsAttribute<int, Triplet>(names[i], _rtti, &Triplet::get, &Triplet::set, i));
    }
    _rtti->addAttribute(orv::ContainerAccessorsAttribute<const Vector3&, Triplet>("corner", _rtti, &Triplet::getCorner,
                                                                                  &Triplet::setCorner, 1));
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
    addAccessorsAttribute<const char*>("tag", &Rig::getTag, &Rig::setTag);
}

} // namespace orvtest::attributes

namespace
{

using namespace orvtest::attributes;

/// The test classes registered as initCore registers the library's.
class AttributeTest : public orvtest::InspectionTest
{
protected:
    void SetUp() override
    {
        InspectionTest::SetUp();
        Gauge::createClassRTTI(true);
        Panel::createClassRTTI(true);
        Triplet::createClassRTTI(true);
        Joint::createClassRTTI(true);
        Rig::createClassRTTI(true);
    }
    void TearDown() override
    {
        Rig::destroyClassRTTI(true);
        Joint::destroyClassRTTI(true);
        Triplet::destroyClassRTTI(true);
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

TEST_F(AttributeTest, MembersAreReadAndWrittenByNormalisedNameOnAnUntypedObject)
{
    void* object = RTTI::createInstance(RTTI::getTypeID("orvtest::Gauge"));
    ASSERT_NE(nullptr, object);
    const AbstractAttribute* attribute = Gauge::getClassRTTI()->getAttribute("item count");
    ASSERT_NE(nullptr, attribute);
    EXPECT_STREQ("itemCount", attribute->getName());
    EXPECT_EQ(attribute, Gauge::getClassRTTI()->getAttribute("itemCount"));
    ASSERT_EQ(RTTIAccessor<int>::getClassRTTI(), attribute->getAttributeRTTI());

    const auto& count = *static_cast<const AbstractAttributeT<int, Gauge>*>(attribute);
    count.setValue(*static_cast<Gauge*>(object), 42);
    EXPECT_EQ(42, count.getValue(*static_cast<const Gauge*>(object)));
    EXPECT_EQ(42, static_cast<Gauge*>(object)->_count);
    delete static_cast<Gauge*>(object);
}

TEST_F(AttributeTest, EachFormHasItsKindAndReadsAndWritesThroughItsOwnPair)
{
    const AbstractAttribute& next = typed<Gauge*, Gauge>("next");
    const AbstractAttribute& peer = typed<const Gauge*, Gauge>("peer");
    const AbstractAttribute& position = typed<const Vector3&, Gauge>("position");
    EXPECT_EQ(AbstractAttribute::AttributeType::POINTER, next.getAttributeType());
    EXPECT_EQ(AbstractAttribute::AttributeType::CONST_POINTER, peer.getAttributeType());
    EXPECT_EQ(AbstractAttribute::AttributeType::CONST_REFERENCE, position.getAttributeType());
    EXPECT_STREQ("const orvtest::Gauge*", peer.getAttributeRTTI()->getTypeName());
    EXPECT_EQ(Gauge::getClassRTTI(), position.getOwnerRTTI());

    Gauge gauge;
    Gauge other;
    typed<Gauge*, Gauge>("next").setPointer(&gauge, &other);
    typed<const Gauge*, Gauge>("peer by accessors").setConstPointer(gauge, &other);
    typed<const Vector3&, Gauge>("position").setConstReference(gauge, Vector3(1.0f, 2.0f, 3.0f));
    EXPECT_EQ(&other, (typed<Gauge*, Gauge>("next by accessors").getPointer(&gauge)));
    EXPECT_EQ(&other, (typed<const Gauge*, Gauge>("peer").getConstPointer(gauge)));
    EXPECT_EQ(&gauge._position, (&typed<const Vector3&, Gauge>("position").getConstReference(gauge)));
    EXPECT_EQ(Vector3(1.0f, 2.0f, 3.0f), gauge._position);
}

TEST_F(AttributeTest, AttributeClassesAreDescribedWithTheirValueAndOwner)
{
    const auto& count = typed<int, Gauge>("item count");
    const RTTI* rtti = count.getRTTI();
    ASSERT_NE(nullptr, rtti);
    EXPECT_STREQ("orv::Attribute<int,orvtest::Gauge>", rtti->getTypeName());
    EXPECT_EQ(Uuid("2d7c0267-4f4d-428f-ac62-d29fd4af04e5") + RTTIAccessor<int>::getClassRTTI()->getTypeID() +
                  Gauge::getClassRTTI()->getTypeID(),
              rtti->getTypeID());
    ASSERT_EQ(1u, rtti->getBaseClassesCount());
    EXPECT_STREQ("orv::AbstractAttributeT<int,orvtest::Gauge>", rtti->getBaseClassRTTI(0)->getTypeName());

    const auto& position = typed<const Vector3&, Gauge>("position");
    EXPECT_STREQ("orv::AccessorsAttribute<const orv::Vector3&,orvtest::Gauge>", position.getRTTI()->getTypeName());
    // Registered once: a second call finds the same descriptor.
    EXPECT_EQ(position.getRTTI(), position.getRTTI());
}

TEST_F(AttributeTest, AccessorsOfASecondBaseGetTheAdjustedThisAndVirtualDispatch)
{
    Panel panel;
    typed<int, Panel>("turns").setValue(panel, 7);
    EXPECT_EQ(7, panel._turns);
    EXPECT_EQ(107, (typed<int, Panel>("turns").getValue(panel)));

    typed<OrvString, Panel>("label").setValue(panel, OrvString("dial"));
    EXPECT_EQ(OrvString("dial"), (typed<OrvString, Panel>("label").getValue(panel)));
}

TEST_F(AttributeTest, ContainerAccessorsExposeOneElementEach)
{
    Triplet triplet;
    typed<int, Triplet>("a").setValue(triplet, 4);
    typed<int, Triplet>("c").setValue(triplet, 6);
    EXPECT_EQ(4, triplet._values[0]);
    EXPECT_EQ(0, triplet._values[1]);
    EXPECT_EQ(6, (typed<int, Triplet>("c").getValue(triplet)));

    const auto& corner =
        static_cast<const orv::ContainerAccessorsAttribute<const Vector3&, Triplet>&>(typed<const Vector3&, Triplet>("corner"));
    corner.setReference(triplet, Vector3(0.0f, 5.0f, 0.0f));
    EXPECT_EQ(Vector3(0.0f, 5.0f, 0.0f), triplet._corners[1]);
    EXPECT_EQ(&triplet._corners[1], &corner.getConstReference(triplet));
}

TEST_F(AttributeTest, AccessorSettersRunOnceAfterBothReadPassesWithResolvedValues)
{
    Rig written;
    written._speed = 12;
    written._joint._angle = 0.5f;
    written._joint._owner = &written;
    orv::BinaryStream stream;
    stream.pack(written);
    EXPECT_EQ(0, written._speedSets);

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
    // The pointer inside the temporary was final when the setter saw it.
    EXPECT_EQ(&read, read._ownerSeenBySetter);
    EXPECT_EQ(liveJoints, Joint::_live);
}

TEST_F(AttributeTest, AConstCharAccessorKeepsOneCharacterOnly)
{
    Rig written;
    written._tag = "walker";
    orv::BinaryStream stream;
    stream.pack(written);

    Rig read;
    stream.clear();
    stream.unpack(read);
    ASSERT_NE(nullptr, read._tag);
    EXPECT_EQ('w', read._tag[0]);
    delete read._tag;
}

using AttributeDeathTest = AttributeTest;

TEST_F(AttributeDeathTest, APairTheClassDoesNotImplementIsFatal)
{
    const AbstractAttributeT<int, Gauge> bare("count", Gauge::getClassRTTI());
    Gauge gauge;
    EXPECT_DEATH(bare.getValue(gauge), "Not implemented in AbstractAttributeT derived class, for the attribute count of "
                                       "type int from an object of type orvtest::Gauge");
}

} // namespace
