// orvCore/behavior/callBacks/orvEmptyVoidCallBack.h
#pragma once

#include "behavior/callBacks/orvIVoidCallBack.h"

namespace orv
{

/// A notification that does nothing: a placeholder where a call-back is required. Stateless; any thread.
class EmptyVoidCallBack : public IVoidCallBack
{
    ORV_DECLARE_RTTI(EmptyVoidCallBack)

public:
    /// Does nothing.
    void call(int entity) override;
};

} // namespace orv
