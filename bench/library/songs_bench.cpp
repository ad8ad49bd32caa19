// Title and play time of 10,000 songs, warm: ours, TagLib's with its audio properties, and the bare cost of looking
// into each file. Processor time a song.
#include "bench/library/song_tree.h"
#include "library/song_facts.h"

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <taglib/fileref.h>
#include <taglib/tag.h>
#include <unistd.h>

#include <array>
#include <iterator>

namespace {

using cardsong::bench::Song;
using cardsong::bench::SongTree;

constexpr int kSongs = 10'000;

std::string Sample(const std::string& name)
{
    std::ifstream file(std::string(CARDSONG_TEST_DATA) + "/" + name, std::ios::binary);
    return { std::istreambuf_iterator<char>(file), {} };
}

// Songs of five kilobytes up to real size cost the same: only their ends are read.
const SongTree& Tree()
{
    static const SongTree s_tree(kSongs,
                                 { Sample("mp3/cbr_id3v1.mp3"), Sample("mp3/cbr_info.mp3"), Sample("mp3/vbr_id3v2.mp3"),
                                   Sample("mp3/vbr_xing.mp3"), Sample("mp3/cbr_joint_stereo.mp3") },
                                 { Sample("wma/tagged.wma"), Sample("wma/untagged.wma") });
    return s_tree;
}

void CountSongs(benchmark::State& state)
{
    state.SetItemsProcessed(state.iterations() * kSongs);
}

void Cardsong(benchmark::State& state)
{
    const SongTree& tree = Tree();
    for (auto _ : state) {
        for (const Song& song : tree.Songs())
            benchmark::DoNotOptimize(ReadSongFacts(song.devicePath.c_str(), song.format));
    }
    CountSongs(state);
}

void TagLibrary(benchmark::State& state)
{
    const SongTree& tree = Tree();
    for (auto _ : state) {
        for (const Song& song : tree.Songs()) {
            const TagLib::FileRef file(song.hostPath.c_str(), true, TagLib::AudioProperties::Average);
            benchmark::DoNotOptimize(file.tag() != nullptr ? file.tag()->title() : TagLib::String());
            benchmark::DoNotOptimize(file.audioProperties() != nullptr ? file.audioProperties()->lengthInMilliseconds()
                                                                       : 0);
        }
    }
    CountSongs(state);
}

// What no reader can do without: the first 4 KiB and the last 128 bytes of each file.
void BareReads(benchmark::State& state)
{
    const SongTree& tree = Tree();
    std::array<char, 4096> head;
    std::array<char, 128> tail;
    for (auto _ : state) {
        for (const Song& song : tree.Songs()) {
            const int file = open(song.hostPath.c_str(), O_RDONLY | O_CLOEXEC);
            benchmark::DoNotOptimize(read(file, head.data(), head.size()));
            lseek(file, -static_cast<off_t>(tail.size()), SEEK_END);
            benchmark::DoNotOptimize(read(file, tail.data(), tail.size()));
            close(file);
        }
    }
    CountSongs(state);
}

BENCHMARK(Cardsong)->Unit(benchmark::kMillisecond);
BENCHMARK(TagLibrary)->Unit(benchmark::kMillisecond);
BENCHMARK(BareReads)->Unit(benchmark::kMillisecond);

} // namespace
