// Any bytes as the file that an engine is to play. The sound lies in the file; frames are whole, follow each other in
// time and come to an end; no place leads outside the song.
#include "playback/asf_song.h"
#include "playback/mpeg_song.h"
#include "playback/tags_around_sound.h"

#include <cstdlib>
#include <random>
#include <string>

using namespace cardsong::playback;

namespace {

void Require(bool holds)
{
    if (!holds)
        std::abort();
}

const std::filesystem::path& File()
{
    static const std::string s_file =
        (std::filesystem::temp_directory_path() / ("song" + std::to_string(std::random_device()()))).string();
    static const std::filesystem::path s_path = s_file;
    return s_path;
}

void CheckFrames(MpegSong& song, std::size_t songBytes)
{
    std::size_t bytes = 0;
    double seconds = -1.0;
    while (const auto frame = song.Next()) {
        Require(frame->bytes.size() >= kMpegHeaderBytes && frame->startSeconds > seconds &&
                frame->endSeconds > frame->startSeconds);
        bytes += frame->bytes.size();
        seconds = frame->startSeconds;
    }
    Require(bytes <= songBytes && !song.HasFailed());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    std::ofstream(File(), std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    auto file = SongFile::Open(File());
    Require(file != nullptr);
    const ByteRange sound = FindSound(*file);
    Require(sound.begin <= sound.end && sound.end <= size);
    if (const auto asf = ReadAsfSong(*file))
        Require(!asf->seconds || *asf->seconds > 0.0);
    const auto song = MpegSong::Open(std::move(file));
    if (!song)
        return 0;
    Require(song->Seconds() > 0.0 && song->Header().samplesPerSecond != 0);
    CheckFrames(*song, size);
    for (const double share : { 0.5, 0.0, 0.99, 2.0 }) {
        song->GoTo(share * song->Seconds());
        CheckFrames(*song, size);
    }
    return 0;
}
