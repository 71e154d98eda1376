// orvCore/system/inspection/orvAttributeForm.h
#pragma once

#include "system/inspection/orvAbstractAttribute.h"

namespace orv
{

/// What the template argument T of an attribute says: the kind of the attribute and the value type V behind the
/// form. The plain form V is the general case; const V&, V* and const V* follow.
template <typename T>
struct AttributeForm
{
    /// The type behind the form.
    typedef T Value;
    /// What a getter hands back: a copy.
    typedef T GetterResult;
    /// What a setter is handed; a setter taking a copy gets one made from it.
    typedef const T& SetterArgument;
    /// The attribute's kind.
    static constexpr AbstractAttribute::AttributeType::Value kind = AbstractAttribute::AttributeType::VALUE;
};

/// const V&: read through a reference, written by a setter that takes one.
template <typename V>
struct AttributeForm<const V&>
{
    /// The type behind the form.
    typedef V Value;
    /// What a getter hands back: the owner's own value.
    typedef const V& GetterResult;
    /// What a setter is handed.
    typedef const V& SetterArgument;
    /// The attribute's kind.
    static constexpr AbstractAttribute::AttributeType::Value kind = AbstractAttribute::AttributeType::CONST_REFERENCE;
};

/// V*: a pointer that the streams resolve by id.
template <typename V>
struct AttributeForm<V*>
{
    /// The type behind the form.
    typedef V Value;
    /// What a getter hands back.
    typedef V* GetterResult;
    /// What a setter is handed.
    typedef V* SetterArgument;
    /// The attribute's kind.
    static constexpr AbstractAttribute::AttributeType::Value kind = AbstractAttribute::AttributeType::POINTER;
};

/// const V*: as V*, through const getters and setters.
template <typename V>
struct AttributeForm<const V*>
{
    /// The type behind the form.
    typedef V Value;
    /// What a getter hands back.
    typedef const V* GetterResult;
    /// What a setter is handed.
    typedef const V* SetterArgument;
    /// The attribute's kind.
    static constexpr AbstractAttribute::AttributeType::Value kind = AbstractAttribute::AttributeType::CONST_POINTER;
};

/// The text among four that belongs to the kind of form T; each attribute class keeps one base Uuid per form.
template <typename T>
constexpr const char* selectByAttributeForm(const char* value, const char* constReference, const char* pointer,
                                            const char* constPointer)
{
    switch (AttributeForm<T>::kind)
    {
    case AbstractAttribute::AttributeType::CONST_REFERENCE:
        return constReference;
    case AbstractAttribute::AttributeType::POINTER:
        return pointer;
    case AbstractAttribute::AttributeType::CONST_POINTER:
        return constPointer;
    default:
        return value;
    }
}

} // namespace orv
