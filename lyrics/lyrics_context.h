// The lyrics of the song that plays, and what the strip that shows them needs to keep. There is one in the program, and
// it owns all of it. It knows no window.
#pragma once

#include "lyrics/lyric_list.h"
#include "lyrics/lyrics_settings.h"
#include "lyrics/lyrics_text.h"
#include "lyrics/strip_rect.h"

// Lines that stand for lyrics when there are none: so many, each shown so long.
inline constexpr int kPlaceholderLines = 3;
inline constexpr std::int32_t kPlaceholderIntervalMs = 15'000;
inline constexpr std::size_t kMostTitlePrefixUnits = 100;

// What the strip last showed; -1: nothing yet. Places are in pixels of the strip.
struct LyricsPositions {
    std::int32_t currentLine = -1; // index in the list
    std::int32_t lineX = -1;
    std::int32_t startX = -1;
    std::int32_t nextLineLeft = -1;

    bool operator==(const LyricsPositions&) const = default;
};

class LyricsContext {
public:
    // Reads nothing yet; the settings are the caller's next step. `uiLanguage` chooses the code page of lyrics.
    explicit LyricsContext(LANGID uiLanguage = GetUserDefaultUILanguage());
    LyricsContext(const LyricsContext&) = delete;
    LyricsContext& operator=(const LyricsContext&) = delete;
    ~LyricsContext();

    // ---- the lines ----
    ConstLyricList Lines() const { return ConstLyricList(m_list); }
    // Whether the lines are lyrics; else they are placeholder lines.
    bool HasLyrics() const { return m_hasLyrics; }

    // Frees the lines; positions and the size of the current line begin anew.
    void Clear();
    // As LyricList::Add.
    int AddLine(std::int32_t timeMs, WStringView text);
    void RemoveRepeats() { LyricList(m_list).RemoveRepeats(); }

    // ---- loading: each replaces the lines; without a timed line the placeholder lines take their place ----
    // Lyrics that begin later than the song get a line at 0: title prefix and name of the song.
    void ParseText(WStringView text);
    // `codePage`: see lyrics/lyrics_text.h.
    void LoadBytes(const LyricsBytes& bytes, std::int32_t codePage);
    void LoadFile(const WCHAR* path);
    // Title prefix and name of the song, at each interval.
    void ShowPlaceholders();

    // Looks into the song's file, then for a lyrics file in its folder, then in the lyrics folder, and loads what comes
    // first. 1 when there was something, whatever it held; else 0, and the lines stay as they were.
    int FindForSong(const WCHAR* songPath);
    // Set by a search that found something.
    bool IsReady() const { return m_isReady; }
    void ClearReady() { m_isReady = false; }

    const WString& SongPath() const { return m_songPath; }
    void SetSongPath(WStringView path) { m_songPath = path; }
    const WString& TitlePrefix() const { return m_titlePrefix; }
    void SetTitlePrefix(WStringView prefix) { m_titlePrefix = prefix.substr(0, kMostTitlePrefixUnits); }
    LANGID UiLanguage() const { return m_uiLanguage; }
    // As ConvertToUiScript in lyrics/lyrics_text.h.
    void ConvertToScript(char* destination, const char* source) const;

    // ---- settings ----
    const LyricsSettings& Settings() const { return m_settings; }
    // Reads the settings and takes them over; the rectangle of the strip stays.
    void ReloadSettings();
    void SaveSettings() const { SaveLyricsSettings(m_settings, m_stripRect); }
    // Makes the folder if it is missing.
    void SetFolder(WStringView path);
    void SetColors(COLORREF playColor, COLORREF nextColor, COLORREF backgroundColor, DWORD isTransparent);
    // UTF-8 is looked for when the settings or this say so.
    void SetUtf8Detection(Utf8Detection utf8) { m_utf8 = utf8; }

    // ---- what the strip keeps here ----
    LyricsPositions& Positions() { return m_positions; }
    const LyricsPositions& Positions() const { return m_positions; }
    SIZE CurrentLineSize() const { return m_currentLineSize; }
    void SetCurrentLineSize(SIZE size) { m_currentLineSize = size; }
    const RECT& StripRect() const { return m_stripRect; }
    // Clipped to the strip's greatest area. Null: it stays.
    void SetStripRect(const RECT* rect);
    // Taken from every position before its line is looked up: above 0 lines come later.
    std::int32_t TimeOffsetMs() const { return m_timeOffsetMs; }
    void SetTimeOffsetMs(std::int32_t offsetMs) { m_timeOffsetMs = offsetMs; }

private:
    LyricText SongTitle() const;
    Utf8Detection Utf8() const { return m_settings.detectsUtf8 ? Utf8Detection::On : m_utf8; }

    CPtrListCtrl m_list; // of LyricLine*
    LyricsPositions m_positions;
    SIZE m_currentLineSize = {};
    bool m_hasLyrics = false;
    bool m_isReady = false;
    WString m_songPath;
    WString m_titlePrefix = TEXT(" ");
    LANGID m_uiLanguage;
    std::int32_t m_timeOffsetMs = 0;
    RECT m_stripRect = {};
    LyricsSettings m_settings = {};
    Utf8Detection m_utf8 = Utf8Detection::Off;
};
