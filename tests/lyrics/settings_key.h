// The registry values of the lyrics, as another program would see and change them.
#pragma once

#include "tests/lyrics/lyric_lines.h"

#include <cstring>

namespace cardsong::test {

// On a scratch device, whose registry is empty.
class SettingsKey {
public:
    static constexpr int kMissing = -1;

    std::string Text(std::string_view name) const
    {
        WCHAR text[512] = {};
        DWORD sizeBytes = sizeof text - sizeof(WCHAR);
        return Query(name, REG_SZ, text, sizeBytes) ? Utf8(text) : "(missing)";
    }
    int Number(std::string_view name) const
    {
        DWORD number = 0;
        DWORD sizeBytes = sizeof number;
        return Query(name, REG_DWORD, &number, sizeBytes) ? static_cast<int>(number) : kMissing;
    }
    void SetText(std::string_view name, std::string_view ascii) const
    {
        const WString text = Wide(ascii);
        Set(name, REG_SZ, text.c_str(), (text.size() + 1) * sizeof(WCHAR));
    }
    void SetNumber(std::string_view name, DWORD number) const { Set(name, REG_DWORD, &number, sizeof number); }
    void SetBytes(std::string_view name, const std::string& bytes) const
    {
        Set(name, REG_BINARY, bytes.data(), bytes.size());
    }

private:
    static HKEY Open()
    {
        HKEY key = nullptr;
        DWORD disposition = 0;
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, TEXT("SOFTWARE\\Microsoft\\LyricsSetting"), 0, nullptr,
                        REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr, &key, &disposition);
        return key;
    }
    static bool Query(std::string_view name, DWORD wantedType, void* data, DWORD& sizeBytes)
    {
        const HKEY key = Open();
        DWORD type = 0;
        const LSTATUS result =
            RegQueryValueExW(key, Wide(name).c_str(), nullptr, &type, static_cast<BYTE*>(data), &sizeBytes);
        RegCloseKey(key);
        return result == static_cast<LSTATUS>(ERROR_SUCCESS) && type == wantedType;
    }
    static void Set(std::string_view name, DWORD type, const void* data, std::size_t sizeBytes)
    {
        const HKEY key = Open();
        RegSetValueExW(key, Wide(name).c_str(), 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(sizeBytes));
        RegCloseKey(key);
    }
};

} // namespace cardsong::test
