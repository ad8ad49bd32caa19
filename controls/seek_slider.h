// The progress bar: takes over a child window of its owner, shows how far the song has played, and asks the owner to
// jump where it is tapped. Knows no player.
#pragma once

#include "gui/skin_image.h"
#include "platform/ce.h"

// Posted to the owner on a tap: wParam is the slider's identifier, lParam the position asked for.
constexpr UINT kSliderMovedMessage = WM_USER + 111;

class SeekSlider {
public:
    // Subclasses the first child window of `owner`; without a child it draws nothing. One slider exists at a time:
    // a new one makes the one before let its window go.
    SeekSlider(HWND owner, UINT identifier, LPCWSTR playedImagePath, LPCWSTR backgroundImagePath);
    virtual ~SeekSlider();
    SeekSlider(const SeekSlider&) = delete;
    SeekSlider& operator=(const SeekSlider&) = delete;

    // In either order; the position stays. At first 0 to 100.
    void SetRange(int a, int b);
    void GetRange(int* minimum, int* maximum) const;
    // 1; or 0, and no change, when `position` is outside the range.
    int SetPos(int position);
    int GetPos() const { return m_position; }
    // 1; or 0, and no change, when `step` is not above 0. At first 1.
    int SetStep(int step);
    // Both: 1; or 0 when the position would have passed the maximum, or what an int holds below it, where it then
    // stands.
    int StepIt() { return OffsetPos(m_step); }
    int OffsetPos(int delta);

private:
    static LRESULT CALLBACK SliderProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    void GiveWindowBack();
    int MoveTo(long long position);
    float RangeSize() const;
    void Invalidate();
    void Tap(int xPx);
    void Paint();
    void DrawImages(HDC context, int playedPx);
    void DrawPlain(HDC context, int playedPx);

    UINT m_identifier;
    HWND m_window = nullptr;
    HWND m_owner;
    RECT m_client = {};
    int m_minimum = 0;
    int m_maximum = 100;
    int m_step = 1;
    int m_position = 0;
    float m_fraction = 0.0F; // of the bar that is drawn as played, 0 to 1
    SkinImage m_playedImage;
    SkinImage m_backgroundImage;
};
