// orvCore/system/log/orvLogSeverity.h
#pragma once

namespace orv
{

/// How severe a log event is; a lower number is more severe.
struct LogSeverity
{
    enum Value
    {
        LOG_CRITICAL = 0,
        LOG_ERROR = 1,
        LOG_WARNING = 2,
        LOG_INFO = 3,
        LOG_DEBUG = 4,
        END = 5
    };
};

} // namespace orv
