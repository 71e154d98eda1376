// orvCore/system/log/orvAbstractLogOutputter.cpp
#include "system/log/orvAbstractLogOutputter.h"

#include "system/log/orvLog.h"
#include "system/log/orvLogEvent.h"

namespace orv
{

PODArray<AbstractLogOutputter*>* AbstractLogOutputter::_logOutputters = nullptr;

AbstractLogOutputter::AbstractLogOutputter(LogSeverity::Value severity, Log* log) : _severity(severity)
{
    if (log != nullptr)
    {
        addLog(log);
    }
    if (_logOutputters != nullptr)
    {
        _logOutputters->push_back(this);
    }
}

AbstractLogOutputter::~AbstractLogOutputter()
{
    while (!_logs.empty())
    {
        removeLog(_logs.back());
    }
    if (_logOutputters != nullptr)
    {
        for (AbstractLogOutputter** it = _logOutputters->begin(); it != _logOutputters->end(); ++it)
        {
            if (*it == this)
            {
                _logOutputters->erase(it);
                break;
            }
        }
    }
}

void AbstractLogOutputter::onLogEvent(const LogEvent& event)
{
    if (event.getSeverity() <= _severity)
    {
        doOutput(event);
    }
}

void AbstractLogOutputter::addLog(Log* log)
{
    _logs.push_back(log);
    log->addLogEventListener(this);
}

void AbstractLogOutputter::removeLog(Log* log)
{
    for (Log** it = _logs.begin(); it != _logs.end(); ++it)
    {
        if (*it == log)
        {
            _logs.erase(it);
            log->removeLogEventListener(this);
            return;
        }
    }
}

void AbstractLogOutputter::allocateStaticLogOutputters()
{
    if (_logOutputters == nullptr)
    {
        _logOutputters = new PODArray<AbstractLogOutputter*>();
    }
}

void AbstractLogOutputter::deallocateStaticLogOutputters()
{
    delete _logOutputters;
    _logOutputters = nullptr;
}

} // namespace orv
