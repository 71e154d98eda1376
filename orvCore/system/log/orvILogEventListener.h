// orvCore/system/log/orvILogEventListener.h
#pragma once

namespace orv
{

class LogEvent;

/// Hears the events of the logs it is added to. Called under the global log mutex: must not log itself.
class ILogEventListener
{
public:
    /// Listeners may be deleted through this interface; remove them from their logs first.
    virtual ~ILogEventListener() = default;
    /// One event, on the thread that logged it, under the global log mutex.
    virtual void onLogEvent(const LogEvent& event) = 0;
};

} // namespace orv
