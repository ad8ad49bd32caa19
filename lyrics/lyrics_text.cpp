#include "lyrics/lyrics_text.h"

#include "encoding/big5_gb_text.h"
#include "encoding/code_page.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

std::string_view TextOf(const LyricsBytes& bytes)
{
    return bytes.data();
}

bool IsUtf8BeyondAscii(std::string_view text)
{
    const bool isAscii = std::ranges::all_of(text, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
    return !isAscii && MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), static_cast<int>(text.size()),
                                           nullptr, 0) > 0;
}

WString Utf16Of(const LyricsBytes& bytes)
{
    WString text(bytes.size() / sizeof(WCHAR), 0);
    std::memcpy(text.data(), bytes.data(), text.size() * sizeof(WCHAR));
    text.resize(std::min(text.find(WCHAR{ 0 }), text.size()));
    return text;
}

} // namespace

std::int32_t LyricsCodePage(const LyricsBytes& bytes, std::int32_t codePage, LANGID uiLanguage, Utf8Detection utf8)
{
    if (utf8 == Utf8Detection::On && IsUtf8BeyondAscii(TextOf(bytes)))
        return CP_UTF8;
    if (uiLanguage == kLanguageTaiwan)
        return kCodePageBig5;
    if (uiLanguage == kLanguagePrc)
        return kCodePageGb2312;
    return codePage == kDetectCodePage ? GetCodePage(bytes.data()) : codePage;
}

WString DecodeLyrics(const LyricsBytes& bytes, std::int32_t codePage, LANGID uiLanguage, Utf8Detection utf8)
{
    if (codePage == kAlreadyUtf16)
        return Utf16Of(bytes);
    const auto page = static_cast<UINT>(LyricsCodePage(bytes, codePage, uiLanguage, utf8));
    std::string_view source = TextOf(bytes);
    if (utf8 == Utf8Detection::On && page == CP_UTF8 && source.starts_with(kUtf8Mark))
        source.remove_prefix(kUtf8Mark.size());
    WString text(bytes.size(), 0); // no page has more units than bytes
    const int units =
        MultiByteToWideChar(page, 0, source.data(), -1, text.data(), static_cast<int>(text.size())); // with the zero
    text.resize(units > 0 ? static_cast<std::size_t>(units) - 1 : 0);
    return text;
}

void ConvertToUiScript(char* destination, const char* source, LANGID uiLanguage)
{
    if (destination == nullptr || source == nullptr)
        return;
    const std::int32_t codePage = GetCodePage(source);
    if (uiLanguage == kLanguageTaiwan && codePage == kCodePageGb2312)
        GbToBig5(source, destination);
    else if (uiLanguage == kLanguagePrc && codePage == kCodePageBig5)
        Big5ToGb(source, destination);
    else
        std::memmove(destination, source, std::strlen(source) + 1);
}
