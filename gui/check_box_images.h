// The pictures of a list's check boxes, loaded once for all lists. Knows no window.
#pragma once

#include "gui/skin_image.h"

#include <array>
#include <cstdint>
#include <memory>

class CheckBoxImages {
public:
    CheckBoxImages();
    // Those that some list has already, else a fresh set; freed with the last list that holds them.
    static std::shared_ptr<CheckBoxImages> Shared();

    // Draws the picture of `checkState` with its left top corner in that of `box`; a state without one draws nothing.
    void Draw(HDC target, const RECT& box, std::int32_t checkState);

private:
    static constexpr std::size_t kSlots = 8;

    std::array<SkinImage, kSlots> m_images; // by check state
};
