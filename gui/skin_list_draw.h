// The picture of a skinned list without its soft keys: background, title, separators, rows. Knows no window.
#pragma once

#include "gui/caption_text.h"
#include "gui/check_box_images.h"
#include "gui/skin_list_model.h"

class SkinListPainter {
public:
    // Loads the pictures.
    SkinListPainter();

    // Draws a whole page into a picture of the screen; without a background the ground is white.
    void Draw(HDC target, const SkinListModel& model, WStringView title);
    // The width of a row's main text, in pixels.
    int MainTextWidth(HDC context, WStringView text);

private:
    void MakeFonts(HDC context);
    void DrawGround(HDC target);
    void DrawRow(HDC target, const SkinListModel& model, int row);
    void DrawChecks(HDC target, const SkinListBoxes& boxes, const SkinListItem& item, SkinListMode mode);

    SkinImage m_background;
    std::shared_ptr<CheckBoxImages> m_checkBoxes;
    UniqueBrush m_separatorBrush;
    CaptionFont m_titleFont;
    // Songs have names in any language: their fonts do not go with the user interface's.
    UniqueFont m_mainFont;
    UniqueFont m_secondaryFont;
};
