#include "platform/windows/host/user_defaults.h"

#include "platform/host/language_tag.h"
#include "platform/windows/kernel/utf8.h"

#include <windows.h>

#include <knownfolders.h>
#include <objbase.h>
#include <shlobj.h>

namespace cardsong::host {
namespace {

constexpr std::uint16_t kEnglish = 0x0409;

std::string KnownFolder(const KNOWNFOLDERID& id)
{
    PWSTR path = nullptr;
    std::string folder;
    if (SUCCEEDED(SHGetKnownFolderPath(id, KF_FLAG_DONT_VERIFY, nullptr, &path)))
        folder = kernel::Utf8FromUtf16(path);
    CoTaskMemFree(path);
    return folder;
}

std::uint16_t LanguageOfDesktop()
{
    wchar_t name[LOCALE_NAME_MAX_LENGTH] = {};
    LCIDToLocaleName(MAKELCID(GetUserDefaultUILanguage(), SORT_DEFAULT), name, LOCALE_NAME_MAX_LENGTH, 0);
    const std::uint16_t language = LanguageFromTag(kernel::Utf8FromUtf16(name));
    return language != 0 ? language : kEnglish;
}

} // namespace

Options UserDefaults()
{
    Options options;
    options.deviceDirectory = KnownFolder(FOLDERID_LocalAppData) + "\\Cardsong";
    options.cardDirectory = KnownFolder(FOLDERID_Music);
    options.language = LanguageOfDesktop();
    return options;
}

} // namespace cardsong::host
