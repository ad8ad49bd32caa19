#include "common/string_table.h"

#include <cstddef>

HINSTANCE g_hInstance = nullptr;
HMODULE g_hStringModule = nullptr;

namespace {

constexpr int kTextUnits = 512;

} // namespace

HMODULE LoadStringModule()
{
    WCHAR name[MAX_PATH] = {};
    wsprintfW(name, TEXT("%s%04x.dll"), TEXT("TAVO_StringTable_"), static_cast<UINT>(GetUserDefaultUILanguage()));
    return LoadLibraryExW(name, nullptr, LOAD_LIBRARY_AS_DATAFILE);
}

WString ReadString(HMODULE module, UINT id)
{
    WCHAR text[kTextUnits] = {};
    int units = module != nullptr ? LoadStringW(module, id, text, kTextUnits) : 0;
    if (units == 0)
        units = LoadStringW(g_hInstance, id, text, kTextUnits);
    return WString(text, static_cast<std::size_t>(units));
}
