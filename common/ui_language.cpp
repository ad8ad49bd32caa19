#include "common/ui_language.h"

#include "common/file_stream.h"
#include "common/registry_key.h"

#include <bit>
#include <optional>

void (*g_chooseUiFont)(LANGID language) = nullptr;

namespace {

constexpr LPCWSTR kFile = TEXT("PocketStoreII\\TAVO\\Language\\Language.dat");
constexpr LPCWSTR kKey = TEXT("TAVO\\Language");
constexpr DWORD kDefaultLanguage = 1028;

// As it stands in the file.
struct Languages {
    DWORD text;
    DWORD audio;
};
static_assert(sizeof(Languages) == 8 && std::endian::native == std::endian::little);

std::optional<Languages> ReadLanguageFile()
{
    const UniqueFileStream file = OpenForReading(kFile);
    Languages languages;
    if (!file || std::fread(&languages, sizeof languages, 1, file.Get()) != 1)
        return std::nullopt;
    return languages;
}

void WriteNumber(const UniqueKey& key, LPCWSTR name, DWORD number)
{
    if (key)
        RegSetValueExW(key.Get(), name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number);
}

void TakeOver(const Languages& languages)
{
    SetUserDefaultUILanguage(LOWORD(languages.text));
    const UniqueKey key = OpenOrCreateKey(kKey);
    WriteNumber(key, TEXT("Text"), languages.text);
    WriteNumber(key, TEXT("Audio"), languages.audio);
}

} // namespace

void SyncUiLanguageFromFile()
{
    if (!OpenExistingKey(kKey)) {
        const auto languages = ReadLanguageFile();
        if (!languages)
            return;
        TakeOver(*languages);
    }
    if (g_chooseUiFont != nullptr)
        g_chooseUiFont(GetUserDefaultUILanguage());
}

int EnsureLanguageFile()
{
    if (OpenForReading(kFile))
        return 1;
    TakeOver({ kDefaultLanguage, kDefaultLanguage });
    return 0;
}
