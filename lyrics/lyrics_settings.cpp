#include "lyrics/lyrics_settings.h"

#include "common/registry_key.h"
#include "lyrics/lyrics_folder.h"
#include "lyrics/settings_texts.h"

#include <algorithm>
#include <vector>

namespace {

constexpr const WCHAR* kKey = TEXT("SOFTWARE\\Microsoft\\LyricsSetting");
constexpr const WCHAR* kFolder = TEXT("Lyrics Path");
constexpr const WCHAR* kPlayColor = TEXT("Play Color");
constexpr const WCHAR* kNextColor = TEXT("Next Color");
constexpr const WCHAR* kBackgroundColor = TEXT("Lyrics Back Ground Color");
constexpr const WCHAR* kRect = TEXT("Lyrics Rect");
constexpr const WCHAR* kTransparent = TEXT("Lyrics Transparent");
constexpr const WCHAR* kUtf8 = TEXT("Lyrics UTF-8");

constexpr std::size_t kPathTextUnits = 260;
constexpr std::size_t kShortTextUnits = 30;

UniqueKey OpenKey()
{
    return OpenOrCreateKey(kKey);
}

void WriteText(const UniqueKey& key, const WCHAR* name, const WString& text)
{
    const auto sizeBytes = static_cast<DWORD>((text.size() + 1) * sizeof(WCHAR));
    if (key)
        RegSetValueExW(key.Get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()), sizeBytes);
}

void WriteNumber(const UniqueKey& key, const WCHAR* name, DWORD number)
{
    if (key)
        RegSetValueExW(key.Get(), name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number);
}

WString ReadText(const UniqueKey& key, const WCHAR* name, const WString& fallback, std::size_t mostUnits)
{
    std::vector<WCHAR> text(mostUnits + 1); // with a zero behind what fits
    std::ranges::copy(WStringView(fallback).substr(0, mostUnits - 1), text.begin());
    auto sizeBytes = static_cast<DWORD>(mostUnits * sizeof(WCHAR));
    if (key && RegQueryValueExW(key.Get(), name, nullptr, nullptr, reinterpret_cast<LPBYTE>(text.data()), &sizeBytes) ==
                   ERROR_SUCCESS)
        return text.data();
    WriteText(key, name, fallback);
    return fallback;
}

// False, and `number` stays, when the value cannot be read.
bool ReadNumber(const UniqueKey& key, const WCHAR* name, DWORD& number)
{
    DWORD read = number;
    DWORD sizeBytes = sizeof read;
    if (!key || RegQueryValueExW(key.Get(), name, nullptr, nullptr, reinterpret_cast<LPBYTE>(&read), &sizeBytes) !=
                    ERROR_SUCCESS)
        return false;
    number = read;
    return true;
}

COLORREF ReadColor(const UniqueKey& key, const WCHAR* name, COLORREF fallback)
{
    return ParseColor(ReadText(key, name, ColorText(fallback), kShortTextUnits));
}

} // namespace

LyricsSettings LoadLyricsSettings()
{
    const UniqueKey key = OpenKey();
    LyricsSettings settings;
    settings.folder = ReadText(key, kFolder, DefaultLyricsFolder(), kPathTextUnits);
    settings.playColor = ReadColor(key, kPlayColor, RGB(0, 0, 0));
    settings.nextColor = ReadColor(key, kNextColor, RGB(255, 0, 0));
    settings.backgroundColor = ReadColor(key, kBackgroundColor, RGB(0, 0, 255));
    settings.isTransparent = 1;
    if (!ReadNumber(key, kTransparent, settings.isTransparent))
        WriteNumber(key, kTransparent, settings.isTransparent);
    DWORD detectsUtf8 = 0;
    settings.detectsUtf8 = ReadNumber(key, kUtf8, detectsUtf8) && detectsUtf8 != 0;
    return settings;
}

RECT LoadLyricsRect()
{
    return ParseRect(ReadText(OpenKey(), kRect, TEXT("RECT(30, 3, 210, 23)"), kShortTextUnits));
}

void SaveLyricsSettings(const LyricsSettings& settings, const RECT& strip)
{
    SaveLyricsFolder(settings.folder);
    SaveLyricsColors(settings.playColor, settings.nextColor, settings.backgroundColor, settings.isTransparent);
    SaveLyricsRect(strip);
}

void SaveLyricsColors(COLORREF playColor, COLORREF nextColor, COLORREF backgroundColor, DWORD isTransparent)
{
    const UniqueKey key = OpenKey();
    WriteText(key, kPlayColor, ColorText(playColor));
    WriteText(key, kNextColor, ColorText(nextColor));
    WriteText(key, kBackgroundColor, ColorText(backgroundColor));
    WriteNumber(key, kTransparent, isTransparent);
}

void SaveLyricsRect(const RECT& strip)
{
    WriteText(OpenKey(), kRect, RectText(strip));
}

void SaveLyricsFolder(const WString& folder)
{
    WriteText(OpenKey(), kFolder, folder);
}
