#include "gui/skin_button_row.h"

#include <algorithm>

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
        button->DrawItem(request);
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
