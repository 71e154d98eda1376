#include <gtest/gtest.h>

#include <cstring>
#include <memory>

#include "system/inspection/orvAbstractAttribute.h"
#include "system/inspection/orvInspectionTestSupport.h"
#include "system/inspection/orvRTTI.h"
#include "system/inspection/orvRTTIAccessor.h"

namespace orvtest
{

/// An attribute that moves nothing: enough to fill and query a descriptor's attribute list.
template <typename T>
class ProbeAttribute : public orv::AbstractAttribute
{
public:
    typedef T ValueType;

    ProbeAttribute(const char* name, const orv::RTTI* ownerRTTI) : AbstractAttribute(name, ownerRTTI) {}

    const orv::RTTI* getAttributeRTTI() const override { return orv::RTTIAccessor<T>::getClassRTTI(); }
    void pack(orv::BinaryStream&, const void*) const override {}
    void unpack(orv::BinaryStream&, void*) const override {}
    bool check(orv::BinaryStreamCheck&) const override { return true; }
    orv::AttributeStreamShape getStreamShape() const override { return orv::AttributeStreamShape(); }
    void pack(orv::XMLStream&, orv::DataItem&, const void*) const override {}
    void unpack(orv::XMLStream&, const orv::DataItem&, void*) const override {}
};

class Animal
{
    ORV_DECLARE_ABSTRACT_RTTI(Animal)

public:
    virtual ~Animal() = default;
    virtual int legs() const = 0;
};

class Dog : public Animal
{
    ORV_DECLARE_RTTI(Dog)

public:
    int legs() const override { return 4; }
};

class Puppy : public Dog
{
    ORV_DECLARE_RTTI(Puppy)
};

class Bird : public Animal
{
    ORV_DECLARE_RTTI(Bird)

public:
    int legs() const override { return 2; }
};

ORV_IMPLEMENT_ABSTRACT_RTTI(Animal, "f52796a0-f3fe-40c6-aeca-92ef9ad9f55d", "orvtest::Animal")
ORV_IMPLEMENT_RTTI(Dog, "b8ca82bf-53ba-42d0-9bfd-56e2023e8a96", "orvtest::Dog")
ORV_IMPLEMENT_RTTI(Puppy, "4df489f8-0bf6-45f0-854e-04235a44851e", "orvtest::Puppy")
ORV_IMPLEMENT_RTTI(Bird, "f333fa7b-2962-40d3-b61e-c71bafaef0e2", "orvtest::Bird")

void Animal::addAttributes()
{
    _rtti->addAttribute(ProbeAttribute<int>("legs", _rtti));
    _rtti->addAttribute(ProbeAttribute<float>("weight", _rtti));
}

void Dog::addAttributes()
{
    _rtti->addBaseClass<Animal>();
    _rtti->addAttribute(ProbeAttribute<orv::OrvString>("owner name", _rtti));
    // Hides the base's attribute of the same name in lookups by name.
    _rtti->addAttribute(ProbeAttribute<double>("weight", _rtti));
}

void Puppy::addAttributes()
{
    _rtti->addBaseClass<Dog>();
}

void Bird::addAttributes()
{
    _rtti->addBaseClass<Animal>();
}

} // namespace orvtest

