#include "platform/ce.h"
BOOL PlaySoundW(LPCWSTR, HMODULE, DWORD)
{
    return TRUE;
}
