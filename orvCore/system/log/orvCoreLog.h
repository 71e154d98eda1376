// orvCore/system/log/orvCoreLog.h
#pragma once

#include <sstream>

#include "system/log/orvLog.h"

namespace orv
{

/// Builds the core log and its console outputter. Called by initCore.
void allocateCoreLog();

/// Destroys the core log and its console outputter. Called by finishCore.
void deallocateCoreLog();

/// The library's own log. Valid between initCore and finishCore.
Log& getCoreLog();

/// True while the core log exists; guards logging during start-up and shut-down.
bool isCoreLogValid();

} // namespace orv

/// Logs a streamed message on a log; the text is built only when the log's filter lets the severity through.
#define orvLog(log, severity, message)                                                                                 \
    do                                                                                                                 \
    {                                                                                                                  \
        if ((log).getSeverityFilter() >= (severity))                                                                   \
        {                                                                                                              \
            ::std::ostringstream orvLogStream_;                                                                        \
            orvLogStream_ << message;                                                                                  \
            (log).trace((severity), __FILE__, __LINE__, __FUNCTION__, orvLogStream_.str().c_str());                    \
        }                                                                                                              \
    } while (false)

/// Logs a streamed message on the core log, if it exists.
#define orvLogCore(severity, message)                                                                                  \
    do                                                                                                                 \
    {                                                                                                                  \
        if (::orv::isCoreLogValid())                                                                                   \
        {                                                                                                              \
            orvLog(::orv::getCoreLog(), (severity), message);                                                          \
        }                                                                                                              \
    } while (false)
