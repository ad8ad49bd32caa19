// Any bytes as 8-bit text of a song: its code page is guessed and it is converted, here and by the platform. What each
// conversion promises for every text is checked.
#include "encoding/big5_gb_text.h"
#include "encoding/code_page.h"
#include "encoding/gb_unicode_text.h"
#include "platform/ce.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace {

using Text = std::vector<char>; // of its own size, with the terminating zero, so that one byte too far is noticed

void Require(bool isTrue)
{
    if (!isTrue)
        std::abort();
}

// One of three answers, which neither single bytes behind the text nor before it change, nor the text said twice over
// with a pause between.
void GuessCodePage(const Text& text)
{
    const auto guess = GetCodePage(text.data());
    Require(guess == kNoCodePage || guess == kCodePageGb2312 || guess == kCodePageBig5);
    Text longer = { '\n' };
    longer.insert(longer.end(), text.begin(), text.end() - 1);
    longer.insert(longer.end(), { '\n', '\0' });
    Require(GetCodePage(longer.data()) == guess);
    longer.insert(longer.end() - 1, text.begin(), text.end() - 1);
    Require(GetCodePage(longer.data()) == guess);
}

// A unit for each byte or hanzi and none behind them: ASCII, a hanzi of the table, or a widened byte.
void ConvertFromGb2312(const Text& text)
{
    constexpr Utf16Unit kUntouched = 0xD800;
    std::vector<Utf16Unit> units(text.size() - 1, kUntouched);
    gbToUnicode(text.data(), units.data());
    const auto end = std::find(units.begin(), units.end(), kUntouched);
    Require(std::all_of(end, units.end(), [](Utf16Unit unit) { return unit == kUntouched; }));
    std::size_t bytes = 0;
    for (auto at = units.begin(); at != end; ++at) {
        const bool isHanzi = *at >= 0x4E00 && *at <= 0x9FFF;
        Require(isHanzi || *at == static_cast<Utf16Unit>(static_cast<signed char>(text[bytes])));
        bytes += isHanzi ? 2 : 1;
    }
    Require(bytes + 1 == text.size());
}

// As long as the text, zero-terminated, the same in its own place; single bytes and everything behind a line's end are
// what they would be alone.
void ConvertPairs(void (*convert)(const char*, char*), const Text& text)
{
    Text converted(text.size(), '\x7F');
    convert(text.data(), converted.data());
    Require(converted.back() == 0 && std::find(converted.begin(), converted.end(), '\0') == converted.end() - 1);
    Text inPlace = text;
    convert(inPlace.data(), inPlace.data());
    Require(inPlace == converted);
    for (std::size_t i = 0; i < text.size(); ++i) { // bytes below every trail byte stand for themselves
        if (static_cast<unsigned char>(text[i]) < 0x40)
            Require(converted[i] == text[i]);
    }
    const auto lineEnd = std::find(text.begin(), text.end(), '\n');
    if (lineEnd != text.end()) {
        const Text rest(lineEnd + 1, text.end());
        Text alone(rest.size());
        convert(rest.data(), alone.data());
        Require(std::equal(alone.begin(), alone.end(), converted.end() - static_cast<std::ptrdiff_t>(rest.size())));
    }
}

void ConvertByThePlatform(UINT codePage, const Text& text)
{
    const int count = MultiByteToWideChar(codePage, 0, text.data(), -1, nullptr, 0);
    Require(count >= 1);
    std::vector<WCHAR> units(static_cast<std::size_t>(count));
    Require(MultiByteToWideChar(codePage, 0, text.data(), -1, units.data(), count) == count && units.back() == 0);
    const int byteCount = WideCharToMultiByte(codePage, 0, units.data(), -1, nullptr, 0, nullptr, nullptr);
    Require(byteCount >= 1);
    Text bytes(static_cast<std::size_t>(byteCount));
    Require(WideCharToMultiByte(codePage, 0, units.data(), -1, bytes.data(), byteCount, nullptr, nullptr) == byteCount);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    Text text(data, std::find(data, data + size, 0));
    text.push_back('\0');
    GuessCodePage(text);
    ConvertFromGb2312(text);
    ConvertPairs(Big5ToGb, text);
    ConvertPairs(GbToBig5, text);
    for (const UINT codePage : { 936U, 950U, 1252U, UINT{ CP_UTF8 } })
        ConvertByThePlatform(codePage, text);
    return 0;
}
