// The row of buttons along the bottom of the screen, with its two special slots: an up and down pair, and the scroll
// buttons of a list. Knows no command's meaning.
#pragma once

#include "gui/skin_button_row.h"

#include <span>

// Ids of slots that stand for more than a button.
constexpr int kSoftKeyEmptyId = 0;
constexpr int kSoftKeyPairId = 21;       // one slot with the two halves up and down
constexpr int kSoftKeyListScrollId = 37; // the list's scroll buttons, on the right edge of the screen
constexpr int kSoftKeyVolumeId = 22;     // an ordinary slot with the volume skin
// Ids of the two buttons that both pairs stand for.
constexpr UINT kUpButtonId = 40;
constexpr UINT kDownButtonId = 41;

class SoftKeyBar : public SkinButtonRow {
public:
    // Makes the buttons as children of `parent`, to which they hand the focus on. `ids`: one entry a button, which is
    // `count`, or one more when a pair is among the first `count`; the entry behind the id of a pair is not read.
    // `captions` and `imageSets` go with `ids`. Where they end, a button has no text, or its slot's own skin. False,
    // and no bar, when `count` is not 2 to 7.
    bool Create(HWND parent, HMODULE stringModule, int count, std::span<const int> ids,
                std::span<const ButtonCaption> captions = {}, std::span<const ButtonImageSet> imageSets = {});
    // Frees all images and forgets the buttons; their windows go with the parent.
    void Destroy();

    // Draws the bar's background at its place on the screen.
    void DrawBackground(HDC target);
    // Draws the background and every button into a picture of the whole screen.
    void DrawAll(HDC target);
    // Clicks the up or the down button for VK_UP and VK_DOWN.
    void ArrowKey(WPARAM virtualKey);

    // Of every button.
    void SetStringModule(HMODULE module);
    void SetCaptions(std::span<const ButtonCaption> captions); // in order, as many as there are
    // Of the first button of that id; id 0 means every button.
    void ReloadCaption(UINT id, HMODULE stringModule); // every button takes the module first
    void SetKeyColor(UINT id, COLORREF key);
    // Of the first button of that id; id 0 means none.
    void SetCaption(UINT id, const ButtonCaption& caption);
    // Of all buttons of that id; id 0 means none.
    void SetImage(UINT id, ButtonFace face, LPCWSTR path);

private:
    SkinImage m_background;
};
