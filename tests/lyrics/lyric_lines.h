// Lines of lyrics as tests write them down.
#pragma once

#include "lyrics/lyric_list.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cardsong::test {

inline WString Wide(std::string_view ascii)
{
    return WString(ascii.begin(), ascii.end());
}

inline std::string Utf8(WStringView text)
{
    if (text.empty())
        return {};
    std::string bytes(text.size() * 3, '\0');
    bytes.resize(
        static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                                     bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr)));
    return bytes;
}

using Lines = std::vector<std::pair<int, std::string>>;

// Time and UTF-8 text of each line.
inline Lines LinesOf(const ConstLyricList& list)
{
    Lines lines;
    for (std::int32_t i = 0; i < list.Count(); ++i)
        lines.emplace_back(list.At(i).timeMs, Utf8(list.At(i).Text()));
    return lines;
}

// A list that frees its lines.
struct OwnedLyrics {
    ~OwnedLyrics() { LyricList(items).FreeAll(); }

    int Add(std::int32_t timeMs, std::string_view ascii)
    {
        return LyricList(items).Add(timeMs, std::make_shared<const WString>(Wide(ascii)));
    }
    Lines All() const { return LinesOf(ConstLyricList(items)); }

    CPtrListCtrl items;
};

} // namespace cardsong::test
