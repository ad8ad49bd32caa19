// What the window of an alert does when it is told something. Lives on the window's thread.
#pragma once

#include "gui/alert_buttons.h"
#include "gui/alert_message_window_draw.h"
#include "gui/alert_request.h"

#include <memory>

// What the window answers to a WM_CLOSE that closed it.
constexpr LRESULT kAlertHasClosed = 1;

class AlertWindow {
public:
    AlertWindow(AlertRequest request, std::shared_ptr<AlertLife> life);
    // Whatever ended the window, its alert is free afterwards.
    ~AlertWindow() { BecomeFree(); }
    AlertWindow(const AlertWindow&) = delete;
    AlertWindow& operator=(const AlertWindow&) = delete;

    // Shows the window, which was created with this object as its parameter; null: there is none. False, and the alert
    // is free, when nothing is shown.
    [[nodiscard]] bool Show(HWND window);

    // Of every alert's window; the object's address is in the first place of the window's data.
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

private:
    LRESULT OnCreate(WPARAM wParam, LPARAM lParam);
    LRESULT OnSize(WPARAM wParam, LPARAM lParam);
    LRESULT OnPaint(WPARAM wParam, LPARAM lParam);
    LRESULT OnDrawItem(WPARAM wParam, LPARAM lParam);
    LRESULT OnCommand(WPARAM wParam, LPARAM lParam);
    LRESULT OnTimer(WPARAM wParam, LPARAM lParam);
    LRESULT OnClose(WPARAM wParam, LPARAM lParam);
    LRESULT OnDestroy(WPARAM wParam, LPARAM lParam);

    struct MessageEntry {
        UINT message;
        LRESULT (AlertWindow::*handler)(WPARAM wParam, LPARAM lParam);
    };
    static const MessageEntry kMessages[];

    void PaintPicture(HDC screen);
    void PlayAnimation();
    void PlaySoundOnce(UINT drawnId);
    void Answer(UINT id);
    bool End();
    void TearDown();
    void BecomeFree();

    AlertRequest m_request;
    const std::shared_ptr<AlertLife> m_life;
    const AlertLook& m_look;
    HWND m_window = nullptr;
    AlertText m_text;
    UniqueBitmap m_picture; // made for the first paint
    HBITMAP m_buttonGround = nullptr;
    AlertButtons m_buttons;
    HDC m_animatedScreen = nullptr; // held while the animation plays
    bool m_soundIsPending;
    bool m_isEnding = false;
    bool m_isFree = false;
};
