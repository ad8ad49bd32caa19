#include "library/song_list_rows.h"

#include "library/decimal_text.h"
#include "library/play_time_text.h"
#include "library/song_list.h"

#include <algorithm>
#include <vector>

namespace {

constexpr std::int32_t kMostRows = 10'526'880;
static_assert(sizeof(SongListRow) == 408);

std::vector<SongListRow> g_playListRows;
std::vector<SongListRow> g_cardSongRows;

void CopyCut(WStringView text, WCHAR (&out)[kSkinListTextUnits])
{
    const std::size_t units = std::min(text.size(), kSkinListTextUnits - 1);
    std::copy_n(text.data(), units, out);
    out[units] = 0;
}

void FillRow(SongListRow& row, std::int32_t number, const MediaFileEntry& entry, std::int32_t state)
{
    CopyCut(DecimalText(number) + TEXT(' ') + entry.fileName, row.mainText);
    CopyCut(FormatPlayTime(WholeSeconds(entry.duration)), row.secondaryText);
    row.firstCheckState = state;
}

} // namespace

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
