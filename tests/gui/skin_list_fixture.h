// A skinned list above a parent window, with pictures of plain colours for its skin.
#pragma once

#include "gui/skin_list_window.h"
#include "tests/gui/skin_fixture.h"

#include <algorithm>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

namespace cardsong::test {

constexpr UINT kListId = 50;
constexpr int kListKeys[] = { 16, 29, 33, kSoftKeyListScrollId };
constexpr WPARAM kPageUp = kUpButtonId;
constexpr WPARAM kPageDown = kDownButtonId;
constexpr LPCWSTR kSquares = TEXT("\u25A0\u25A0\u25A0"); // ink in every font

inline SkinListItem ListItem(WStringView main, WStringView secondary = {}, std::int32_t first = 0,
                             std::int32_t second = 0)
{
    SkinListItem item = {};
    std::ranges::copy(main.substr(0, kSkinListTextUnits), item.mainText);
    std::ranges::copy(secondary.substr(0, kSkinListTextUnits), item.secondaryText);
    item.firstCheckState = first;
    item.secondCheckState = second;
    return item;
}

class SkinListTest : public testing::Test {
protected:
    SkinListTest()
    {
        m_ground = m_skin.Add("gui_full_bg2", 320, 240);
        m_unchecked = m_skin.Add("gui_checkbox_uncheck", 20, 20);
        m_checked = m_skin.Add("gui_checkbox_check", 20, 20);
        m_scrollUp = m_skin.Add("gui_listscrollup_normal", 62, 91);
        m_scrollUpDisabled = m_skin.Add("gui_listscrollup_disable", 62, 91);
        m_scrollDown = m_skin.Add("gui_listscrolldown_normal", 62, 91);
        m_scrollDownDisabled = m_skin.Add("gui_listscrolldown_disable", 62, 91);
        m_scrollDownPressed = m_skin.Add("gui_listscrolldown_down", 62, 91);
        m_key = m_skin.Add("gui_3but_normal", 106, 32);
        m_keyPressed = m_skin.Add("gui_3but_down", 106, 32);
        m_barGround = m_skin.Add("gui_softkey_zone_bg", 320, 32);
    }

    // A list of `count` items without text that paints itself, shown and painted.
    HWND Create(std::int32_t count, SkinListMode mode = SkinListMode::CheckedText, LPCWSTR title = TEXT("Songs"))
    {
        m_items.resize(static_cast<std::size_t>(std::max(count, 0)));
        Prepare(m_list, mode);
        m_list.SetItems(m_items);
        m_list.SetItemCount(count);
        const HWND window = m_list.Create(m_owner.Get(), title, SkinListRedraw::AtOnce, kListId);
        ParentWindow::Pump();
        return window;
    }
    static void Prepare(SkinListWnd& list, SkinListMode mode = SkinListMode::CheckedText)
    {
        list.SetDisplayMode(mode);
        list.SetSoftKeys(static_cast<int>(std::size(kListKeys)), kListKeys);
    }
    void Tap(int x, int y) { TapOn(m_list.Window(), x, y); }
    static void TapOn(HWND window, int x, int y) { SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y)); }
    void TapRow(int row) { Tap(100, kSkinListRowRects[static_cast<std::size_t>(row)].top + 20); }
    void Command(WPARAM id) { SendMessageW(m_list.Window(), WM_COMMAND, id, 0); }
    std::uint16_t At(int x, int y) const
    {
        const HDC context = GetDC(m_list.Window());
        const std::uint16_t pixel = Pixel565(context, x, y);
        ReleaseDC(m_list.Window(), context);
        return pixel;
    }
    // Copies the title of the window, as it is on the screen, and nothing else.
    void CopyTitle(const Picture& picture) const
    {
        const HDC context = GetDC(m_list.Window());
        BitBlt(picture.Context(), 0, 0, 300, 26, context, 0, 0, SRCCOPY);
        ReleaseDC(m_list.Window(), context);
    }
    // Its pixels that are not the ground's.
    int TitleInk() const
    {
        const Picture picture;
        CopyTitle(picture);
        return 300 * 26 - picture.Count(m_ground, { 0, 0, 300, 26 });
    }
    // What waits to be painted, all validated; empty when nothing does.
    RECT TakeUpdate() const
    {
        RECT update = {};
        GetUpdateRect(m_list.Window(), &update, FALSE);
        ValidateRect(m_list.Window(), nullptr);
        return update;
    }
    bool IsEnabled(int id) const { return IsWindowEnabled(GetDlgItem(m_list.Window(), id)) != FALSE; }
    static std::uint16_t Highlight()
    {
        const Picture picture;
        const RECT dot = { 0, 0, 1, 1 };
        FillRect(picture.Context(), &dot, GetSysColorBrush(COLOR_HIGHLIGHT));
        return picture.At(0, 0);
    }

    SkinDevice m_skin;
    ParentWindow m_owner;
    std::vector<SkinListItem> m_items;
    SkinListWnd m_list;
    std::uint16_t m_ground, m_unchecked, m_checked, m_scrollUp, m_scrollUpDisabled, m_scrollDown, m_scrollDownDisabled,
        m_scrollDownPressed, m_key, m_keyPressed, m_barGround;
};

} // namespace cardsong::test
