#include "gui/skin_button_row.h"

#include <algorithm>

namespace {

// A button draws its pressed look only when it is asked to show a selection. An owner that repaints itself asks for all
// of every button, also of the one that is held.
DRAWITEMSTRUCT HeldAsSelected(DRAWITEMSTRUCT request)
{
    const bool isHeld = (request.itemState & (ODS_SELECTED | ODS_DISABLED)) == ODS_SELECTED;
    if (request.itemAction == ODA_DRAWENTIRE && isHeld)
        request.itemAction = ODA_SELECT;
    return request;
}

} // namespace

void SkinButtonRow::MakePlaces(std::size_t count)
{
    m_buttons = std::make_unique<SkinButton[]>(count);
    m_count = count;
}

SkinButton* SkinButtonRow::Find(UINT id) const
{
    if (id == 0)
        return nullptr;
    const std::span<SkinButton> buttons(m_buttons.get(), m_count);
    const auto found = std::ranges::find(buttons, id, &SkinButton::ControlId);
    return found != buttons.end() ? &*found : nullptr;
}

bool SkinButtonRow::DrawItem(const DRAWITEMSTRUCT& request)
{
    SkinButton* button = Find(request.CtlID);
    if (button != nullptr)
        button->DrawItem(HeldAsSelected(request));
    return button != nullptr;
}

void SkinButtonRow::Enable(UINT id, bool enable)
{
    if (SkinButton* button = Find(id))
        button->Enable(enable);
}

bool SkinButtonRow::IsEnabled(UINT id) const
{
    const SkinButton* button = Find(id);
    return button != nullptr && button->IsEnabled();
}

void SkinButtonRow::Show(UINT id, int command)
{
    if (SkinButton* button = Find(id))
        button->Show(command);
}

void SkinButtonRow::RepaintAll()
{
    for (SkinButton& button : Buttons())
        button.Repaint();
}

void SkinButtonRow::SetBackgroundSource(const HBITMAP* bitmap)
{
    for (SkinButton& button : Buttons())
        button.SetBackgroundSource(bitmap);
}
