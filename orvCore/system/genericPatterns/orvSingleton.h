// orvCore/system/genericPatterns/orvSingleton.h
#pragma once

#include <utility>

#include "system/debug/orvAssert.h"

namespace orv
{

/// One process-wide instance of T, created and destroyed explicitly by its owner.
template <class T>
class Singleton
{
public:
    /// Builds the instance with these constructor arguments. Fatal if it exists.
    template <class... Args>
    static T& create(Args&&... args)
    {
        orvAssert(_instance == nullptr);
        _instance = new T(std::forward<Args>(args)...);
        return *_instance;
    }

    /// Deletes the instance, if any.
    static void destroy()
    {
        delete _instance;
        _instance = nullptr;
    }

    /// The instance. Fatal if it was not created.
    static T& getInstance()
    {
        orvAssert(_instance != nullptr);
        return *_instance;
    }

    /// True between the instance's creation and its destruction.
    static bool exists() { return _instance != nullptr; }

private:
    static inline T* _instance = nullptr;
};

} // namespace orv
