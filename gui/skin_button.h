// A push button drawn with skin images and a caption. Knows its window and its focus owner, not who commands it.
#pragma once

#include "gui/caption_text.h"
#include "gui/skin_image.h"
#include "platform/ce.h"

#include <array>
#include <cstddef>
#include <memory>

constexpr COLORREF kSkinKeyColor = RGB(0xFF, 0x00, 0xFF);
constexpr int kCaptionUnits = 64; // with the terminating zero

struct ButtonCaption {
    LPCWSTR text; // wins when it is not null
    int stringId; // above 0: a string of the string-table module
    int fontSizePoints;
    COLORREF textColor;
};

// Paths of GIF files; null leaves an image empty.
struct ButtonImageSet {
    LPCWSTR normal;
    LPCWSTR pressed;
    LPCWSTR focus;
    LPCWSTR disabled;
};

enum class ButtonFace : std::size_t { Normal, Focus, Pressed, Disabled };

class SkinButton {
public:
    explicit SkinButton(UINT controlId = 0) { Reset(controlId); }
    SkinButton(const SkinButton&) = delete;
    SkinButton& operator=(const SkinButton&) = delete;

    // Back to a button without window, images and caption: key colour magenta, 12 points, black.
    void Reset(UINT controlId = 0);
    // Makes the button's window, a child of `focusOwner`, and loads the images of `imageSet` (null: none). A `caption`
    // (null: none) of size 0 gives neither size nor colour. False, and no image loaded, when there is no window.
    bool Create(HWND focusOwner, HMODULE stringModule, UINT controlId, const RECT& place, const ButtonCaption* caption,
                const ButtonImageSet* imageSet);
    // Takes everything from `other`, with three exceptions: the string-table module and, where that of `other` is
    // empty, the caption stay; there is no background source afterwards. The two buttons share their images from then
    // on.
    void CopyFrom(const SkinButton& other);
    // Lets go of images, background source and caption; the window stays its parent's.
    void Free();

    // Takes the text or the string, and repaints. A colour or a size of 0 leaves the old one.
    void SetCaption(const ButtonCaption& caption);
    // Reads the string of the caption again, from a module for another language, and repaints.
    void ReloadCaption();
    void SetStringModule(HMODULE module) { m_stringModule = module; }
    // Loads another image in place of the old one and repaints.
    void SetImage(ButtonFace face, LPCWSTR path);
    void SetKeyColor(COLORREF key) { m_keyColor = key; }
    // `bitmap` (borrowed; null: none) shows the button's parent. Its part at the button's place is drawn under the
    // face.
    void SetBackgroundSource(const HBITMAP* bitmap) { m_backgroundSource = bitmap; }

    void Enable(bool enable);
    bool IsEnabled() const;
    void Show(int command);
    // Neither repaints.
    void Move(int x, int y);
    void Resize(int widthPx, int heightPx);
    void Repaint();
    void MakeTopmost(bool topmost);

    // Answers an owner-draw request: face, then caption on top of it.
    void DrawItem(const DRAWITEMSTRUCT& request);
    // The same, but the caption is written on a copy of the face, so that text of the key colour is see-through too.
    void DrawItemComposed(const DRAWITEMSTRUCT& request);
    // Draws the button at its place into a picture of its parent, enabled or disabled as it is.
    void DrawInto(HDC target);

    UINT ControlId() const { return m_controlId; }
    HWND Window() const { return m_window; }
    HWND FocusOwner() const { return m_focusOwner; }
    // Left, top, right and bottom in the parent's client area.
    RECT Place() const { return m_place; }
    LPCWSTR Caption() const { return m_caption.data(); }
    COLORREF TextColor() const { return m_textColor; }
    int FontSizePoints() const { return m_fontSizePoints; }

private:
    static constexpr std::size_t kFaces = 4;

    SkinImage* Face(ButtonFace face) const { return m_images[static_cast<std::size_t>(face)].get(); }
    void LoadFace(ButtonFace face, LPCWSTR path);
    void HandFocusOn(const DRAWITEMSTRUCT& request) const;
    void TakeCaption(const ButtonCaption& caption);
    void CopyCaption(WStringView text);
    void DrawBackground(HDC target, const RECT& rect);
    void DrawFace(HDC target, const RECT& rect, ButtonFace face);
    void DrawCaption(HDC target, const RECT& rect);

    UINT m_controlId = 0;
    HWND m_focusOwner = nullptr;
    HWND m_window = nullptr;
    RECT m_place = {};
    int m_stringId = 0;
    COLORREF m_textColor = 0;
    COLORREF m_keyColor = kSkinKeyColor;
    int m_fontSizePoints = 0;
    std::array<WCHAR, kCaptionUnits> m_caption = {};
    std::array<std::shared_ptr<SkinImage>, kFaces> m_images; // by ButtonFace; shared between copies of a button
    const HBITMAP* m_backgroundSource = nullptr;
    HMODULE m_stringModule = nullptr;
    CaptionFont m_font;
    UniqueMemoryContext m_backgroundContext;
};
