// Any bytes as a wave file. What is taken for a sound has a form that can be played, and its samples lie in the file,
// in whole frames.
#include "platform/linux/sound/wave_file.h"

#include <cstdlib>
#include <vector>

namespace {

using namespace cardsong::sound;

void Require(bool holds)
{
    if (!holds)
        std::abort();
}

void Check(const WaveSound& wave, std::span<const std::byte> file)
{
    const unsigned bits = wave.bitsPerSample;
    Require(wave.kind == SampleKind::Float ? bits == 32 || bits == 64
                                           : bits == 8 || bits == 16 || bits == 24 || bits == 32);
    Require(wave.channels == 1 || wave.channels == 2);
    Require(wave.samplesPerSecond >= 1000 && wave.samplesPerSecond <= 192'000);
    Require(!wave.samples.empty() && wave.samples.size() % wave.FrameBytes() == 0);
    Require(wave.samples.data() >= file.data() + 44); // a head, a format and the data's own head come before
    Require(wave.samples.data() + wave.samples.size() <= file.data() + file.size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const auto* const bytes = reinterpret_cast<const std::byte*>(data);
    const std::vector<std::byte> file(bytes, bytes + size); // of its exact size
    if (const auto wave = ReadWave(file))
        Check(*wave, file);
    // A file that was cut short is taken for the sound that is left, or for none.
    const std::span<const std::byte> cut = std::span(file).first(size / 2);
    const std::vector<std::byte> half(cut.begin(), cut.end());
    if (const auto wave = ReadWave(half))
        Check(*wave, half);
    return 0;
}
