// Says of each song named on the command line how long it lasts, and how far from the asked place the worst of many
// seeks would have played on: a line "SECONDS WORST_SECONDS FRAMES" each, "none" for a file that is no song.
#include "playback/asf_song.h"
#include "playback/mpeg_song.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

using cardsong::playback::MpegSong;
using cardsong::playback::SongFile;

namespace {

struct HeardFrame {
    std::string bytes;
    double startSeconds;
};

std::vector<HeardFrame> AllFrames(MpegSong& song)
{
    std::vector<HeardFrame> frames;
    while (const auto frame = song.Next())
        frames.push_back({ std::string(frame->bytes.begin(), frame->bytes.end()), frame->startSeconds });
    return frames;
}

// The frame that a seek leads to stands somewhere in the whole song: its time there is the truth. Frames of silence are
// all alike; the nearest counts.
double ErrorAt(MpegSong& song, const std::vector<HeardFrame>& frames, double place)
{
    song.GoTo(place);
    const auto frame = song.Next();
    if (!frame)
        return place;
    const std::string bytes(frame->bytes.begin(), frame->bytes.end());
    double nearest = place;
    for (const HeardFrame& heard : frames) {
        if (heard.bytes == bytes)
            nearest = std::min(nearest, std::abs(heard.startSeconds - frame->startSeconds));
    }
    return nearest;
}

void Look(const char* path)
{
    auto file = SongFile::Open(path);
    if (file && IsAsf(*file)) {
        const auto asf = ReadAsfSong(*file);
        std::printf("%.4f 0 0\n", asf && asf->seconds ? *asf->seconds : 0.0);
        return;
    }
    const auto song = MpegSong::Open(std::move(file));
    if (!song) {
        std::puts("none");
        return;
    }
    const auto frames = AllFrames(*song);
    double worst = 0.0;
    for (const double share : { 0.9, 0.1, 0.5, 0.99, 0.25, 0.75, 0.62, 0.05, 0.4 })
        worst = std::max(worst, ErrorAt(*song, frames, share * song->Seconds()));
    std::printf("%.4f %.4f %zu\n", song->Seconds(), worst, frames.size());
}

} // namespace

int main(int count, char** paths)
{
    for (int i = 1; i < count; ++i)
        Look(paths[i]);
}
