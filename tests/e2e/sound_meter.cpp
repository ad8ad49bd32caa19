// Listens to raw sound on standard input (signed 16-bit, one channel, 48,000 a second) and writes a line for each tenth
// of a second: "<start in ms> <frequency in Hz> <level in dB below full scale>". Made for pure tones: the frequency is
// that of the rising passages through zero, 0 where there are too few of them or too little sound.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>

namespace {

constexpr std::size_t kRate = 48000;
constexpr std::size_t kWindow = kRate / 10;
constexpr double kSilenceDb = -120.0;
constexpr double kAudibleDb = -60.0;

using Window = std::array<std::int16_t, kWindow>;

double LevelDb(const Window& window)
{
    double sum = 0.0;
    for (const std::int16_t sample : window)
        sum += static_cast<double>(sample) * sample;
    const double rms = std::sqrt(sum / static_cast<double>(kWindow)) / 32768.0;
    return rms > 0.0 ? std::max(20.0 * std::log10(rms), kSilenceDb) : kSilenceDb;
}

// The mean distance of the passages, each placed between two samples by a straight line.
double FrequencyHz(const Window& window)
{
    double first = -1.0, last = -1.0;
    int periods = 0;
    for (std::size_t i = 1; i < kWindow; ++i) {
        const double before = window[i - 1], after = window[i];
        if (before >= 0.0 || after < 0.0)
            continue;
        const double at = static_cast<double>(i - 1) - before / (after - before);
        if (first < 0.0)
            first = at;
        else
            ++periods;
        last = at;
    }
    return periods < 2 ? 0.0 : static_cast<double>(periods) * static_cast<double>(kRate) / (last - first);
}

} // namespace

int main()
{
    Window window;
    for (unsigned long startMs = 0; std::fread(window.data(), sizeof window[0], kWindow, stdin) == kWindow;
         startMs += 100) {
        const double levelDb = LevelDb(window);
        std::printf("%lu %.1f %.1f\n", startMs, levelDb < kAudibleDb ? 0.0 : FrequencyHz(window), levelDb);
        std::fflush(stdout);
    }
    return 0;
}
