// The UTF-16 code unit of the conversions: the same type as the program's WCHAR on every system, without naming one.
#pragma once

#include <type_traits>

using Utf16Unit = std::conditional_t<sizeof(wchar_t) == 2, wchar_t, char16_t>;
