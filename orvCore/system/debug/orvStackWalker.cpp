// orvCore/system/debug/orvStackWalker.cpp
#include "system/debug/orvStackWalker.h"

#include <cstdio>
#include <cstdlib>
#include <execinfo.h>

namespace orv
{

void StackWalker::ShowCallstack()
{
    void* addresses[100];
    const int count = backtrace(addresses, 100);
    fprintf(stderr, "backtrace() returned %d addresses\n", count);
    char** symbols = backtrace_symbols(addresses, count);
    if (symbols == nullptr)
    {
        perror("backtrace_symbols");
        exit(1);
    }
    for (int i = 0; i < count; ++i)
    {
        fprintf(stderr, "%s\n", symbols[i]);
    }
    free(symbols);
}

} // namespace orv
