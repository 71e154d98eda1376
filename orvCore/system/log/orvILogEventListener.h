// orvCore/system/log/orvILogEventListener.h
#pragma once

namespace orv
{

class LogEvent;

/// Hears the events of the logs it is added to. Called under the global log mutex: must not log itself.
class ILogEventListener
{
public:
    virtual ~ILogEventListener() = default;
    virtual void onLogEvent(const LogEvent& event) = 0;
};

} // namespace orv
