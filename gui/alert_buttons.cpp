#include "gui/alert_buttons.h"

namespace {

constexpr int kTopPx = 201;
constexpr int kWidthPx = 140;
constexpr int kHeightPx = 32;
constexpr int kCaptionPoints = 12;
constexpr COLORREF kCaptionColor = RGB(0xFF, 0xFF, 0xFF);
constexpr ButtonImageSet kImages = {
    .normal = TEXT("\\Windows\\gui_popup_but_normal.gif"),
    .pressed = TEXT("\\Windows\\gui_popup_but_down.gif"),
    .focus = TEXT("\\Windows\\gui_popup_but_normal.gif"),
    .disabled = TEXT("\\Windows\\gui_popup_but_disable.gif"),
};

} // namespace

void AlertButtons::Create(HWND owner, HMODULE strings, const AlertLook& look)
{
    MakePlaces(look.buttons.size());
    for (std::size_t i = 0; i < look.buttons.size(); ++i) {
        const auto& [id, xPx, captionStringId] = look.buttons[i];
        if (id == kNoAlertButton)
            continue;
        const ButtonCaption caption = { nullptr, captionStringId, kCaptionPoints, kCaptionColor };
        const RECT place = { xPx, kTopPx, xPx + kWidthPx, kTopPx + kHeightPx };
        Buttons()[i].Create(owner, strings, id, place, &caption, &kImages);
    }
}
