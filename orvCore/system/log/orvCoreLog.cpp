// orvCore/system/log/orvCoreLog.cpp
#include "system/log/orvCoreLog.h"

#include "system/log/orvConsoleLogOutputter.h"

namespace orv
{

namespace
{

Log* s_coreLog = nullptr;
ConsoleLogOutputter* s_coreConsoleOutputter = nullptr;

} // namespace

void allocateCoreLog()
{
    s_coreLog = new Log();
    s_coreConsoleOutputter = new ConsoleLogOutputter(LogSeverity::LOG_DEBUG, s_coreLog);
}

void deallocateCoreLog()
{
    // The outputter goes first: it detaches itself from the log.
    delete s_coreConsoleOutputter;
    s_coreConsoleOutputter = nullptr;
    Log* log = s_coreLog;
    s_coreLog = nullptr;
    delete log;
}

Log& getCoreLog()
{
    return *s_coreLog;
}

bool isCoreLogValid()
{
    return s_coreLog != nullptr;
}

} // namespace orv
