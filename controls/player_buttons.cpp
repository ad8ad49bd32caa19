#include "controls/player_buttons.h"

#include "common/string_table.h"

#include <cstddef>
#include <span>

namespace {

struct ButtonRow {
    UINT id;
    int xPx;
    int widthPx;
    ButtonImageSet images;
};

constexpr int kRowTopPx = 159;
constexpr int kRowHeightPx = 49;
constexpr UINT kNoButton = 0;
// Neither text nor string: the transport buttons show their images only.
constexpr ButtonCaption kNoCaption = { nullptr, 0, 20, 0x208FFF };

#define MUSIC_IMAGE(name) TEXT("\\Windows\\gui_musicplayer_") TEXT(name) TEXT(".gif")
#define VIDEO_IMAGE(name) TEXT("\\Windows\\gui_videoplayer_") TEXT(name) TEXT(".gif")
#define MUSIC_IMAGES(normal, button)                                                                                   \
    {                                                                                                                  \
        MUSIC_IMAGE(normal), MUSIC_IMAGE(button "_but_down"), nullptr, MUSIC_IMAGE(button "_but_disable")              \
    }
#define VIDEO_IMAGES(button)                                                                                           \
    {                                                                                                                  \
        VIDEO_IMAGE(button "_but_normal"), VIDEO_IMAGE(button "_but_down"), nullptr, VIDEO_IMAGE(button "_but_normal") \
    }

constexpr ButtonRow kMusicRows[] = {
    { kCommandPrevious, 0, 66, MUSIC_IMAGES("back_but_normal", "back") },
    { kNoButton, 0, 0, {} }, // where a video player has its step back
    { kCommandPlay, 113, 47, MUSIC_IMAGES("play_but_normal", "play") },
    { kCommandPause, 113, 47, MUSIC_IMAGES("pause_but_normal", "pause") },
    { kCommandStop, 66, 47, MUSIC_IMAGES("stop_but_normal", "stop") },
    { kNoButton, 0, 0, {} }, // and its step forward
    { kCommandNext, 160, 47, MUSIC_IMAGES("next_but_normal", "next") },
    { kCommandShuffleOff, 254, 66, MUSIC_IMAGES("shuffle_but_normal", "shuffle") },
    { kCommandShuffleOn, 254, 66, MUSIC_IMAGES("shuffle_but_on", "shuffle") },
    { kCommandRepeatOff, 207, 47, MUSIC_IMAGES("repeat_but_normal", "repeat") },
    { kCommandRepeatAll, 207, 47, MUSIC_IMAGES("repeat_but_on", "repeat") },
    { kCommandRepeatSingle,
      207,
      47,
      { MUSIC_IMAGE("repeat_single_but_on"), MUSIC_IMAGE("repeat_single_but_down"), nullptr,
        MUSIC_IMAGE("repeat_but_disable") } },
};

// The two steps have no place on the screen; their buttons exist, but cover nothing.
constexpr ButtonRow kVideoRows[] = {
    { kCommandPrevious, 0, 66, VIDEO_IMAGES("back") }, { kCommandBack5, 0, 0, VIDEO_IMAGES("reverse") },
    { kCommandPlay, 113, 47, VIDEO_IMAGES("play") },   { kCommandPause, 113, 47, VIDEO_IMAGES("pause") },
    { kCommandStop, 66, 47, VIDEO_IMAGES("stop") },    { kCommandForward5, 0, 0, VIDEO_IMAGES("forward") },
    { kCommandNext, 160, 47, VIDEO_IMAGES("next") },
};

#undef VIDEO_IMAGES
#undef MUSIC_IMAGES
#undef VIDEO_IMAGE
#undef MUSIC_IMAGE

RECT PlaceOf(const ButtonRow& row)
{
    if (row.widthPx == 0)
        return { 0, 0, 0, 0 };
    return { row.xPx, kRowTopPx, row.xPx + row.widthPx, kRowTopPx + kRowHeightPx };
}

std::span<const ButtonRow> RowsOf(PlayerButtonKind kind)
{
    return kind == PlayerButtonKind::Music ? std::span<const ButtonRow>(kMusicRows)
                                           : std::span<const ButtonRow>(kVideoRows);
}

} // namespace

void CreatePlayerButtons(PlayerButtonSet& set, HWND owner, PlayerButtonKind kind)
{
    const auto rows = RowsOf(kind);
    set.m_kind = kind;
    set.MakePlaces(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].id != kNoButton)
            set.Buttons()[i].Create(owner, g_hStringModule, rows[i].id, PlaceOf(rows[i]), &kNoCaption, &rows[i].images);
    }
}
