// The last error of each thread.
#include "platform/linux/ce/kernel.h"

namespace {
thread_local DWORD t_lastError = ERROR_SUCCESS;
}

DWORD GetLastError()
{
    return t_lastError;
}

void SetLastError(DWORD error)
{
    t_lastError = error;
}
