// Lyrics at their largest: a text of a megabyte with 50,000 stamps in any order, and a folder of 5,000 files that is
// searched for a song that none of them fits. No library that does the same is known to us, so nothing stands beside.
#include "lyrics/lyrics_file_search.h"
#include "lyrics/lyrics_parser.h"
#include "tests/platform/scratch_device.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>

namespace {

constexpr int kStamps = 50'000;
constexpr int kFiles = 5000;

std::string Line(int hundredths)
{
    char line[64];
    std::snprintf(line, sizeof line, "[%02d:%02d.%02d]a line\r\n", hundredths / 6000, hundredths / 100 % 60,
                  hundredths % 100);
    return line;
}

enum class Order { Ascending, Descending, Any, Same };

// About 20 bytes a line.
WString TextOf(Order order)
{
    std::vector<int> times;
    for (int i = 0; i < kStamps; ++i)
        times.push_back(order == Order::Same ? 0 : i);
    if (order == Order::Descending)
        std::ranges::reverse(times);
    if (order == Order::Any)
        std::ranges::shuffle(times, std::mt19937(20080808));
    std::string text;
    for (std::size_t i = 0; i < times.size(); ++i)
        text += Line(times[i]) + (order == Order::Same ? std::to_string(i) : "");
    return WString(text.begin(), text.end());
}

void Parse(benchmark::State& state, Order order)
{
    const WString text = TextOf(order);
    CPtrListCtrl list;
    for (auto _ : state) {
        ParseLrcText(text, LyricList(list));
        state.counters["lines"] = list.GetCount();
        LyricList(list).FreeAll();
    }
    state.counters["units"] = static_cast<double>(text.size());
}
BENCHMARK_CAPTURE(Parse, ascending, Order::Ascending)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Parse, descending, Order::Descending)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Parse, any_order, Order::Any)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Parse, one_stamp, Order::Same)->Unit(benchmark::kMillisecond);

// A song's words in GB2312, with its title: 2 KB.
std::string LyricsFile(int number)
{
    std::string text = "[ti:\xB0\xAE\xB5\xC4\xB8\xE8 " + std::to_string(number) + "]\r\n[ar:\xB0\xAE]\r\n";
    for (int i = 0; i < 60; ++i)
        text += Line(i * 400).substr(0, 10) + "\xB0\xAE\xB5\xC4\xB8\xE8\xB0\xAE\xB5\xC4\xB8\xE8\xB0\xAE\xB5\xC4\r\n";
    return text;
}

void SearchFolder(benchmark::State& state, const WCHAR* song)
{
    const cardsong::test::ScratchDevice device;
    for (int i = 0; i < kFiles; ++i)
        device.WriteFile("card/" + std::to_string(i) + " the words of a song.lrc", LyricsFile(i));
    for (auto _ : state)
        benchmark::DoNotOptimize(FindLyricsFile(TEXT("\\SDMMC"), song));
}
BENCHMARK_CAPTURE(SearchFolder, that_has_no_match, TEXT("\\0123456789.mp3"))->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SearchFolder, that_has_a_near_match, TEXT("\\My 2500 the words of a song.mp3"))
    ->Unit(benchmark::kMillisecond);

} // namespace
