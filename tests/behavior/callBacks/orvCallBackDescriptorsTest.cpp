#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "behavior/callBacks/orvBoolCallBackPointer.h"
#include "behavior/callBacks/orvConstantValueCallback.h"
#include "behavior/callBacks/orvCountTrigger.h"
#include "behavior/callBacks/orvScalarCallBackComparisonOperator.h"
#include "support/orvCoreTestSupport.h"
#include "system/inspection/orvAbstractAttribute.h"
#include "system/inspection/orvRTTI.h"

namespace
{

using orv::RTTI;
using orv::Uuid;

std::vector<std::string> attributeNames(const char* typeName)
{
    std::vector<std::string> names;
    const RTTI* rtti = RTTI::getRTTI(RTTI::getTypeID(typeName));
    if (rtti != nullptr)
    {
        for (unsigned int i = 0; i < rtti->getAttributesCount(); ++i)
        {
            names.push_back(rtti->getAttribute(i)->getName());
        }
    }
    return names;
}

using CallBackDescriptorsTest = orvtest::CoreTest;

TEST_F(CallBackDescriptorsTest, ClassesAreRegisteredUnderTheirNamesAndIdentifiers)
{
    // An instantiation of a template composes the class's base identifier with its argument's.
    const char* const typed = "7e4dcef2-32d8-4dcd-9e70-219801cc21f6";
    const char* const constant = "f0a4c151-5cd2-4f0a-badb-4d5ee706f7fd";
    const char* const scalar = "7049d7b3-c568-4a77-b57e-9fcd1548f242";
    const struct
    {
        const char* name;
        const char* uuid;
        const char* argument;
    } classes[] = {
        {"orv::LogicalOperatorCallBack", "7ced08e1-358c-4b09-b086-cf6eba8fefd3", nullptr},
        {"BehaviorStatusCallBack", "c607e024-5355-4d1f-a182-decd5f761cf4", nullptr},
        {"orv::VoidFunctionCallBack", "048ece35-d778-4ac3-991e-f27fe3463cac", nullptr},
        {"orv::BoolCallBackPointer", "78b6d74d-922c-48a3-a592-201427005a5f", nullptr},
        {"orv::CountTrigger", "78d00a5b-fd20-418a-ba37-acd0d2b2fbfb", nullptr},
        {"orv::ITypedCallBack<bool>", typed, "bool"},
        {"orv::ITypedCallBack<float>", typed, "float"},
        {"orv::ITypedCallBack<unsigned int>", typed, "unsigned int"},
        {"orv::ConstantValueCallback<bool>", constant, "bool"},
        {"orv::ConstantValueCallback<float>", constant, "float"},
        {"orv::ScalarCallBackPointer<unsigned int>", scalar, "unsigned int"},
        {"orv::ScalarCallBackPointer<float>", scalar, "float"},
        {"orv::ScalarCallBackComparisonOperator<unsigned int>", "d17fe088-3052-4ef7-bb9a-09b420a64e8b", "unsigned int"},
        {"orv::SmartPointer<orv::ITypedCallBack<float>>", "fa5e1ceb-a5b7-4ece-a7ac-1cb993c84838",
         "orv::ITypedCallBack<float>"},
    };
    for (const auto& c : classes)
    {
        const Uuid expected = c.argument == nullptr ? Uuid(c.uuid) : Uuid(c.uuid) + RTTI::getTypeID(c.argument);
        EXPECT_EQ(expected, RTTI::getTypeID(c.name)) << c.name;
        EXPECT_NE(nullptr, RTTI::getRTTI(expected)) << c.name;
    }
}

TEST_F(CallBackDescriptorsTest, ConcreteClassesAreMadeByNameAndAbstractOnesAreNot)
{
    for (const char* name : {"orv::LogicalOperatorCallBack", "orv::LogicalNotBoolCallBack", "BehaviorStatusCallBack",
                             "orv::ConstantValueCallback<bool>", "orv::ScalarCallBackComparisonOperator<unsigned int>",
                             "orv::CountTrigger", "orv::DelayTrigger", "orv::SequenceTrigger"})
    {
        void* instance = RTTI::createInstance(RTTI::getTypeID(name));
        ASSERT_NE(nullptr, instance) << name;
        // Held as a condition, the instance is released by the pointer.
        orv::BoolCallBackPointer hold(
            static_cast<orv::ITypedCallBack<bool>*>(static_cast<orv::ReferenceCounter*>(instance)));
        EXPECT_STREQ(name, hold->getRTTI()->getTypeName());
    }
    for (const char* name :
         {"orv::ITypedCallBack<bool>", "orv::IVoidCallBack", "orv::AbstractOperatorCallBack", "orv::AbstractTrigger"})
    {
        EXPECT_NE(nullptr, RTTI::getRTTI(RTTI::getTypeID(name))) << name;
        EXPECT_EQ(nullptr, RTTI::createInstance(RTTI::getTypeID(name))) << name;
    }
    EXPECT_TRUE(orv::CountTrigger::getClassRTTI()->isDerivedFrom(*orv::ITypedCallBack<bool>::getClassRTTI()));
}

TEST_F(CallBackDescriptorsTest, AttributeListsKeepTheirFileOrder)
{
    EXPECT_EQ((std::vector<std::string>{"behaviorGraph", "condition", "callsCountArrayCapacity", "callsCount",
                                        "thresholdCountsArrayCapacity", "thresholdCounts", "defaultThresholdCount"}),
              attributeNames("orv::CountTrigger"));
    EXPECT_EQ((std::vector<std::string>{"behaviorGraph", "callsCountArrayCapacity", "startTime",
                                        "triggerDelaysArrayCapacity", "triggerDelays", "defaultTriggerDelay"}),
              attributeNames("orv::DelayTrigger"));
    EXPECT_EQ((std::vector<std::string>{"behaviorGraph", "sequenceIterator"}), attributeNames("orv::SequenceTrigger"));
    EXPECT_EQ((std::vector<std::string>{"boolCallBack0", "boolCallBack1", "operatorType"}),
              attributeNames("orv::LogicalOperatorCallBack"));
    EXPECT_EQ((std::vector<std::string>{"scalarCallBack0", "scalarCallBack1", "operatorType"}),
              attributeNames("orv::ScalarCallBackComparisonOperator<unsigned int>"));
    EXPECT_EQ(std::vector<std::string>{"value"}, attributeNames("orv::ConstantValueCallback<float>"));
    EXPECT_EQ(std::vector<std::string>{"Pointee"}, attributeNames("orv::BoolCallBackPointer"));
    EXPECT_EQ((std::vector<std::string>{"behavior", "runStatus"}), attributeNames("BehaviorStatusCallBack"));

    // A template's descriptor held from before a restart is not trusted: it is found again.
    ASSERT_NE(nullptr, orv::ConstantValueCallback<bool>::getClassRTTI());
    orv::finishCore();
    orv::initCore();
    EXPECT_EQ(RTTI::getRTTI(RTTI::getTypeID("orv::ConstantValueCallback<bool>")),
              orv::ConstantValueCallback<bool>::getClassRTTI());
    EXPECT_EQ(std::vector<std::string>{"value"}, attributeNames("orv::ConstantValueCallback<bool>"));
}

} // namespace
