#include "lyrics/lyrics_title.h"

#include "encoding/big5_gb_text.h"
#include "encoding/code_page.h"
#include "tags/byte_text.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <string_view>

namespace {

constexpr std::string_view kTitleMark = "ti:";
constexpr char kTagEnd = ']';
constexpr std::size_t kMostTitleBytes = 2 * kMostTitleUnits; // of pages with two bytes a unit at most

using Conversion = void (*)(const char* source, char* destination);

// `text`: zero-terminated. The bytes of the title; empty when there is none.
std::string_view FindTitle(const char* text)
{
    const std::string_view whole(text);
    const auto start = FindIgnoringCase(std::as_bytes(std::span(whole)), kTitleMark);
    if (!start)
        return {};
    const std::size_t end = whole.find(kTagEnd, *start);
    return end == std::string_view::npos ? std::string_view() : whole.substr(*start, end - *start);
}

WString Decode(std::string_view title, std::int32_t codePage)
{
    title = title.substr(0, kMostTitleBytes);
    if (title.empty())
        return {};
    WString text(title.size(), 0);
    const int units = MultiByteToWideChar(static_cast<UINT>(codePage), 0, title.data(), static_cast<int>(title.size()),
                                          text.data(), static_cast<int>(text.size()));
    text.resize(std::min(static_cast<std::size_t>(units), kMostTitleUnits));
    return text;
}

// The title as it is, or of all the bytes converted.
WString TitleIn(std::int32_t codePage, const LyricsBytes& bytes, Conversion conversion)
{
    if (conversion == nullptr)
        return Decode(FindTitle(bytes.data()), codePage);
    LyricsBytes converted(std::strlen(bytes.data()) + 1);
    conversion(bytes.data(), converted.data());
    return Decode(FindTitle(converted.data()), codePage);
}

} // namespace

LyricsTitle::LyricsTitle(const LyricsBytes& bytes) : m_bytes(bytes), m_codePage(GetCodePage(bytes.data())) {}

WString LyricsTitle::Traditional() const
{
    return TitleIn(kCodePageBig5, m_bytes, m_codePage == kCodePageGb2312 ? GbToBig5 : nullptr);
}

WString LyricsTitle::Simplified() const
{
    return TitleIn(kCodePageGb2312, m_bytes, m_codePage == kCodePageBig5 ? Big5ToGb : nullptr);
}
