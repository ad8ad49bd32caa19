// One tick of the lyrics strip: ten come in a second while a song with lyrics plays. A line that moves is drawn with
// its neighbours, 250 x 70 pixels of text on the skin; one that stands, and a hidden strip, have nothing to do.
#include "lyrics/lyrics_strip.h"
#include "tests/gif/gif_builder.h"
#include "tests/platform/scratch_device.h"

#include <benchmark/benchmark.h>

namespace {

using namespace cardsong::test;

constexpr std::int32_t kLineMs = 4000;
constexpr int kLines = 60;

HWND MakeParent()
{
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = DefWindowProcW;
    windowClass.lpszClassName = TEXT("CardsongBenchParent");
    RegisterClassW(&windowClass);
    return CreateWindowExW(0, windowClass.lpszClassName, TEXT(""), WS_POPUP | WS_VISIBLE, 0, 0, 320, 240, nullptr,
                           nullptr, nullptr, nullptr);
}

// Ten characters a line, in GB2312, and no two lines the same.
std::string Words()
{
    std::string text;
    for (int i = 0; i < kLines; ++i) {
        char stamp[32];
        std::snprintf(stamp, sizeof stamp, "[%02d:%02d.00]", i * kLineMs / 60'000, i * kLineMs / 1000 % 60);
        text += stamp;
        for (int k = 0; k < 10; ++k)
            text += { static_cast<char>(0xB0 + i % 40), static_cast<char>(0xA1 + (i + 7 * k) % 90) };
    }
    return text;
}

struct ShownStrip {
    explicit ShownStrip(const std::string& words)
    {
        device.WriteFile("user/Windows/gui_musicplayer_background.gif", PlainGif(320, 240, kBlue));
        device.WriteFile("card/song.lrc", words);
        context.FindForSong(TEXT("\\SDMMC\\song.mp3"));
        strip.Show(parent);
    }
    ~ShownStrip() { DestroyWindow(parent); }

    ScratchDevice device;
    HWND parent = MakeParent();
    LyricsContext context{ 1033 };
    LyricsStrip strip{ context };
};

void MovingLine(benchmark::State& state)
{
    ShownStrip shown(Words());
    std::int32_t positionMs = 0;
    for (auto _ : state) {
        shown.strip.Update(positionMs);
        positionMs = (positionMs + 100) % (kLines * kLineMs - 2 * kLineMs);
    }
}
BENCHMARK(MovingLine)->Unit(benchmark::kMicrosecond);

// As wide as a line is ever drawn.
void MovingWidestLines(benchmark::State& state)
{
    const std::string wide(100'000, 'w');
    ShownStrip shown("[00:00.00]" + wide + "[01:00.00]" + wide + "[02:00.00]" + wide);
    std::int32_t positionMs = 0;
    for (auto _ : state) {
        shown.strip.Update(positionMs);
        positionMs = (positionMs + 100) % 120'000;
    }
}
BENCHMARK(MovingWidestLines)->Unit(benchmark::kMicrosecond);

void StandingLine(benchmark::State& state)
{
    ShownStrip shown(Words());
    shown.strip.Update(2000);
    for (auto _ : state)
        shown.strip.Update(2000);
}
BENCHMARK(StandingLine)->Unit(benchmark::kMicrosecond);

void HiddenStrip(benchmark::State& state)
{
    ShownStrip shown(Words());
    shown.strip.Pause();
    for (auto _ : state)
        shown.strip.Update(2000);
}
BENCHMARK(HiddenStrip)->Unit(benchmark::kMicrosecond);

} // namespace
