// orvCore/system/inspection/orvAttributeMemberFunction.h
#pragma once

#include <cstddef>
#include <cstring>
#include <type_traits>

namespace orv
{

/// A pointer to a member function of Owner, of whatever exact signature, called as Result(Owner&, Args...).
/// So an accessor attribute takes a const getter or a touch getter, and a setter by value, by reference or with a
/// result. The call goes through the original pointer type: base members, adjusted this and virtual dispatch
/// behave as in a direct call. Trivially copyable; any thread.
template <typename Owner, typename Result, typename... Args>
class AttributeMemberFunction
{
public:
    /// No function: calling it is a null call, as with a null member pointer.
    AttributeMemberFunction() = default;
    /// No function; the form of a read-only attribute.
    AttributeMemberFunction(std::nullptr_t) {}
    /// Keeps function, a pointer to a member function of Owner or of one of its bases.
    template <typename Function>
    AttributeMemberFunction(Function function)
    {
        static_assert(std::is_member_function_pointer<Function>::value, "an accessor is a member function pointer");
        static_assert(sizeof(Function) <= sizeof(_storage), "member function pointers are two words");
        memcpy(_storage, &function, sizeof(Function));
        if (function != nullptr)
        {
            _call = &call<Function>;
        }
    }

    /// Calls the function on owner. Not checked: a missing function is a null call.
    Result operator()(Owner& owner, Args... args) const { return _call(_storage, owner, args...); }

private:
    template <typename Function>
    static Result call(const unsigned char* storage, Owner& owner, Args... args)
    {
        Function function;
        memcpy(&function, storage, sizeof(Function));
        if constexpr (std::is_void<Result>::value)
        {
            (owner.*function)(args...);
        }
        else
        {
            // A reference form hands the owner's own value on: a getter returning a copy would leave it dangling.
            static_assert(!std::is_reference<Result>::value ||
                              std::is_reference<decltype((owner.*function)(args...))>::value,
                          "the getter of a reference form must return a reference");
            return (owner.*function)(args...);
        }
    }

    /// The typed caller of the stored pointer, or null.
    Result (*_call)(const unsigned char*, Owner&, Args...) = nullptr;
    /// The member function pointer's bytes.
    alignas(void*) unsigned char _storage[2 * sizeof(void*)] = {};
};

} // namespace orv