namespace
{

using orv::RTTI;
using orv::Uuid;
using orvtest::Animal;
using orvtest::Bird;
using orvtest::Dog;
using orvtest::Puppy;

/// Registers the test classes as initCore registers the library's, and releases them again.
class RTTITest : public orvtest::InspectionTest
{
protected:
    void SetUp() override
    {
        InspectionTest::SetUp();
        Animal::createClassRTTI(true);
        Dog::createClassRTTI(true);
        Puppy::createClassRTTI(true);
        Bird::createClassRTTI(true);
    }
    void TearDown() override
    {
        Bird::destroyClassRTTI(true);
        Puppy::destroyClassRTTI(true);
        Dog::destroyClassRTTI(true);
        Animal::destroyClassRTTI(true);
        InspectionTest::TearDown();
    }
};

TEST_F(RTTITest, UnknownNamesAndIdentifiersGiveNull)
{
    const Uuid unknown("ea2b667f-8b8f-4a89-bc42-484645a37470");
    EXPECT_EQ(nullptr, RTTI::getRTTI(unknown));
    EXPECT_EQ(nullptr, RTTI::getTypeName(unknown));
    EXPECT_EQ(nullptr, RTTI::createInstance(unknown));
    EXPECT_TRUE(RTTI::getRTTIs(unknown).empty());
    EXPECT_TRUE(RTTI::getTypeID("orvtest::Nothing").isNull());
}

TEST_F(RTTITest, InstancesAreCreatedByNameExceptForAbstractClassesAndBaseTypes)
{
    EXPECT_EQ(nullptr, RTTI::createInstance(Animal::getClassRTTI()->getTypeID()));
    EXPECT_EQ(nullptr, RTTI::createInstance(RTTI::getTypeID("float")));

    std::unique_ptr<Animal> made(static_cast<Animal*>(RTTI::createInstance(RTTI::getTypeID("orvtest::Bird"))));
    ASSERT_NE(nullptr, made);
    EXPECT_EQ(2, made->legs());
    // getRTTI is virtual: through a base, the object's own class answers.
    EXPECT_EQ(Bird::getClassRTTI(), made->getRTTI());
}

TEST_F(RTTITest, DerivationFollowsBasesAtAnyDepthAndIncludesTheClassItself)
{
    const RTTI& dog = *Dog::getClassRTTI();
    const RTTI& puppy = *Puppy::getClassRTTI();
    EXPECT_TRUE(puppy.isDerivedFrom(puppy));
    EXPECT_TRUE(puppy.isDerivedFrom(dog));
    EXPECT_TRUE(puppy.isDerivedFrom<Animal>());
    EXPECT_FALSE(dog.isDerivedFrom(puppy));
    EXPECT_FALSE(Bird::getClassRTTI()->isDerivedFrom(dog));
}

TEST_F(RTTITest, DerivedDescriptorsAreListedInIdentifierOrder)
{
    const orv::PODArray<const RTTI*> all = RTTI::getRTTIs(Animal::getClassRTTI()->getTypeID());
    ASSERT_EQ(4u, all.size());
    for (size_t i = 1; i < all.size(); ++i)
    {
        EXPECT_TRUE(all[i - 1]->getTypeID() < all[i]->getTypeID());
    }
    const orv::PODArray<const RTTI*> dogs = RTTI::getRTTIs(Dog::getClassRTTI()->getTypeID());
    ASSERT_EQ(2u, dogs.size());
    // Stored bytes of _data0 little-endian: Dog's bf... sorts after Puppy's f8....
    EXPECT_EQ(Dog::getClassRTTI(), dogs[0]);
    EXPECT_EQ(Puppy::getClassRTTI(), dogs[1]);
}

TEST_F(RTTITest, AttributesOfBasesComeFirstAndAreFoundByNormalisedNameDerivedFirst)
{
    const RTTI& puppy = *Puppy::getClassRTTI();
    ASSERT_EQ(4u, puppy.getAttributesCount());
    EXPECT_STREQ("legs", puppy.getAttribute(0u)->getName());
    EXPECT_STREQ("ownerName", puppy.getAttribute(2u)->getName());
    EXPECT_EQ(Dog::getClassRTTI(), puppy.getAttribute(3u)->getOwnerRTTI());
    EXPECT_EQ(nullptr, puppy.getAttribute(puppy.getAttributesCount()));

    EXPECT_EQ(puppy.getAttribute(2u), puppy.getAttribute("owner name"));
    EXPECT_EQ(puppy.getAttribute(2u), puppy.getAttribute("ownerName"));
    EXPECT_EQ(puppy.getAttribute(3u), puppy.getAttribute("weight"));
    EXPECT_EQ(Animal::getClassRTTI(), Bird::getClassRTTI()->getAttribute("weight")->getOwnerRTTI());
    EXPECT_EQ(nullptr, puppy.getAttribute("tail"));
    EXPECT_FALSE(Bird::getClassRTTI()->hasAttribute(*puppy.getAttribute(2u)));
}

TEST_F(RTTITest, ADerivedListFollowsAttributesAddedToAndRemovedFromABaseLater)
{
    RTTI& animal = const_cast<RTTI&>(*Animal::getClassRTTI());
    const RTTI& puppy = *Puppy::getClassRTTI();
    ASSERT_EQ(4u, puppy.getAllAttributes().size());

    animal.addAttribute(orvtest::ProbeAttribute<int>("tail", &animal));
    ASSERT_EQ(5u, puppy.getAttributesCount());
    EXPECT_STREQ("tail", puppy.getAttribute(2u)->getName());
    EXPECT_STREQ("ownerName", puppy.getAllAttributes()[3]->getName());

    animal.isRemoving(true);
    animal.addAttribute(orvtest::ProbeAttribute<int>("tail", &animal));
    animal.isRemoving(false);
    EXPECT_EQ(4u, puppy.getAttributesCount());
    EXPECT_STREQ("ownerName", puppy.getAttribute(2u)->getName());
}

TEST_F(RTTITest, ADescriptorLivesUntilItsLastHoldAndItsAttributesHoldTheirTypes)
{
    const RTTI* doubleRTTI = orv::RTTIAccessor<double>::getClassRTTI();
    const unsigned int doubleHolds = doubleRTTI->getCounter();
    Dog::destroyClassRTTI(true);
    // Puppy still holds Dog: the descriptor stays, without its own attributes and their holds.
    ASSERT_NE(nullptr, Dog::getClassRTTI());
    EXPECT_EQ(0u, Dog::getClassRTTI()->getOwnAttributesCount());
    EXPECT_EQ(doubleHolds - 1u, doubleRTTI->getCounter());

    Puppy::destroyClassRTTI(true);
    EXPECT_EQ(nullptr, Dog::_rtti);
    EXPECT_EQ(nullptr, RTTI::getRTTI(Uuid("4df489f8-0bf6-45f0-854e-04235a44851e")));
    // Its own registration and Bird's base list hold Animal now.
    EXPECT_EQ(2u, Animal::getClassRTTI()->getCounter());

    Dog::createClassRTTI(true);
    Puppy::createClassRTTI(true);
    EXPECT_EQ(doubleHolds, doubleRTTI->getCounter());
}

TEST_F(RTTITest, ASecondRegistrationUnderTheSameNameGivesTheFirstDescriptor)
{
    const RTTI* dog = Dog::getClassRTTI();
    EXPECT_EQ(dog, RTTI::checkBeforeCreate(dog->getTypeID(), "orvtest::Dog"));
    EXPECT_EQ(nullptr, RTTI::checkBeforeCreate(Uuid("32c4a5de-b1b7-4c9e-9796-9cfc7a6eb7c9"), "orvtest::Dog"));
}

TEST_F(RTTITest, TheNameRegistryKeepsItsOwnCopyOfTheName)
{
    const Uuid typeID("ea81a9d8-28ce-4244-85f8-314c79a15502");
    char name[] = "orvtest::Transient";
    RTTI* rtti = RTTI::create(typeID, name, nullptr);
    strcpy(name, "orvtest::Overwrite");
    EXPECT_STREQ("orvtest::Transient", rtti->getTypeName());
    EXPECT_EQ(typeID, RTTI::getTypeID("orvtest::Transient"));
    delete rtti;
    EXPECT_TRUE(RTTI::getTypeID("orvtest::Transient").isNull());
}

using RTTIDeathTest = RTTITest;

TEST_F(RTTIDeathTest, OneIdentifierUnderTwoNamesIsFatal)
{
    EXPECT_DEATH(RTTI::checkBeforeCreate(Dog::getClassRTTI()->getTypeID(), "orvtest::Cat"),
                 "Type ID b8ca82bf-53ba-42d0-9bfd-56e2023e8a96 trying to register with the TypeName : orvtest::Cat "
                 "is already registered with a different TypeName : orvtest::Dog");
}

TEST_F(RTTIDeathTest, ANullIdentifierOrNameIsFatal)
{
    EXPECT_DEATH(RTTI::create(Uuid(), "orvtest::Null", nullptr), "!typeID.isNull\\(\\)");
    EXPECT_DEATH(RTTI::create(Uuid("ea81a9d8-28ce-4244-85f8-314c79a15502"), nullptr, nullptr), "name != 0");
}

TEST_F(RTTIDeathTest, RegisteringAClassBeforeInitCoreIsFatal)
{
    // The child stops the library the fixture started, which leaves it where a host stands before initCore.
    EXPECT_DEATH(
        {
            orv::finishCore();
            Bird::createClassRTTI(true);
        },
        "the class registries are not allocated, for RTTI orvtest::Bird");
}

TEST_F(RTTIDeathTest, AFullTypeNameBufferIsFatal)
{
    const orv::OrvString longName(1000, 'x');
    EXPECT_DEATH(
        {
            for (int i = 0; i < 300; ++i)
            {
                orv::RTTIConcat(longName.c_str());
            }
        },
        "RTTIConcatBufferIndex < RTTI_STRING_CONCAT_LENGTH");
}

} // namespace
