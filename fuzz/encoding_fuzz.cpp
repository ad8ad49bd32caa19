// Any bytes as 8-bit text of a song: its code page is guessed and it is converted, here and by the platform.
#include "encoding/code_page.h"
#include "encoding/gb_text.h"
#include "platform/ce.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace {

// A unit for each byte of the text and none behind them, so that one too many is noticed.
void ConvertFromGb2312(const std::vector<char>& text)
{
    std::vector<Utf16Unit> units(text.size() - 1);
    gbToUnicode(text.data(), units.data());
}

void ConvertByThePlatform(UINT codePage, const std::vector<char>& text)
{
    const int count = MultiByteToWideChar(codePage, 0, text.data(), -1, nullptr, 0);
    if (count < 1)
        std::abort();
    std::vector<WCHAR> units(static_cast<std::size_t>(count));
    if (MultiByteToWideChar(codePage, 0, text.data(), -1, units.data(), count) != count || units.back() != 0)
        std::abort();
    const int byteCount = WideCharToMultiByte(codePage, 0, units.data(), -1, nullptr, 0, nullptr, nullptr);
    if (byteCount < 1)
        std::abort();
    std::vector<char> bytes(static_cast<std::size_t>(byteCount));
    if (WideCharToMultiByte(codePage, 0, units.data(), -1, bytes.data(), byteCount, nullptr, nullptr) != byteCount)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    std::vector<char> text(data, std::find(data, data + size, 0)); // its own size, and a zero
    text.push_back('\0');
    const auto guess = GetCodePage(text.data());
    if (guess != kNoCodePage && guess != kCodePageGb2312 && guess != kCodePageBig5)
        std::abort();
    ConvertFromGb2312(text);
    for (const UINT codePage : { 936U, 950U, 1252U, UINT{ CP_UTF8 } })
        ConvertByThePlatform(codePage, text);
    return 0;
}
