#include "playback/media_graph_song_probe.h"

#include "playback/asf_song.h"
#include "playback/mpeg_song.h"

namespace cardsong::playback {

SongKind LookAtSong(const std::filesystem::path& hostPath)
{
    auto file = SongFile::Open(hostPath);
    if (!file)
        return SongKind::None;
    if (IsAsf(*file))
        return ReadAsfSong(*file) ? SongKind::Asf : SongKind::None;
    return MpegSong::Open(std::move(file)) ? SongKind::Mpeg : SongKind::None;
}

} // namespace cardsong::playback
