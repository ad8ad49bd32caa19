#include "gui/skin_list_draw.h"

#include "gui/gif_bitmap.h"
#include "gui/text_line.h"
#include "platform/screen_size.h"

namespace {

constexpr RECT kWholeScreen{ 0, 0, kScreenWidthPx, kScreenHeightPx };
constexpr LPCWSTR kBackgroundPath = TEXT("\\Windows\\gui_full_bg2.gif");
constexpr COLORREF kTitleColor = RGB(0x00, 0xBE, 0xF2);
constexpr COLORREF kSeparatorColor = RGB(0x00, 0xAF, 0xF0);
constexpr COLORREF kTextColor = RGB(0, 0, 0);
constexpr int kTitlePoints = 14;
constexpr int kMainPoints = 14;
constexpr int kSecondaryPoints = 11;
// Titles and songs are no captions: an ampersand is itself.
constexpr UINT kPlacement = DT_VCENTER | DT_NOPREFIX;

} // namespace

SkinListPainter::SkinListPainter()
    : m_background(LoadGifBitmap(kBackgroundPath)), m_checkBoxes(CheckBoxImages::Shared()),
      m_separatorBrush(CreateSolidBrush(kSeparatorColor))
{
}

void SkinListPainter::MakeFonts(HDC context)
{
    if (m_mainFont)
        return;
    m_mainFont = CreatePlainFont(context, kMainPoints);
    m_secondaryFont = CreatePlainFont(context, kSecondaryPoints);
}

int SkinListPainter::MainTextWidth(HDC context, WStringView text)
{
    MakeFonts(context);
    const SelectedObject font(context, m_mainFont.Get());
    RECT size = {};
    MeasureText(context, WString(text).c_str(), size);
    return size.right;
}

void SkinListPainter::Draw(HDC target, const SkinListModel& model, WStringView title)
{
    MakeFonts(target);
    DrawGround(target);
    DrawTextLine(target, title, kSkinListTitleRect, m_titleFont.Get(target, kTitlePoints), kTitleColor,
                 kPlacement | DT_WORD_ELLIPSIS);
    for (const RECT& line : kSkinListSeparators)
        FillRect(target, &line, m_separatorBrush.Get());
    for (int row = 0; row < kSkinListRows; ++row)
        DrawRow(target, model, row);
}

void SkinListPainter::DrawGround(HDC target)
{
    if (m_background.WidthPx() < kScreenWidthPx || m_background.HeightPx() < kScreenHeightPx)
        FillRect(target, &kWholeScreen, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    if (m_background)
        BitBlt(target, 0, 0, m_background.WidthPx(), m_background.HeightPx(), m_background.Context(target), 0, 0,
               SRCCOPY);
}

void SkinListPainter::DrawRow(HDC target, const SkinListModel& model, int row)
{
    const SkinListItem* item = model.RecordOfRow(row);
    if (row == model.SelectedRow())
        FillRect(target, &kSkinListRowRects[static_cast<std::size_t>(row)], GetSysColorBrush(COLOR_HIGHLIGHT));
    if (item == nullptr)
        return;
    const SkinListBoxes boxes = SkinListBoxesOf(row, model.Mode());
    DrawChecks(target, boxes, *item, model.Mode());
    DrawTextLine(target, model.ShownText(row, *item), boxes.mainText, m_mainFont.Get(), kTextColor,
                 kPlacement | DT_WORD_ELLIPSIS);
    if (model.Mode() == SkinListMode::CheckedText)
        DrawTextLine(target, SkinListTextOf(item->secondaryText), boxes.secondaryText, m_secondaryFont.Get(),
                     kTextColor, kPlacement | DT_RIGHT);
}

void SkinListPainter::DrawChecks(HDC target, const SkinListBoxes& boxes, const SkinListItem& item, SkinListMode mode)
{
    if (mode != SkinListMode::Text)
        m_checkBoxes->Draw(target, boxes.firstCheck, item.firstCheckState);
    if (mode == SkinListMode::TwoChecks)
        m_checkBoxes->Draw(target, boxes.secondCheck, item.secondCheckState);
}
