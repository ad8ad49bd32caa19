// An MPEG audio song as frames in time: how long it lasts, and its frames from any place on. Knows no decoder.
#pragma once

#include "playback/mpeg_sync.h"

#include <atomic>
#include <memory>
#include <vector>

namespace cardsong::playback {

// Called by one thread, except for the two calls that say so.
class MpegSong {
public:
    // Null when nothing in the file is MPEG audio: no run of frames within a megabyte behind the tags in front.
    // Measures the song's length: a few dozen small reads, or a look at every frame's header where the bit rate varies
    // and the song itself does not tell.
    static std::unique_ptr<MpegSong> Open(std::unique_ptr<SongFile> file);

    // Of the first frame.
    const MpegHeader& Header() const { return m_header; }
    double Seconds() const { return m_seconds; }

    // The next frame is one a little before the place: frames borrow from those in front of them, and a decoder needs
    // what they borrow. A place past the end leaves no frame.
    void GoTo(double seconds);

    struct Frame {
        Bytes bytes; // last until the next call
        double startSeconds = 0.0;
        double endSeconds = 0.0;
    };
    // Passes over what is no sound. Nothing at the end of the song, after a failed read, and when it is cancelled.
    std::optional<Frame> Next();
    bool HasFailed() const { return m_file->HasFailed(); }

    // Ends a search for the next frame, which may be long in a damaged file, and every later one until it is taken
    // back. From any thread.
    void Cancel() { m_isCancelled = true; }
    void TakeCancelBack() { m_isCancelled = false; }
    bool IsCancelled() const { return m_isCancelled; }

private:
    // A frame's place, or where one is to be looked for.
    struct Place {
        MpegRun run;
        std::uint64_t offset = 0;
        double seconds = 0.0;
    };

    explicit MpegSong(std::unique_ptr<SongFile> file) : m_file(std::move(file)) {}
    std::optional<MpegHeader> Settle(Place& place, std::uint64_t reach);
    void Pass(Place& place, const MpegHeader& header) const;
    void TakeInfoFrame();
    double MeasureSeconds();
    double CountSeconds();
    void MeasureConstancy();
    std::optional<double> ConstantFrameBytes();
    std::optional<Place> ConstantPlace(double seconds);
    Place WalkedPlace(double seconds);

    std::unique_ptr<SongFile> m_file;
    ByteRange m_sound;
    MpegHeader m_header;
    Place m_start;
    Place m_next;
    double m_seconds = 0.0;
    std::uint32_t m_toldFrames = 0; // by the song itself; 0: not told
    bool m_constancyIsKnown = false;
    double m_constantFrameBytes = 0.0; // the mean; 0: the bit rate varies
    std::vector<Place> m_index;        // in order, seconds apart
    std::atomic<bool> m_isCancelled = false;
};

} // namespace cardsong::playback
