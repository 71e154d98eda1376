// orvCore/system/log/orvLog.cpp
#include "system/log/orvLog.h"

#include "system/log/orvLogMutex.h"
#include "system/thread/orvScopedLock.h"

namespace orv
{

Array<Log*>* Log::_logs = nullptr;

Log::Log() : _messagesSource(&ILogEventListener::onLogEvent)
{
    if (_logs != nullptr)
    {
        _logs->push_back(this);
    }
}

Log::~Log()
{
    if (_logs != nullptr)
    {
        for (Log** it = _logs->begin(); it != _logs->end(); ++it)
        {
            if (*it == this)
            {
                _logs->erase(it);
                break;
            }
        }
    }
}

void Log::trace(LogSeverity::Value severity, const char* fileName, int line, const char* operationName,
                const char* message)
{
    ScopedLock<Mutex> lock(getLogMutex());
    LogEvent event(this, severity, fileName, line, operationName, message);
    _messagesSource.publishEvent(event);
}

void Log::addLogEventListener(ILogEventListener* listener)
{
    _messagesSource.addListener(listener);
}

void Log::removeLogEventListener(ILogEventListener* listener)
{
    _messagesSource.removeListener(listener);
}

bool Log::hasLogEventListener(ILogEventListener* listener) const
{
    return _messagesSource.hasListener(listener);
}

void Log::allocateStaticLogs()
{
    if (_logs == nullptr)
    {
        _logs = new Array<Log*>();
    }
}

void Log::deallocateStaticLogs()
{
    delete _logs;
    _logs = nullptr;
}

} // namespace orv
