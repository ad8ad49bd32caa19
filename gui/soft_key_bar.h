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
    // Makes the buttons as children of `parent`, which gets the focus that they are given. `ids` holds one entry a
    // button: `count`, and one more (not read) behind the id of a pair among the first `count`. `captions` and
    // `imageSets` go with `ids`; an entry that is not there is a caption without text or the slot's own skin. 2 to 7
    // slots; false, and no bar, for any other count.
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

    // For all of these: id 0 means every button where the line says so, else no button.
    void SetStringModule(HMODULE module);
    void SetCaption(UINT id, const ButtonCaption& caption);
    void SetCaptions(std::span<const ButtonCaption> captions); // every button, in order
    void ReloadCaption(UINT id, HMODULE stringModule);         // or every button; the bar takes the module first
    void SetKeyColor(UINT id, COLORREF key);                   // or every button
    void SetImage(UINT id, ButtonFace face, LPCWSTR path);     // all buttons of that id

private:
    SkinImage m_background;
};
