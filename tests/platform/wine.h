// Whether a test runs under Wine, which differs from Windows in places. Natively it does not.
#pragma once

#include "platform/ce.h"

namespace cardsong::test {

inline bool IsWine()
{
#ifdef _WIN32
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
#else
    return false;
#endif
}

} // namespace cardsong::test
