#include "gui/skin_list_model.h"

#include <algorithm>

void SkinListModel::SetItemCount(std::int32_t count)
{
    m_itemCount = std::max(count, 0);
    if (m_pageIndex >= PageCount()) {
        m_pageIndex = PageCount() - 1;
        ClearRow();
    }
    if (m_selectedItem >= m_itemCount) {
        m_selectedItem = kNoSelection;
        ClearRow();
    }
}

std::int32_t SkinListModel::PageCount() const
{
    const std::int32_t full = m_itemCount / kSkinListRows;
    return std::max(1, m_itemCount % kSkinListRows == 0 ? full : full + 1);
}

bool SkinListModel::PageUp()
{
    if (IsFirstPage())
        return false;
    --m_pageIndex;
    ClearRow();
    return true;
}

bool SkinListModel::PageDown()
{
    if (IsLastPage())
        return false;
    ++m_pageIndex;
    ClearRow();
    return true;
}

void SkinListModel::TurnToPageOf(std::int32_t item)
{
    if (!HasItem(item) || item / kSkinListRows == m_pageIndex)
        return;
    m_pageIndex = item / kSkinListRows;
    ClearRow();
}

void SkinListModel::Rewind()
{
    m_pageIndex = 0;
    m_selectedItem = kNoSelection;
    ClearRow();
}

void SkinListModel::ClearRow()
{
    m_selectedRow = kNoSelection;
    m_swing.Reset();
}

std::optional<std::int32_t> SkinListModel::ItemOfRow(int row) const
{
    const std::int32_t index = m_pageIndex * kSkinListRows + row; // fits: a page begins before the count ends
    if (index >= m_itemCount)
        return std::nullopt;
    return index;
}

const SkinListItem* SkinListModel::RecordOfRow(int row) const
{
    const auto index = ItemOfRow(row);
    if (!index)
        return nullptr;
    if (!m_items.empty())
        return static_cast<std::size_t>(*index) < m_items.size() ? &m_items[static_cast<std::size_t>(*index)] : nullptr;
    return m_source != nullptr && *index < m_source->itemCount ? m_source->ItemAt(*index) : nullptr;
}

bool SkinListModel::Select(int row)
{
    const auto index = ItemOfRow(row);
    if (!index)
        return false;
    m_selectedRow = row;
    m_selectedItem = *index;
    m_swing.Reset();
    return true;
}

void SkinListModel::SelectItem(std::int32_t item)
{
    const bool isOnPage = HasItem(item) && item / kSkinListRows == m_pageIndex;
    const int row = isOnPage ? item % kSkinListRows : kNoSelection;
    if (row != m_selectedRow || item != m_selectedItem)
        ClearRow(); // a text that swings begins anew only for another item
    m_selectedItem = HasItem(item) ? item : kNoSelection;
    m_selectedRow = row;
}

bool SkinListModel::SwingText(const std::function<int(WStringView)>& widthPx)
{
    if (m_selectedRow == kNoSelection || m_mode == SkinListMode::Text)
        return false;
    const SkinListItem* item = RecordOfRow(m_selectedRow);
    return item != nullptr && m_swing.Step(SkinListTextOf(item->mainText), kSkinListTextWidthPx, widthPx);
}

WStringView SkinListModel::ShownText(int row, const SkinListItem& item) const
{
    const WStringView text = SkinListTextOf(item.mainText);
    const bool isSwung = row == m_selectedRow && m_swing.Start() < text.size(); // the owner may have shortened it
    return isSwung ? text.substr(m_swing.Start()) : text;
}

WStringView SkinListTextOf(const WCHAR (&field)[kSkinListTextUnits])
{
    return { field, static_cast<std::size_t>(std::find(field, field + kSkinListTextUnits, 0) - field) };
}
