// Random numbers from the system's own generator: nothing to seed, safe on every thread.
#include "platform/linux/ce/kernel.h"

#include <random>
#include <unistd.h>

DWORD Random()
{
    DWORD value = 0;
    if (getentropy(&value, sizeof value) == 0)
        return value;
    return std::random_device{}(); // a kernel that has no entropy call
}
