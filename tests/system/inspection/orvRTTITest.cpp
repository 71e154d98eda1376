#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <memory>

#include "math/types/orvVector3.h"
#include "system/containers/orvArray.h"
#include "system/containers/orvMap.h"
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

/// A value class of one type argument, named and identified from its argument.
template <typename T>
class Pair
{
    ORV_DECLARE_VALUE_RTTI(Pair)

public:
    T _first = T();
    T _second = T();
};

ORV_IMPLEMENT_ABSTRACT_RTTI(Animal, "f52796a0-f3fe-40c6-aeca-92ef9ad9f55d", "orvtest::Animal")
ORV_IMPLEMENT_RTTI(Dog, "b8ca82bf-53ba-42d0-9bfd-56e2023e8a96", "orvtest::Dog")
ORV_IMPLEMENT_RTTI(Puppy, "4df489f8-0bf6-45f0-854e-04235a44851e", "orvtest::Puppy")
ORV_IMPLEMENT_RTTI(Bird, "f333fa7b-2962-40d3-b61e-c71bafaef0e2", "orvtest::Bird")
ORV_IMPLEMENT_TEMPLATE_RTTI(Pair, "5fa8e26c-a5f3-476f-8e8a-a41c28ab4868", "orvtest::Pair")

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

template <typename T>
void Pair<T>::addAttributes()
{
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

TEST_F(RTTITest, NamesAndIdentifiersAnswerBothWaysAndUnknownOnesGiveNull)
{
    EXPECT_STREQ("int", RTTI::getTypeName(Uuid("e7aba3a3-34e5-414f-95ad-f1b0a3163240")));
    EXPECT_EQ(orv::RTTIAccessor<int64_t>::getClassRTTI(), RTTI::getRTTI(RTTI::getTypeID("long")));
    EXPECT_EQ(nullptr, RTTI::createInstance(RTTI::getTypeID("float")));

    const Uuid unknown("ea2b667f-8b8f-4a89-bc42-484645a37470");
    EXPECT_EQ(nullptr, RTTI::getRTTI(unknown));
    EXPECT_EQ(nullptr, RTTI::getTypeName(unknown));
    EXPECT_EQ(nullptr, RTTI::createInstance(unknown));
    EXPECT_TRUE(RTTI::getRTTIs(unknown).empty());
    EXPECT_TRUE(RTTI::getTypeID("orvtest::Nothing").isNull());
}

TEST_F(RTTITest, InstancesAreCreatedByIdentifierExceptForAbstractClasses)
{
    EXPECT_NE(nullptr, RTTI::getRTTI(Animal::getClassRTTI()->getTypeID()));
    EXPECT_EQ(nullptr, RTTI::createInstance(Animal::getClassRTTI()->getTypeID()));

    std::unique_ptr<Animal> made(static_cast<Animal*>(RTTI::createInstance(RTTI::getTypeID("orvtest::Bird"))));
    ASSERT_NE(nullptr, made);
    EXPECT_EQ(Bird::getClassRTTI(), made->getRTTI());
    EXPECT_EQ(2, made->legs());

    // getRTTI is virtual: through a base, the object's own class answers.
    Puppy puppy;
    EXPECT_STREQ("orvtest::Puppy", static_cast<const Animal&>(puppy).getRTTI()->getTypeName());
}

TEST_F(RTTITest, DerivationFollowsBasesAtAnyDepthAndIncludesTheClassItself)
{
    const RTTI& animal = *Animal::getClassRTTI();
    const RTTI& dog = *Dog::getClassRTTI();
    const RTTI& puppy = *Puppy::getClassRTTI();
    const RTTI& bird = *Bird::getClassRTTI();
    EXPECT_TRUE(puppy.isDerivedFrom(puppy));
    EXPECT_TRUE(puppy.isDerivedFrom(dog));
    EXPECT_TRUE(puppy.isDerivedFrom(animal));
    EXPECT_TRUE(puppy.isDerivedFrom<Animal>());
    EXPECT_FALSE(dog.isDerivedFrom(puppy));
    EXPECT_FALSE(bird.isDerivedFrom(dog));
    EXPECT_EQ(1u, puppy.getBaseClassesCount());
    EXPECT_EQ(&dog, puppy.getBaseClassRTTI(0));
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

TEST_F(RTTITest, AttributesOfBasesComeFirstAndIndexingStopsAtTheCount)
{
    const RTTI& puppy = *Puppy::getClassRTTI();
    ASSERT_EQ(4u, puppy.getAttributesCount());
    EXPECT_EQ(0u, puppy.getOwnAttributesCount());
    EXPECT_STREQ("legs", puppy.getAttribute(0u)->getName());
    EXPECT_STREQ("weight", puppy.getAttribute(1u)->getName());
    EXPECT_STREQ("ownerName", puppy.getAttribute(2u)->getName());
    EXPECT_STREQ("weight", puppy.getAttribute(3u)->getName());
    EXPECT_EQ(Dog::getClassRTTI(), puppy.getAttribute(3u)->getOwnerRTTI());
    EXPECT_EQ(nullptr, puppy.getAttribute(puppy.getAttributesCount()));
}

TEST_F(RTTITest, AttributesAreFoundByNormalisedNameWithTheDerivedOneFirst)
{
    const RTTI& puppy = *Puppy::getClassRTTI();
    const orv::AbstractAttribute* owner = puppy.getAttribute("owner name");
    ASSERT_NE(nullptr, owner);
    EXPECT_EQ(owner, puppy.getAttribute("ownerName"));
    EXPECT_EQ(Dog::getClassRTTI(), puppy.getAttribute("weight")->getOwnerRTTI());
    EXPECT_EQ(Animal::getClassRTTI(), Bird::getClassRTTI()->getAttribute("weight")->getOwnerRTTI());
    EXPECT_EQ(nullptr, puppy.getAttribute("tail"));

    EXPECT_TRUE(puppy.hasAttribute(*owner));
    EXPECT_FALSE(Bird::getClassRTTI()->hasAttribute(*owner));
}

TEST_F(RTTITest, AnAttributeHoldsItsValueTypeUntilItIsRemoved)
{
    RTTI* doubleRTTI = orv::RTTIAccessor<double>::touchClassRTTI();
    const unsigned int held = doubleRTTI->getCounter();
    Dog::destroyClassRTTI(true);
    EXPECT_EQ(held - 1u, doubleRTTI->getCounter());
    // Puppy and Bird still hold Dog and Animal: the descriptors stay, Dog without its own attributes.
    ASSERT_NE(nullptr, Dog::getClassRTTI());
    EXPECT_EQ(0u, Dog::getClassRTTI()->getOwnAttributesCount());
    Dog::createClassRTTI(true);
    EXPECT_EQ(held, doubleRTTI->getCounter());
    EXPECT_EQ(2u, Dog::getClassRTTI()->getOwnAttributesCount());
    EXPECT_NE(nullptr, Dog::getClassRTTI()->getAttribute("owner name"));
}

TEST_F(RTTITest, ADescriptorLivesUntilItsLastHoldIsReleased)
{
    Puppy::createClassRTTI(false);
    Puppy::destroyClassRTTI(false);
    Bird::destroyClassRTTI(true);
    Puppy::destroyClassRTTI(true);
    EXPECT_EQ(nullptr, Puppy::_rtti);
    EXPECT_EQ(nullptr, RTTI::getRTTI(Uuid("4df489f8-0bf6-45f0-854e-04235a44851e")));
    Dog::destroyClassRTTI(true);
    // Only its own registration holds Animal now; the base class lists have let go.
    EXPECT_EQ(1u, Animal::getClassRTTI()->getCounter());
    Animal::destroyClassRTTI(true);
    EXPECT_EQ(nullptr, RTTI::getRTTI(Uuid("f52796a0-f3fe-40c6-aeca-92ef9ad9f55d")));

    // Dog alone brings Animal back, held but without its attributes, and takes it away again.
    Dog::createClassRTTI(true);
    EXPECT_EQ(1u, Animal::getClassRTTI()->getCounter());
    EXPECT_EQ(0u, Animal::getClassRTTI()->getOwnAttributesCount());
    Dog::destroyClassRTTI(true);
    EXPECT_EQ(nullptr, Animal::_rtti);

    Animal::createClassRTTI(true);
    Dog::createClassRTTI(true);
    Puppy::createClassRTTI(true);
    Bird::createClassRTTI(true);
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
    EXPECT_TRUE(RTTI::getTypeID("orvtest::Overwrite").isNull());
    delete rtti;
    EXPECT_TRUE(RTTI::getTypeID("orvtest::Transient").isNull());
}

TEST_F(RTTITest, TemplateInstancesAreNamedAndIdentifiedFromTheirArgument)
{
    orvtest::Pair<int>::createClassRTTI(true);
    orvtest::Pair<orv::Vector3>::createClassRTTI(true);
    const RTTI* ints = orvtest::Pair<int>::getClassRTTI();
    ASSERT_NE(nullptr, ints);
    EXPECT_STREQ("orvtest::Pair<int>", ints->getTypeName());
    EXPECT_EQ(Uuid("5fa8e26c-a5f3-476f-8e8a-a41c28ab4868") + RTTI::getTypeID("int"), ints->getTypeID());
    EXPECT_STREQ("orvtest::Pair<orv::Vector3>", orvtest::Pair<orv::Vector3>::getClassRTTI()->getTypeName());
    EXPECT_EQ(ints, orvtest::Pair<int>().getRTTI());
    orvtest::Pair<orv::Vector3>::destroyClassRTTI(true);
    orvtest::Pair<int>::destroyClassRTTI(true);
    EXPECT_EQ(nullptr, RTTI::getRTTI(Uuid("5fa8e26c-a5f3-476f-8e8a-a41c28ab4868") + RTTI::getTypeID("int")));
}

TEST_F(RTTITest, CompositeTypesAreRegisteredOnTheirFirstHold)
{
    typedef orv::RTTIAccessor<orv::OrvMap<int, float>> MapAccessor;
    const Uuid mapTypeID = Uuid("812c7245-c0cf-4918-9bbe-a257b553e850") + RTTI::getTypeID("int") +
                           RTTI::getTypeID("float");
    const unsigned int floatHolds = orv::RTTIAccessor<float>::getClassRTTI()->getCounter();
    EXPECT_EQ(nullptr, RTTI::getRTTI(mapTypeID));
    MapAccessor::createClassRTTI();
    MapAccessor::createClassRTTI();
    EXPECT_STREQ("OrvMap<int,float>*", RTTI::getTypeName(mapTypeID));
    EXPECT_EQ(floatHolds + 2u, orv::RTTIAccessor<float>::getClassRTTI()->getCounter());
    MapAccessor::destroyClassRTTI();
    MapAccessor::destroyClassRTTI();
    EXPECT_EQ(nullptr, RTTI::getRTTI(mapTypeID));
    EXPECT_EQ(floatHolds, orv::RTTIAccessor<float>::getClassRTTI()->getCounter());

    typedef orv::RTTIAccessor<orv::Array<const Dog*>> DogsAccessor;
    DogsAccessor::createClassRTTI();
    EXPECT_STREQ("Array<const orvtest::Dog*>", DogsAccessor::getClassRTTI()->getTypeName());
    DogsAccessor::destroyClassRTTI();
}

TEST_F(RTTITest, TheTypeNameBufferHoldsEachFormAndAdvancesPastIt)
{
    const uint64_t before = orv::getRTTIConcatBufferIndex();
    EXPECT_STREQ("a", orv::RTTIConcat("a"));
    EXPECT_STREQ("a<b>", orv::RTTIConcat("a", "b"));
    EXPECT_STREQ("a<b,c>", orv::RTTIConcat("a", "b", "c"));
    EXPECT_STREQ("a<b,c,d>", orv::RTTIConcat("a", "b", "c", "d"));
    EXPECT_STREQ("a<b,c,d,e>", orv::RTTIConcat("a", "b", "c", "d", "e"));
    EXPECT_STREQ("a<b,c>", orv::RTTIConcat("a", "b", orv::OrvString("c")));
    EXPECT_EQ(before + 2u + 5u + 7u + 9u + 11u + 7u, orv::getRTTIConcatBufferIndex());
}

TEST_F(RTTITest, EverythingGoesAtTeardownAndRegistersAfreshAfterwards)
{
    // In a child: the teardown would pull the descriptors out from under the fixture.
    EXPECT_EXIT(
        {
            RTTI::destroyRTTIs();
            const bool empty = RTTI::getTypeIDToRTTI().empty() && RTTI::getTypeNameToTypeID().empty();
            RTTI::createRTTIs();
            // Dog's pointer is stale now: it must be looked up again, not trusted.
            Dog::createClassRTTI(true);
            const bool fresh = RTTI::getRTTI(RTTI::getTypeID("orvtest::Dog")) == Dog::getClassRTTI() &&
                               Dog::getClassRTTI()->getCounter() == 1u;
            std::exit(empty && fresh ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
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
