// The skinned list: a full-screen pop-up of pages of four rows with a title, scroll buttons and soft keys. It tells its
// owner of taps and soft keys, and knows no command's meaning. Used on the thread that made the window.
#pragma once

#include "common/kernel_handles.h"
#include "gui/paint_buffer.h"
#include "gui/skin_list_class.h"
#include "gui/skin_list_draw.h"
#include "gui/skin_list_title.h"
#include "gui/soft_key_bar.h"

#include <optional>
#include <vector>

// Whether a list repaints itself after a change of the page or of the count, or leaves that to its owner.
enum class SkinListRedraw { ByOwner, AtOnce };
enum class SkinListLongText { Cut, Swings }; // of the selected row

class SkinListWnd {
public:
    SkinListWnd();
    // Destroys the window, too.
    ~SkinListWnd();
    SkinListWnd(const SkinListWnd&) = delete;
    SkinListWnd& operator=(const SkinListWnd&) = delete;

    // The list constructed last, until it goes; null otherwise.
    static SkinListWnd* Current() { return s_current; }

    // ---- before Create ----
    void SetDisplayMode(SkinListMode mode) { m_model.SetMode(mode); }
    // As for SoftKeyBar::Create; among `ids` kSoftKeyListScrollId gives the scroll buttons. All are copied but the
    // captions' texts and the paths, which must live until the window is there.
    void SetSoftKeys(int count, std::span<const int> ids, std::span<const ButtonCaption> captions = {},
                     std::span<const ButtonImageSet> imageSets = {});
    void SetLongText(SkinListLongText behaviour) { m_longText = behaviour; }
    // The window that owns the list's window in the owner's place: when the list closes, it is active again. Null: the
    // owner. The owner is told in any case.
    void SetWindowBelow(HWND window) { m_below = window; }

    // Makes and shows the window, on its first page with nothing selected. `title`: 39 units at most are taken; null:
    // none. Null when mode, count or ids of the soft keys were not set or make no bar, when the list has a window, and
    // when the system refuses.
    HWND Create(HWND owner, LPCWSTR title, SkinListRedraw redraw, UINT controlId);

    // ---- items, at any time; see SkinListModel ----
    void SetItems(std::span<const SkinListItem> items) { m_model.SetItems(items); }
    void SetItemSource(SkinListSource* source) { m_model.SetSource(source); }
    // Takes no longer for many items than for few.
    void SetItemCount(std::int32_t count);
    // Selects an item for the owner, who is not told; kNoSelection, or no such item: none. The page stays.
    void SelectItem(std::int32_t index);
    // Turns to the page of an item.
    void ShowItem(std::int32_t index);
    // Shows what the owner has changed in an item, if it is on the page.
    void RepaintItem(std::int32_t index);
    void RepaintAll();

    // ---- title ----
    void SetTitle(LPCWSTR text); // null: none
    void SetTitleString(UINT stringId);
    void ReloadTitle(); // the string again; a title that is no string stays
    // Seen from the next paint of the title on.
    void SetPageIndicator(SkinListPageIndicator indicator) { m_title.SetPageIndicator(indicator); }

    // Reads title and captions again from the strings of the language in force.
    void LanguageChanged();
    // Sends WM_CLOSE to the window, which destroys it; the owner is not told.
    void Close();

    // The item tapped last, or kNoSelection. Turning the page leaves it.
    std::int32_t SelectedIndex() const { return m_model.SelectedItem(); }
    std::int32_t CurrentPage() const { return m_model.PageIndex() + 1; }
    std::int32_t PageCount() const { return m_model.PageCount(); }
    HWND Window() const { return m_window; } // null: none, or no longer
    SoftKeyBar& SoftKeys() { return m_softKeys; }

private:
    struct MessageEntry {
        UINT message;
        LRESULT (SkinListWnd::*handler)(WPARAM, LPARAM);
    };
    static const MessageEntry kMessages[];
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    LRESULT OnCreate(WPARAM, LPARAM);
    LRESULT OnDestroy(WPARAM, LPARAM);
    LRESULT OnPaint(WPARAM, LPARAM);
    LRESULT OnEraseBackground(WPARAM, LPARAM);
    LRESULT OnDrawItem(WPARAM, LPARAM request);
    LRESULT OnKeyDown(WPARAM key, LPARAM);
    LRESULT OnCommand(WPARAM command, LPARAM);
    LRESULT OnTap(WPARAM, LPARAM place);
    LRESULT OnTimer(WPARAM id, LPARAM);
    LRESULT OnStaticColor(WPARAM, LPARAM);
    LRESULT OnClose(WPARAM, LPARAM);

    void PageTurned();
    void EnableScrollButtons();
    HMODULE Strings();
    void Repaint(const RECT& rect, BOOL erase = FALSE);
    void RepaintRow(int row);

    static SkinListWnd* s_current;

    HWND m_window = nullptr;
    HWND m_owner = nullptr;
    HWND m_below = nullptr;
    UniqueModule m_strings; // of the user interface's language
    int m_softKeyCount = 0;
    std::vector<int> m_softKeyIds;
    std::vector<ButtonCaption> m_softKeyCaptions;
    std::vector<ButtonImageSet> m_softKeyImages;
    SkinListTitle m_title;
    SkinListClass m_class;
    SkinListModel m_model;
    SoftKeyBar m_softKeys;
    UINT m_controlId = 0;
    SkinListRedraw m_redraw = SkinListRedraw::ByOwner;
    SkinListLongText m_longText = SkinListLongText::Cut;
    std::optional<SkinListPainter> m_painter; // while there is a window
    std::optional<PaintBuffer> m_buffer;      // from the first paint on
};
