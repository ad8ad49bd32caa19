#include "library/song_title.h"

#include "encoding/code_page.h"
#include "encoding/gb_unicode_text.h"
#include "library/decimal_text.h"
#include "library/file_names.h"
#include "library/song_format.h"
#include "tags/mp3_info.h"
#include "tags/wma_info.h"

#include <algorithm>
#include <memory>

namespace {

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

int GetSongDisplayTitle(const WCHAR* path, WString& title, std::uint32_t number)
{
    WString name;
    if (const std::optional<SongFormat> format = SongFormatOf(path))
        name = *format == SongFormat::Mp3 ? Mp3Title(path) : WmaTitle(path);
    if (name.empty())
        name = FileTitle(path);
    title = (number < 10 ? WString(TEXT("0")) : WString()) + DecimalText(number) + TEXT('.') + name;
    return 1;
}
