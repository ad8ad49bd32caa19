// The rows of a skinned list: where its items come from, which page is shown, what is selected. Knows no window.
#pragma once

#include "common/skin_list_item.h"
#include "gui/skin_list_geometry.h"
#include "gui/text_swing.h"

#include <span>

// Items that are made when they are shown.
class SkinListSource {
public:
    virtual ~SkinListSource() = default;
    // Null: no such item. Borrowed until the next call.
    virtual const SkinListItem* ItemAt(std::int32_t index) = 0;

    std::int32_t itemCount = 0; // no item at or beyond it is asked for
};

constexpr std::int32_t kNoSelection = -1;

class SkinListModel {
public:
    // The caller's array, borrowed; it wins over a source. A row beyond its end shows nothing.
    void SetItems(std::span<const SkinListItem> items) { m_items = items; }
    void SetSource(SkinListSource* source) { m_source = source; } // borrowed; null: none
    void SetMode(SkinListMode mode) { m_mode = mode; }
    SkinListMode Mode() const { return m_mode; }

    // Below zero: none. Steps back to the last page when there are fewer pages now, which clears the row selection. An
    // item that is gone is not selected any more.
    void SetItemCount(std::int32_t count);
    std::int32_t ItemCount() const { return m_itemCount; }
    std::int32_t PageCount() const; // 1 for an empty list
    std::int32_t PageIndex() const { return m_pageIndex; }
    bool IsFirstPage() const { return m_pageIndex == 0; }
    bool IsLastPage() const { return m_pageIndex + 1 >= PageCount(); }
    // Turn the page where there is another. This clears the row selection; the selected item stays.
    bool PageUp();
    bool PageDown();
    // To the page of that item; no such item leaves the page.
    void TurnToPageOf(std::int32_t item);
    // First page, nothing selected.
    void Rewind();

    // The item that the row of the page stands for; none beyond the last one. `row`: 0 to 3.
    std::optional<std::int32_t> ItemOfRow(int row) const;
    // Its record; null when there is none. Borrowed until the next call.
    const SkinListItem* RecordOfRow(int row) const;
    // Selects the row and its item, whose text begins at its beginning. False, and nothing changes, when it holds none.
    bool Select(int row);
    // Selects the item, and its row if it is on the page; no such item: nothing is selected.
    void SelectItem(std::int32_t item);
    int SelectedRow() const { return m_selectedRow; }            // on this page, or kNoSelection
    std::int32_t SelectedItem() const { return m_selectedItem; } // or kNoSelection

    // Lets the main text of the selected row swing by a step if its box is too small for it. Returns whether it moved.
    bool SwingText(const std::function<int(WStringView)>& widthPx);
    // The row's main text from where it is seen.
    WStringView ShownText(int row, const SkinListItem& item) const;

private:
    bool HasItem(std::int32_t item) const { return item >= 0 && item < m_itemCount; }
    void ClearRow();

    std::span<const SkinListItem> m_items;
    SkinListSource* m_source = nullptr;
    SkinListMode m_mode = SkinListMode::None;
    std::int32_t m_itemCount = 0;
    std::int32_t m_pageIndex = 0;
    int m_selectedRow = kNoSelection;
    std::int32_t m_selectedItem = kNoSelection;
    TextSwing m_swing;
};

// The text of a field of a record, which need not end with a zero.
WStringView SkinListTextOf(const WCHAR (&field)[kSkinListTextUnits]);
