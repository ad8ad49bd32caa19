#include "library/tag_text.h"

#include "encoding/code_page.h"

#include <algorithm>
#include <string>

namespace {

// The text encodings that the first byte of an ID3v2 text frame names.
enum : unsigned { kTextOfOldTags = 0, kUtf16WithMark = 1, kUtf16BigEndian = 2, kUtf8 = 3 };

enum class ByteOrder { LittleEndian, BigEndian };

using Bytes = std::span<const std::byte>;

WString Decode(UINT codePage, const std::string& text)
{
    WString wide(text.size(), 0); // no code page makes more units than it has bytes
    const int units = MultiByteToWideChar(codePage, 0, text.data(), static_cast<int>(text.size()), wide.data(),
                                          static_cast<int>(wide.size()));
    wide.resize(static_cast<std::size_t>(std::max(units, 0)));
    return wide;
}

std::string TextUpToZero(Bytes bytes)
{
    std::string text;
    for (const std::byte byte : bytes) {
        if (byte == std::byte{ 0 })
            break;
        text += static_cast<char>(byte);
    }
    return text;
}

WString DecodeUtf16(Bytes bytes, ByteOrder order)
{
    WString text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto first = std::to_integer<unsigned>(bytes[i]);
        const auto second = std::to_integer<unsigned>(bytes[i + 1]);
        const auto unit = static_cast<WCHAR>(order == ByteOrder::BigEndian ? first << 8 | second : second << 8 | first);
        if (unit == 0)
            break;
        if (unit != 0xFEFF || !text.empty())
            text += unit;
    }
    return text;
}

// Text without a mark counts as little-endian.
ByteOrder ByteOrderOfMark(Bytes text)
{
    return !text.empty() && text[0] == std::byte{ 0xFE } ? ByteOrder::BigEndian : ByteOrder::LittleEndian;
}

} // namespace

WString DecodeTextWithoutCodePage(std::span<const std::byte> bytes)
{
    const std::string text = TextUpToZero(bytes);
    const std::int32_t codePage = GetCodePage(text.c_str());
    if (codePage != kNoCodePage)
        return Decode(static_cast<UINT>(codePage), text);
    WString wide; // the bytes of Latin-1 are the first characters of UTF-16
    for (const char c : text)
        wide += static_cast<unsigned char>(c);
    return wide;
}

WString DecodeTextFrame(Bytes frame)
{
    if (frame.empty())
        return {};
    const Bytes text = frame.subspan(1);
    switch (std::to_integer<unsigned>(frame[0])) {
    case kTextOfOldTags: return DecodeTextWithoutCodePage(text);
    case kUtf16WithMark: return DecodeUtf16(text, ByteOrderOfMark(text));
    case kUtf16BigEndian: return DecodeUtf16(text, ByteOrder::BigEndian);
    case kUtf8: return Decode(CP_UTF8, TextUpToZero(text));
    default: return {};
    }
}
