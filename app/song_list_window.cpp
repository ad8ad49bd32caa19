#include "app/song_list_window.h"

#include "app/command_ids.h"
#include "common/string_table.h"

#include <vector>

namespace {

constexpr int kCaptionPoints = 14;
constexpr COLORREF kCaptionColor = RGB(0xFF, 0xFF, 0xFF);

std::vector<ButtonCaption> CaptionsOf(std::span<const int> softKeys)
{
    std::vector<ButtonCaption> captions;
    for (const int command : softKeys)
        captions.push_back({ nullptr, kStringOfCommandZero + command, kCaptionPoints, kCaptionColor });
    return captions;
}

} // namespace

void SongListWindow::Open(HWND owner, HWND below, std::int32_t count)
{
    m_list.reset(); // before the next one takes its place as the current list
    m_list = std::make_unique<SkinListWnd>();
    const std::vector<ButtonCaption> captions = CaptionsOf(m_look.softKeys);
    m_list->SetDisplayMode(SkinListMode::CheckedText);
    m_list->SetLongText(SkinListLongText::Swings);
    m_list->SetPageIndicator(SkinListPageIndicator::Shown);
    m_list->SetSoftKeys(static_cast<int>(m_look.softKeys.size()), m_look.softKeys, captions);
    m_list->SetWindowBelow(below);
    itemCount = count;
    m_list->SetItemSource(this);
    m_list->SetItemCount(count);
    const WString title = ReadString(g_hStringModule, m_look.titleStringId);
    m_list->Create(owner, title.empty() ? m_look.titleWithoutString : title.c_str(), SkinListRedraw::AtOnce,
                   m_look.controlId);
    if (!title.empty())
        m_list->SetTitleString(m_look.titleStringId); // so that it goes with the language
}

void SongListWindow::Close()
{
    if (IsOpen())
        m_list->Close();
}

void SongListWindow::RowsChanged(std::int32_t count)
{
    itemCount = count;
    if (IsOpen())
        m_list->SetItemCount(count);
}

void SongListWindow::RepaintRow(std::int32_t index)
{
    if (IsOpen())
        m_list->RepaintItem(index);
}

void SongListWindow::SelectRow(std::int32_t index)
{
    if (IsOpen())
        m_list->SelectItem(index);
}

void SongListWindow::ShowRow(std::int32_t index)
{
    if (IsOpen())
        m_list->ShowItem(index);
}

const SkinListItem* SongListWindow::ItemAt(std::int32_t index)
{
    const std::span<SongListRow> rows = m_rows();
    return static_cast<std::size_t>(index) < rows.size() ? &rows[static_cast<std::size_t>(index)] : nullptr;
}
