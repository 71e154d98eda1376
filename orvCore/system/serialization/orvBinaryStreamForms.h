// orvCore/system/serialization/orvBinaryStreamForms.h
#pragma once

#include <cstdint>
#include <type_traits>
#include <utility>

namespace orv
{

template <class T>
class SmartPointer;

/// Type tests behind the binary stream's choice of form; not for direct use.
namespace binaryStreamDetail
{

/// True for a class with its own descriptor (the class-declaration macros give it getClassRTTI).
template <typename T, typename = void>
struct IsInspectable : std::false_type
{
};
template <typename T>
struct IsInspectable<T, std::void_t<decltype(T::getClassRTTI())>> : std::true_type
{
};

/// The class a smart pointer holds, for SmartPointer<P> and every class derived from it (BoolCallBackPointer);
/// declared only, for the type tests below.
template <class P>
P* smartPointee(const SmartPointer<P>*);
/// Anything else holds nothing.
void smartPointee(...);

/// True for SmartPointer<P> and the classes derived from it, which go on the stream as a pointer although they are
/// themselves inspectable: the stream holds what it reads.
template <typename T, typename = void>
struct IsSmartPointer : std::false_type
{
};
template <typename T>
struct IsSmartPointer<T, std::enable_if_t<!std::is_void<decltype(smartPointee(std::declval<const T*>()))>::value>>
    : std::true_type
{
    /// The class pointed to.
    typedef std::remove_pointer_t<decltype(smartPointee(std::declval<const T*>()))> Pointee;
};

/// True for a value that goes on the stream as one unsigned 32-bit word through getUint32 and setUint32, such as
/// an entity handle; the stream needs nothing else of its type.
template <typename T, typename = void>
struct IsWordValue : std::false_type
{
};
template <typename T>
struct IsWordValue<
    T, std::void_t<decltype(std::declval<const T&>().getUint32()), decltype(std::declval<T&>().setUint32(uint32_t()))>>
    : std::true_type
{
};

} // namespace binaryStreamDetail

} // namespace orv
