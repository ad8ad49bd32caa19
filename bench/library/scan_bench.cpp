// A scan into the play list: the cost of a name must not grow with their number, nor the memory beyond the records.
#include "bench/library/song_tree.h"
#include "library/media_entry.h"
#include "library/media_scan.h"
#include "library/song_list.h"

#include <benchmark/benchmark.h>
#include <malloc.h>

namespace {

using cardsong::bench::SongTree;

// Files without music: what is measured is the list, not the reading of songs.
void ScanNames(benchmark::State& state)
{
    const auto songs = static_cast<int>(state.range(0));
    const SongTree tree(songs, { "" }, { "" });
    double bytesBeyond = 0;
    for (auto _ : state) {
        const auto before = mallinfo2().uordblks;
        ScanMediaFolder(TEXT("\\SDMMC"), &PlayList, true);
        const auto held = static_cast<double>(mallinfo2().uordblks - before);
        const double records = static_cast<double>(PlayList.GetCount()) * sizeof(MediaFileEntry);
        bytesBeyond = (held - records) / records * 100.0;
        state.PauseTiming();
        SongList(PlayList).FreeAll();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * songs);
    state.counters["percent_beyond_records"] = bytesBeyond;
}

BENCHMARK(ScanNames)->Arg(5'000)->Arg(50'000)->Unit(benchmark::kMillisecond);

} // namespace
