// Buttons that stand together, each found by the command that it sends. Knows no command's meaning.
#pragma once

#include "gui/skin_button.h"

#include <cstddef>
#include <memory>
#include <span>

class SkinButtonRow {
public:
    // Has the button that `request` is about draw itself, a held one with its pressed look; false when it is none of
    // this row.
    bool DrawItem(const DRAWITEMSTRUCT& request);

    // For all of these: no such button, no effect.
    void Enable(UINT id, bool enable);
    bool IsEnabled(UINT id) const; // false when there is no such button
    void Show(UINT id, int command);
    void RepaintAll();
    // See SkinButton::SetBackgroundSource; for every button.
    void SetBackgroundSource(const HBITMAP* bitmap);

    // In order, with the places that hold no button among them: control id 0 and no window.
    std::span<SkinButton> Buttons() { return { m_buttons.get(), m_count }; }
    std::span<const SkinButton> Buttons() const { return { m_buttons.get(), m_count }; }
    // The first button of that id, borrowed; null when there is none, and for id 0.
    SkinButton* Find(UINT id) const;

protected:
    // `count` places without a button, instead of those that the row had.
    void MakePlaces(std::size_t count);
    // Frees the images and forgets the buttons; their windows go with the parent.
    void ForgetButtons() { MakePlaces(0); }

private:
    std::size_t m_count = 0;
    std::unique_ptr<SkinButton[]> m_buttons;
};
