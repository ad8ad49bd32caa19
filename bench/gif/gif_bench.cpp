// From a GIF in memory to RGB565, beside known libraries: pictures of a skin, a photograph, and all frames of an
// animation. What the libraries give is compared with ours before anything is measured.
#include "bench/gif/peers.h"
#include "gif/gif_sequence.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace {

using File = std::vector<std::byte>;

// The files whose names start so, in the order of their names.
std::vector<File> Files(std::string_view prefix)
{
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(CARDSONG_BENCH_PICTURES)) {
        if (entry.path().filename().string().starts_with(prefix))
            paths.push_back(entry.path());
    }
    std::ranges::sort(paths);
    std::vector<File> files;
    for (const auto& path : paths) {
        std::ifstream stream(path, std::ios::binary);
        const std::string text{ std::istreambuf_iterator<char>(stream), {} };
        const auto bytes = std::as_bytes(std::span(text));
        files.emplace_back(bytes.begin(), bytes.end());
    }
    return files;
}

std::span<const std::uint16_t> Frames(GifSequence& sequence, std::span<const std::byte> file, bool isFirstOnly)
{
    if (!sequence.Open(file, 0xFFFF))
        std::abort();
    std::span<const std::uint16_t> canvas;
    const std::uint32_t count = isFirstOnly ? 1 : sequence.FrameCount();
    for (std::uint32_t i = 0; i < count; ++i) {
        const GifFrame* const frame = sequence.DecodeNextFrame();
        if (frame == nullptr)
            std::abort();
        canvas = frame->canvas;
    }
    return canvas;
}

void CheckAgainst(const Canvas& peers, std::span<const std::byte> file, bool isFirstOnly)
{
    GifSequence sequence;
    if (!std::ranges::equal(Frames(sequence, file, isFirstOnly), peers))
        std::abort();
}

void FirstFrame(benchmark::State& state, std::string_view prefix)
{
    const auto files = Files(prefix);
    for (auto _ : state) {
        for (const File& file : files) {
            GifSequence sequence;
            benchmark::DoNotOptimize(Frames(sequence, file, true).data());
        }
    }
    state.SetItemsProcessed(state.iterations() * std::ssize(files));
}

void FirstFrameByPeer(benchmark::State& state, std::string_view prefix, Canvas (*decode)(std::span<const std::byte>))
{
    const auto files = Files(prefix);
    for (const File& file : files)
        CheckAgainst(decode(file), file, true);
    for (auto _ : state) {
        for (const File& file : files)
            benchmark::DoNotOptimize(decode(file).data());
    }
    state.SetItemsProcessed(state.iterations() * std::ssize(files));
}

void Animation(benchmark::State& state)
{
    const auto files = Files("animation");
    for (auto _ : state) {
        GifSequence sequence;
        benchmark::DoNotOptimize(Frames(sequence, files.at(0), false).data());
    }
}

void AnimationByPeer(benchmark::State& state, Composition composition)
{
    const auto files = Files("animation");
    CheckAgainst(AnimationByGiflib(files.at(0), composition), files.at(0), false);
    for (auto _ : state)
        benchmark::DoNotOptimize(AnimationByGiflib(files.at(0), composition).data());
}

BENCHMARK_CAPTURE(FirstFrame, skin, "skin")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(FirstFrameByPeer, skin_giflib, "skin", FirstFrameByGiflib)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(FirstFrameByPeer, skin_stb, "skin", FirstFrameByStb)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(FirstFrame, photograph, "photograph")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(FirstFrameByPeer, photograph_giflib, "photograph", FirstFrameByGiflib)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(FirstFrameByPeer, photograph_stb, "photograph", FirstFrameByStb)->Unit(benchmark::kMicrosecond);
BENCHMARK(Animation)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(AnimationByPeer, giflib, Composition::CanvasEach)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(AnimationByPeer, giflib_in_place, Composition::InPlace)->Unit(benchmark::kMicrosecond);

} // namespace
