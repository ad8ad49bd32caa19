// One of the two windows that show a list of songs: a skinned list above the main window, which hears of its soft keys
// and taps. Knows no command's meaning. Used on the main window's thread.
#pragma once

#include "gui/skin_list_window.h"
#include "library/song_list_rows.h"

#include <memory>
#include <span>

struct SongListLook {
    UINT controlId;
    UINT titleStringId;
    LPCWSTR titleWithoutString;    // where the language has no such string
    std::span<const int> softKeys; // from the left; each that is a command has the caption string of its command
};

class SongListWindow : private SkinListSource {
public:
    // `look`: borrowed for ever. `rows`: tells the rows that are shown, however often they are built anew.
    SongListWindow(const SongListLook& look, std::span<SongListRow> (*rows)()) : m_look(look), m_rows(rows) {}

    // Opens the window with `count` rows; one that is open closes first. `below`: the list window that shows again when
    // this one closes; null: none.
    void Open(HWND owner, HWND below, std::int32_t count);
    // Harmless when it is closed; the user may have closed it without a word.
    void Close();
    // Closes it and frees all.
    void Free() { m_list.reset(); }
    bool IsOpen() const { return Window() != nullptr; }
    HWND Window() const { return m_list ? m_list->Window() : nullptr; } // null: closed

    // For the rest: a window that is closed takes no notice.
    // The rows are others now, `count` of them.
    void RowsChanged(std::int32_t count);
    void RepaintRow(std::int32_t index);
    // See SkinListWnd.
    void SelectRow(std::int32_t index);
    void ShowRow(std::int32_t index);

private:
    const SkinListItem* ItemAt(std::int32_t index) override;

    const SongListLook& m_look;
    std::span<SongListRow> (*m_rows)();
    std::unique_ptr<SkinListWnd> m_list; // from the first opening on
};
