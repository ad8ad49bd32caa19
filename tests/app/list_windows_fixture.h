// The player with its two list windows, and a user who taps their keys and rows.
#pragma once

#include "app/current_song.h"
#include "common/string_table.h"
#include "gui/skin_list_geometry.h"
#include "library/song_list_rows.h"
#include "tests/app/player_fixture.h"

#include <filesystem>

namespace cardsong::test {

constexpr POINT kPlayListKey{ 160, 224 }; // of the player
// Of the play list, from the left; then of the library; then of both.
constexpr POINT kPlayMarkedKey{ 26, 224 };
constexpr POINT kDropKey{ 79, 224 };
constexpr POINT kSongsKey{ 132, 224 };
constexpr POINT kAllKey{ 185, 224 };
constexpr POINT kClearKey{ 238, 224 };
constexpr POINT kListBackKey{ 291, 224 };
constexpr POINT kCheckAllKey{ 40, 224 };
constexpr POINT kDoneKey{ 120, 224 };
constexpr POINT kScrollUpKey{ 289, 71 };
constexpr POINT kScrollDownKey{ 289, 162 };

// A row, from 0, of the page that is shown.
constexpr POINT RowPlace(int row)
{
    return { 120, 49 + 46 * row };
}

using Texts = std::vector<std::string>;
using Numbers = std::vector<int>;

class ListWindowsTest : public PlayerTest {
protected:
    void SetUp() override
    {
        PlayerTest::SetUp();
        Start();
    }
    void PutOnCard(std::initializer_list<const char*> names)
    {
        for (const char* name : names)
            m_device.WriteFile(std::string("card/") + name, "x");
    }
    void RemoveFromCard(const std::string& name) { std::filesystem::remove(m_device.CardDirectory() + "/" + name); }
    void AddSongs(std::initializer_list<const char*> names)
    {
        for (const char* name : names)
            AddSong(name, 30);
    }
    void OpenPlayList() { Tap(kPlayListKey); }
    void OpenLibrary()
    {
        OpenPlayList();
        Tap(kSongsKey);
    }
    void Send(WORD command)
    {
        SendMessageW(m_window, WM_COMMAND, command, 0);
        Pump();
    }
    void Notify(UINT controlId, LPARAM index)
    {
        SendMessageW(m_window, WM_NOTIFY, controlId, index);
        Pump();
    }

    // The window of a list by its title; null while it is closed.
    static HWND PlayListWindow() { return FindWindowW(TEXT("Play list"), nullptr); }
    static HWND LibraryWindow() { return FindWindowW(TEXT("Songs on the card"), nullptr); }

    static Texts NamesOf(const CPtrListCtrl& list)
    {
        Texts names;
        for (const MediaFileEntry& entry : ConstSongList(list))
            names.push_back(Narrow(entry.fileName));
        return names;
    }
    static Texts LabelsOf(std::span<const SongListRow> rows)
    {
        Texts labels;
        for (const SongListRow& row : rows)
            labels.push_back(Narrow(row.mainText));
        return labels;
    }
    static Numbers Marks()
    {
        Numbers marks;
        for (const MediaFileEntry& entry : ConstSongList(PlayList))
            marks.push_back(entry.playMark);
        return marks;
    }
    // Of the library's entries and of its rows, which agree.
    static Numbers Checks()
    {
        Numbers checks;
        for (const MediaFileEntry& entry : ConstSongList(CardSongList)) {
            EXPECT_EQ(CardSongRows()[checks.size()].firstCheckState, entry.isChecked) << checks.size();
            checks.push_back(entry.isChecked);
        }
        return checks;
    }
    // Which rows of the page are filled as selected ones.
    static Numbers HighlightedRows()
    {
        constexpr std::uint16_t kHighlight = (0x9F >> 3) << 11 | (0xE3 >> 2) << 5 | (0xFA >> 3);
        const Frame frame = Screen();
        Numbers rows;
        for (int row = 0; row < kSkinListRows; ++row) {
            const RECT& place = kSkinListRowRects[static_cast<std::size_t>(row)];
            if (PixelOf(frame, place.left + 2, place.top + 2) == kHighlight)
                rows.push_back(row);
        }
        return rows;
    }
    // What a window shows that is opened only now; it has the marks and the page of the one that is open.
    Frame PlayListOpenedAnew()
    {
        SendMessageW(PlayListWindow(), WM_CLOSE, 0, 0);
        Pump();
        OpenPlayList();
        return Screen();
    }
};

} // namespace cardsong::test
