// orvCore/system/inspection/orvRTTIAccessor.cpp
#include "system/inspection/orvRTTIAccessor.h"

namespace orv
{

namespace
{

template <typename T>
void registerBaseType(const Uuid& typeID, const char* name)
{
    RTTI* rtti = RTTI::checkBeforeCreate(typeID, name);
    if (rtti == nullptr)
    {
        rtti = RTTI::create(typeID, name, nullptr);
    }
    rtti->incrementCounter();
    RTTIAccessor<T>::setRTTI(rtti);
}

template <typename T>
void registerBaseType(const char* uuidText, const char* name)
{
    registerBaseType<T>(Uuid(uuidText), name);
}

template <typename T>
void unregisterBaseType()
{
    RTTI* rtti = RTTIAccessor<T>::touchClassRTTI();
    RTTIAccessor<T>::unsetRTTI();
    // A descriptor still held by a leftover attribute stays; RTTI::destroyRTTIs deletes it afterwards.
    if (rtti != nullptr && rtti->getCounter() > 0 && rtti->decrementCounter() == 0)
    {
        delete rtti;
    }
}

} // namespace

void createRTTIBaseTypeAccessors()
{
    // The order is fixed: the vector and rotation identifiers are composed with the one of float.
    registerBaseType<bool>("fac19457-d459-4f19-8218-65943a7de958", "bool");
    registerBaseType<int16_t>("0aff7554-0ba1-4a93-8782-9a33e7fb6bc7", "short");
    registerBaseType<uint16_t>("80e1ebd3-b3f3-47e9-bd40-5424c6c1c97a", "unsigned short");
    registerBaseType<int32_t>("e7aba3a3-34e5-414f-95ad-f1b0a3163240", "int");
    registerBaseType<uint32_t>("e5f6d962-0891-4299-8212-38e900f240bf", "unsigned int");
    registerBaseType<int64_t>("85d1c39d-0d78-4dd0-9a08-2e1a2c1dbdca", "long");
    registerBaseType<uint64_t>("74bbcf67-6888-4e15-9898-a36971adcf04", "uint64_t");
    registerBaseType<float>("19da58d2-b2dc-4199-8985-029948867708", "float");
    registerBaseType<double>("7c188429-e7ac-4322-a573-54d11874f639", "double");
    registerBaseType<OrvString>("1ae93ddd-1a38-47f1-9aff-af713284b685", "string");
    registerBaseType<char>("17c814cf-cc7b-40d4-8a0b-1185f9b6cf2e", "char");
    registerBaseType<unsigned char>("82fe4b50-c0f1-4825-baac-f8f929f0f166", "unsigned char");
    registerBaseType<Uuid>("e94c88f5-c2a3-4e70-9526-61184b9dd4b1", "orv::Uuid");
    registerBaseType<EntityHandle>("d617cf4f-288d-41c1-8676-5e9788c1e104", "orv::EntityHandle");

    const Uuid& floatTypeID = RTTIAccessor<float>::getClassRTTI()->getTypeID();
    const Uuid vectorTypeID = Uuid("8af3bb0a-57ce-44d5-b915-2ef523362c3c") + floatTypeID;
    registerBaseType<Vector2>(vectorTypeID + 2u, "orv::Vector2");
    registerBaseType<Vector3>(vectorTypeID + 3u, "orv::Vector3");
    registerBaseType<Vector4>(vectorTypeID + 4u, "orv::Vector4");
    registerBaseType<Quaternion>(Uuid("3e67050a-c502-4170-80b9-c654c11d1695") + floatTypeID, "orv::Quaternion");
    registerBaseType<RotationMatrix>(Uuid("f7dc7e88-49cf-400c-86f5-77da0923f7e6") + floatTypeID, "orv::RotationMatrix");
}

void destroyRTTIBaseTypeAccessors()
{
    unregisterBaseType<RotationMatrix>();
    unregisterBaseType<Quaternion>();
    unregisterBaseType<Vector4>();
    unregisterBaseType<Vector3>();
    unregisterBaseType<Vector2>();
    unregisterBaseType<EntityHandle>();
    unregisterBaseType<Uuid>();
    unregisterBaseType<unsigned char>();
    unregisterBaseType<char>();
    unregisterBaseType<OrvString>();
    unregisterBaseType<double>();
    unregisterBaseType<float>();
    unregisterBaseType<uint64_t>();
    unregisterBaseType<int64_t>();
    unregisterBaseType<uint32_t>();
    unregisterBaseType<int32_t>();
    unregisterBaseType<uint16_t>();
    unregisterBaseType<int16_t>();
    unregisterBaseType<bool>();
}

} // namespace orv
