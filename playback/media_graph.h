// One song's way from file to loudspeaker: a filter graph behind plain yes/no calls. It must not know who plays it, nor
// show which engine stands behind it: each engine is one set of sources, of which the build links one.
#pragma once

#include "platform/ce.h"

#include <memory>

struct IGraphBuilder;
struct IMediaEventEx;
struct IPin;
struct _AMMediaType;

// Posted, with both parameters 0, to the notify window when an event waits to be taken.
constexpr UINT kGraphEventMessage = WM_USER + 20;

// States in the message of the device's audio manager. An engine whose sound server asks the song to give way posts
// that message to the notify window, too, and again when the song may go on.
constexpr WORD kSongMaySound = 1;
constexpr WORD kAnotherSounds = 2;

// Event codes that every engine reports, some among others of their own. A song that breaks off reports
// kGraphErrorAbort and then kGraphComplete, so that whoever waits for its end goes on.
constexpr long kGraphComplete = 1;
constexpr long kGraphUserAbort = 2;
constexpr long kGraphErrorAbort = 3;

// Loudness in hundredths of a decibel, as in every volume of this class.
constexpr long kLoudest = 0;
constexpr long kSilent = -10000;

// Positions and lengths are seconds. Every call answers false (or 0) where the part of the graph that it needs is
// missing. All calls come from one thread; only the notice of an event is posted from another.
class MediaGraph {
public:
    // Readies the engine on a thread of its own, so that the first Init need not; returns at once. Optional.
    static void WarmUp();

    MediaGraph();
    virtual ~MediaGraph();
    MediaGraph(const MediaGraph&) = delete;
    MediaGraph& operator=(const MediaGraph&) = delete;

    // Makes an empty graph. False when the engine cannot, and when there is a graph already. The thread has called
    // CoInitializeEx.
    virtual bool Init();
    // Leaves nothing of the graph; no notice is posted from here on.
    virtual void ReleaseAll();
    // Takes a share in a graph made elsewhere in place of the present one; null only releases. Engines without foreign
    // graphs refuse any but null.
    virtual bool Attach(IGraphBuilder* graph);

    // Builds the chain for the file of a device path. False when there is no such file or nothing in it is music: the
    // graph is then empty, lasts 0 seconds and has no end. False too when it is music that this machine cannot play,
    // because a decoder is missing, the song is protected, or no device takes sound and the engine needs one: how long
    // the song lasts is then not known, and the graph runs through one silent second in real time to kGraphComplete.
    bool RenderFile(const WCHAR* path);

    bool Run();
    // Cues the song: returns once its first sound is ready, or at once when it turns out to be broken.
    bool Pause();
    // A later Run goes on from the position: where playing stopped or, with some engines, where it was last put.
    bool Stop();
    // The state that was asked for, also while the graph is still on its way there.
    bool IsRunning() const;
    bool IsPaused() const;
    bool IsStopped() const;

    // Null: no notices. Events queued before are announced to the new window.
    bool SetNotifyWindow(HWND window);
    // The engine's own event interface, borrowed; null where it has none.
    IMediaEventEx* GetEventInterface() const;
    // Takes the oldest event without waiting; false when there is none.
    bool TakeEvent(long& code);
    void DrainEvents();

    // The output is untouched on failure. A length that is not known is a failure, a length of 0 is none. A length may
    // grow more exact while the song plays. A place before the beginning is the beginning, one past the end is the end.
    // A place that is no number is refused.
    bool GetDuration(double& seconds) const;
    bool GetCurrentPosition(double& seconds) const;
    bool GetStopPosition(double& seconds) const;
    bool SetPosition(double seconds);
    bool SetPositions(double start, double stop);
    // 1.0 is the song's own speed; ask only for speeds above 0.
    bool SetRate(double rate);
    bool GetRate(double& rate) const;

    bool SetVolume(long volume);
    long GetVolume() const;
    // -10000 (left only) to 10000 (right only), the hundredths of a decibel by which the other side is lowered.
    bool SetBalance(long balance);
    long GetBalance() const;

    // The picture of a graph that has one; false otherwise.
    bool SetVideoOwner(HWND window);
    bool SetVideoRect(int left, int top, int widthPx, int heightPx);
    bool SetFullScreen(bool on);
    bool IsFullScreen() const;

    // Wiring by hand, for engines whose pins can be reached; false otherwise.
    bool ConnectDirect(IPin* output, IPin* input, const _AMMediaType* mediaType);
    bool Disconnect(IPin* pin);

private:
    struct Engine;
    std::unique_ptr<Engine> m_engine; // null or empty: no graph
};
