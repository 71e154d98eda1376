#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "behavior/engine/orvBehaviorContext.h"
#include "engine/simulation/orvEntityType.h"
#include "engine/simulation/orvSimulation.h"
#include "math/types/orvInterval.h"
#include "support/orvCoreTestSupport.h"
#include "system/containers/orvIndexTriplet.h"
#include "system/inspection/orvRTTI.h"

namespace
{

using orv::RTTI;
using orv::Uuid;

std::vector<std::string> attributeNames(const RTTI& rtti)
{
    std::vector<std::string> names;
    for (unsigned int i = 0; i < rtti.getAttributesCount(); ++i)
    {
        names.push_back(rtti.getAttribute(i)->getName());
    }
    return names;
}

using ClassDescriptorsTest = orvtest::CoreTest;

TEST_F(ClassDescriptorsTest, StartRegistersEachClassUnderItsNameAndIdentifier)
{
    const std::vector<std::pair<const char*, const char*>> classes = {
        {"orv::HandleEntry", "a2b8401e-0244-4807-9f3f-4208f25898f6"},
        {"orv::Entity", "0c688260-b5bb-4cab-99d5-b91f49208830"},
        {"orv::AbstractEntityType", "659abee9-30eb-4d91-9107-0d51c8c6d80b"},
        {"orv::EntityType", "8a9663d5-6d5b-43d2-a72b-b3ce1fd66fd0"},
        {"orv::GroupEntityType", "bd1ebaf5-fbb2-4088-9391-9c3f42678922"},
        {"orv::IContext", "6facc219-6506-48df-a5fd-b7eafeef0de9"},
        {"orv::BehaviorContext", "df997442-e330-427c-8a71-217ffc366790"},
        {"orv::KBContext", "7f0405a7-ef65-4a21-811b-64d718b8e581"},
        {"orv::EntitiesManager", "1a2fa4b3-d391-4c62-9021-c0cfe4ffe239"},
        {"orv::GroupsManager", "8ce9f76e-a46a-4271-ae17-8d5abc4a7ca1"},
        {"orv::SimulationUserEvent", "3f12b09b-9d47-4873-8fa9-a8028d774c93"},
        {"orv::SimulationUserEventsList", "5517913e-3779-4f09-b1d6-f8f9f12652dc"},
        {"orv::RandomNumberGenerator", "249e8f3e-427a-4896-a823-c85a4c5b4a60"},
        {"orv::Simulation", "6f581c73-6759-46df-b1bd-45bbf40b8e50"},
        {"orv::NoGround", "87acaa0e-d692-4031-8570-8f1f48c6345b"},
        {"orv::AbstractGround", "769be201-8368-4dfe-93c3-d832f9abf9c1"},
        {"orv::GroundManager", "59f89947-2655-4251-b669-e58081ac04ea"},
        {"orv::BehaviorGraph", "5f751cce-c799-4041-b5bc-e254ef2f2192"},
        {"orv::Group", "bfb621cd-9863-47ec-9ed8-99b19161f739"},
        {"orv::ReferenceCounter", "f6d44596-134b-406d-804e-3eb0e5326a0e"},
    };
    for (const auto& entry : classes)
    {
        EXPECT_EQ(Uuid(entry.second), RTTI::getTypeID(entry.first)) << entry.first;
        ASSERT_NE(nullptr, RTTI::getRTTI(Uuid(entry.second))) << entry.first;
    }
    // Templates compose their base identifier with their argument's.
    EXPECT_EQ(Uuid("1510e4ff-00e2-487c-9fc3-c0160eef657d") + RTTI::getTypeID("int"),
              RTTI::getTypeID("orv::IndexTriplet<int>"));
    EXPECT_EQ(orv::IndexTriplet<unsigned int>::getClassRTTI()->getTypeID(),
              RTTI::getTypeID("orv::IndexTriplet<unsigned int>"));
    EXPECT_EQ(Uuid("08e58c6e-7cff-42bc-9a5c-3b959a03d00a") + RTTI::getTypeID("float"),
              RTTI::getTypeID("orv::Interval<float>"));
    // Concrete classes are made from their identifier, abstract ones are not.
    void* type = RTTI::createInstance(RTTI::getTypeID("orv::EntityType"));
    ASSERT_NE(nullptr, type);
    EXPECT_TRUE(
        static_cast<orv::EntityType*>(type)->getRTTI()->isDerivedFrom(*orv::AbstractEntityType::getClassRTTI()));
    delete static_cast<orv::EntityType*>(type);
    EXPECT_EQ(nullptr, RTTI::createInstance(RTTI::getTypeID("orv::IContext")));
}

TEST_F(ClassDescriptorsTest, AttributeListsKeepTheirFileOrder)
{
    EXPECT_EQ((std::vector<std::string>{"duration", "frame", "previousDuration", "initialized", "entitiesManager",
                                        "groupsManager", "groundManager", "contexts", "entityTypes", "groupEntityTypes",
                                        "resolveEntityTypeEntities"}),
              attributeNames(*orv::Simulation::getClassRTTI()));
    EXPECT_EQ((std::vector<std::string>{"entityType", "entityHandle", "radius", "personalSpace", "height",
                                        "bodyOrientation", "moveOrientation", "speed", "position", "scale", "lod",
                                        "parentGroupHandle", "lastMoveOrientation", "indexInEntityType", "rng"}),
              attributeNames(*orv::Entity::getClassRTTI()));
    EXPECT_EQ((std::vector<std::string>{"handleInfo", "entityIndex"}),
              attributeNames(*orv::HandleEntry::getClassRTTI()));
    EXPECT_EQ((std::vector<std::string>{"reservedEntitiesSize", "entities", "handleEntries"}),
              attributeNames(*orv::EntitiesManager::getClassRTTI()));
    // Base class attributes come first.
    EXPECT_EQ((std::vector<std::string>{"name", "simulation", "entityTypeId", "entityArraysCapacity", "entityHandles",
                                        "recycledIndices", "behaviorGraph", "scaleMin", "scaleMax", "radius", "height",
                                        "personalSpaceRadius", "characterFile", "pelvisHeightRatio", "colorABGR"}),
              attributeNames(*orv::EntityType::getClassRTTI()));
    EXPECT_EQ((std::vector<std::string>{"lod", "parentSimulation", "initialized"}),
              attributeNames(*orv::BehaviorContext::getClassRTTI()));
    EXPECT_EQ(std::vector<std::string>{"seed"}, attributeNames(*orv::RandomNumberGenerator::getClassRTTI()));
    EXPECT_EQ((std::vector<std::string>{"lowerBound", "upperBound", "empty"}),
              attributeNames(*orv::Interval<float>::getClassRTTI()));
}

TEST_F(ClassDescriptorsTest, FinishTakesEveryDescriptorDownAndAStartBuildsThemAgain)
{
    orv::finishCore();
    EXPECT_EQ(nullptr, orv::Simulation::getClassRTTI());
    orv::initCore();
    ASSERT_NE(nullptr, orv::Simulation::getClassRTTI());
    EXPECT_EQ(11u, orv::Simulation::getClassRTTI()->getAttributesCount());
}

} // namespace
