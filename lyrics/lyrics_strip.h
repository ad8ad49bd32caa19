// The lyrics strip: a small window in the player's that shows the line of the song's place. It owns the window, its
// font and its picture; the lines and settings are the context's.
#pragma once

#include "lyrics/lyrics_frame.h"
#include "lyrics/lyrics_line_choice.h"
#include "lyrics/lyrics_marquee.h"
#include "lyrics/lyrics_strip_background.h"

#include <vector>

inline constexpr const WCHAR* kLyricsStripClass = TEXT("Lyrics Class");
inline constexpr const WCHAR* kLyricsStripName = TEXT("Lyrics Window");

// "Lyrics Setting Change": another program has changed the settings. 0 until the first strip is made.
extern UINT g_msgLyricsSettingChange;

enum class LyricsDisplay : std::int32_t { Shown = 0, Paused = 1, Stopped = 2 };

// One lives at a time, on the thread of its windows.
class LyricsStrip {
public:
    // Registers the message and reads the settings; there is no window yet. `context` is borrowed and outlives the
    // strip.
    explicit LyricsStrip(LyricsContext& context);
    ~LyricsStrip();
    LyricsStrip(const LyricsStrip&) = delete;
    LyricsStrip& operator=(const LyricsStrip&) = delete;

    // Shows the strip, and makes its window at the first time; only while the context is ready.
    void Show(HWND parent);
    // Hides the strip; it stays so until the next Show.
    void Pause();
    // Hides the strip, which forgets what it showed, and makes the context not ready.
    void Stop();
    // Shows or hides the window, whatever the strip's state.
    void SetVisible(bool isVisible);

    LyricsDisplay State() const { return m_state; }
    std::int32_t SecondValue() const { return 1; } // no rule changes it
    HWND Window() const { return m_window; }

    // Chooses the line of `positionMs` in the song, moves it, and draws what has changed. A strip that is not shown
    // does nothing.
    void Update(std::int32_t positionMs);
    // The line that is shown, or kNoLine.
    std::int32_t CurrentLine() const { return m_context.Positions().currentLine; }

    // Takes over what another program has changed: settings and skin. The state stays.
    void ReloadSettings();

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Answer(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void Create(HWND parent);
    void TakeWindow(HWND window);
    void Paint();
    void StartLine(std::int32_t index, LineOrder order);
    void DrawLines(std::int32_t index, LineOrder order);

    LyricsContext& m_context;
    LyricsMarquee m_marquee;
    LyricsStripBackground m_background;
    LyricsFrame m_frame;
    UniqueFont m_font;
    HWND m_window = nullptr;
    bool m_isClassRegistered = false;
    LyricsDisplay m_state = LyricsDisplay::Stopped;
};
