// The one object through which the main window plays a song. It knows neither play list nor controls, nor the engine
// behind its graph.
#pragma once

#include "playback/media_graph.h"

#include <memory>

constexpr int PLAYER_PLAYING = 0;
constexpr int PLAYER_PAUSED = 1;
constexpr int PLAYER_STOPPED = 2;

constexpr int PLAYER_ERR_OPEN = -8;      // no such file, or no graph could be made
constexpr int PLAYER_ERR_NOT_OPEN = -18; // no graph

constexpr UINT kProgressTimerId = 100;
constexpr UINT kProgressPeriodMs = 100;
constexpr long kInitialVolume = -784; // hundredths of a decibel

// All calls come from the thread of the notify window. Results are 0 for success or one of the codes above, unless said
// otherwise; on a closed player every call is harmless.
class MediaPlayer {
public:
    // Opens `path` (a device path, borrowed; may be null) without playing it; an unusable path leaves the player
    // closed.
    MediaPlayer(const WCHAR* path, HWND window);
    ~MediaPlayer();
    MediaPlayer(const MediaPlayer&) = delete;
    MediaPlayer& operator=(const MediaPlayer&) = delete;

    // Opens the stored path, cued at its beginning. A file without music opens too, with a length of 0 and no end. So
    // does a song that this machine cannot play, as one silent second of unknown length.
    int Open();
    // Neither the state nor the progress timer changes.
    void Close();
    // The window that gets timer 100 and kGraphEventMessage. Borrowed.
    void SetNotifyWindow(HWND window);
    // A missing file changes nothing: what was open stays open.
    int OpenAndPlay(const WCHAR* path, HWND window);
    int Play();
    int Pause();
    // Goes back to the beginning and ends the timer. 0 on a closed player too, whose timer goes on.
    int Stop();
    int GetState() const { return m_state; }
    // Whether the file of that path is open.
    bool HasOpen(WStringView path) const { return m_graph != nullptr && path == m_path; }

    // Seconds: 0.0 without a graph, 1.0 where the length is unknown, so that nobody divides by zero.
    double GetDuration();
    // Whether what GetDuration answers is the song's own length, not the stand-in for one that could not be asked.
    bool KnowsDuration() const;
    // Seconds: 0.0 without a graph, the last known value where the query fails.
    double GetPosition();
    int Seek(double seconds);
    // 1, or 0 without a graph.
    int SetVolume(long volume);
    long GetVolume() const;
    bool SetRate(double rate);
    double GetRate() const;

    // Takes the waiting graph events up to the end or the abort of the song: 1 when one was among them, else 0.
    int CheckEndOfStream();

private:
    void StorePath(const WCHAR* path);
    void StartProgressTimer();

    std::unique_ptr<MediaGraph> m_graph;
    WCHAR m_path[MAX_PATH] = {};
    UINT_PTR m_progressTimer = 0;
    double m_durationSeconds = 1.0;
    double m_positionSeconds = 0.0;
    int m_state = PLAYER_STOPPED;
    HWND m_window = nullptr;
};
