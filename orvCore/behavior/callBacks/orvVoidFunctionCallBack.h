// orvCore/behavior/callBacks/orvVoidFunctionCallBack.h
#pragma once

#include "behavior/callBacks/orvIVoidCallBack.h"

namespace orv
{

/// A notification that calls a plain function with the entity's index. Not saved: a loaded one holds no function.
/// The function runs on the workers, for many entities at once.
class VoidFunctionCallBack : public IVoidCallBack
{
    ORV_DECLARE_RTTI(VoidFunctionCallBack)

public:
    /// The function called, with the entity's index in its type.
    typedef void (*Function)(int entity);

    /// Calls function, which may be null: then call does nothing.
    explicit VoidFunctionCallBack(Function function = nullptr);

    /// Calls the function with the entity's index, when there is one.
    void call(int entity) override;

    /// The function called, or null; set on the host thread while nothing updates.
    Function getFunction() const { return _function; }
    void setFunction(Function function) { _function = function; }

private:
    Function _function = nullptr;
};

} // namespace orv
