#include "library/display_texts.h"

#include "encoding/code_page.h"
#include "encoding/gb_unicode_text.h"
#include "library/song_format.h"
#include "library/song_list.h"
#include "tags/mp3_info.h"
#include "tags/wma_info.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace {

constexpr std::int32_t kMostRows = 10'526'880;
static_assert(sizeof(SongListRow) == 408);

std::vector<SongListRow> g_playListRows;
std::vector<SongListRow> g_cardSongRows;

void CopyCut(WStringView text, WCHAR (&out)[kRowTextUnits])
{
    const std::size_t units = std::min(text.size(), kRowTextUnits - 1);
    std::copy_n(text.data(), units, out);
    out[units] = 0;
}

WString Decimal(std::uint32_t number)
{
    const std::string digits = std::to_string(number);
    return WString(digits.begin(), digits.end());
}

void FillRow(SongListRow& row, std::int32_t number, const MediaFileEntry& entry, std::int32_t state)
{
    CopyCut(Decimal(static_cast<std::uint32_t>(number)) + TEXT(' ') + entry.fileName, row.label);
    CopyCut(FormatPlayTime(WholeSeconds(entry)), row.time);
    row.state = state;
}

// The ID3v1 title; empty when its code page cannot be told, which is so for plain ASCII.
WString Mp3Title(const WCHAR* path)
{
    const auto info = Mp3Reader().OpenMp3Info(path, TagFrames::Skip);
    if (!info)
        return {};
    char title[sizeof info->id3v1.title + 1] = {};
    std::copy(std::begin(info->id3v1.title), std::end(info->id3v1.title), title);
    PathBuffer text = {};
    switch (GetCodePage(title)) {
    case kCodePageGb2312: gbToUnicode(title, text); break;
    case kCodePageBig5: MultiByteToWideChar(kCodePageBig5, 0, title, -1, text, static_cast<int>(kPathUnits)); break;
    default: break;
    }
    return text;
}

WString WmaTitle(const WCHAR* path)
{
    const auto info = std::make_unique<WmaInfo>();
    return ReadWmaInfo(path, info.get()) == 0 ? WString(info->title) : WString();
}

WString FileTitle(const WCHAR* path)
{
    PathBuffer name;
    GetFileNameFromPath(path, name);
    StripExtension(name, name);
    return name;
}

} // namespace

const WCHAR* FormatPlayTime(std::uint32_t seconds)
{
    static WCHAR s_text[24];
    const std::uint32_t hours = seconds / 3600;
    const std::uint32_t minutes = seconds % 3600 / 60;
    const std::uint32_t rest = seconds % 60;
    if (seconds == 0)
        wsprintfW(s_text, TEXT("--:--"));
    else if (hours == 0)
        wsprintfW(s_text, TEXT("%d:%02d"), minutes, rest);
    else
        wsprintfW(s_text, TEXT("%d:%02d:%02d"), hours, minutes, rest);
    return s_text;
}

void BuildSongListRows(const CPtrListCtrl& list, bool isCardList)
{
    const ConstSongList songs(list);
    const std::int32_t count = songs.Count();
    if (count == 0)
        return;
    std::vector<SongListRow>& rows = isCardList ? g_cardSongRows : g_playListRows;
    rows = {}; // the old ones first, so that both are never held
    if (count > kMostRows)
        return;
    rows.resize(static_cast<std::size_t>(count));
    for (std::int32_t i = 0; i < count; ++i)
        FillRow(rows[static_cast<std::size_t>(i)], i + 1, songs.At(i),
                isCardList ? kCardSongRowState : kPlayListRowState);
}

std::span<SongListRow> PlayListRows()
{
    return g_playListRows;
}

std::span<SongListRow> CardSongRows()
{
    return g_cardSongRows;
}

SIZE MeasureText(const WCHAR* text, HFONT font)
{
    SIZE size = {};
    if (text == nullptr)
        return size;
    const HDC screen = GetDC(nullptr);
    const HGDIOBJ before = SelectObject(screen, font);
    GetTextExtentExPointW(screen, text, static_cast<int>(WStringView(text).size()), 0, nullptr, nullptr, &size);
    SelectObject(screen, before);
    ReleaseDC(nullptr, screen);
    return size;
}

int GetSongDisplayTitle(const WCHAR* path, WString& title, std::uint32_t number)
{
    WString name;
    if (const std::optional<SongFormat> format = SongFormatOf(path))
        name = *format == SongFormat::Mp3 ? Mp3Title(path) : WmaTitle(path);
    if (name.empty())
        name = FileTitle(path);
    title = (number < 10 ? WString(TEXT("0")) : WString()) + Decimal(number) + TEXT('.') + name;
    return 1;
}
