#include "platform/linux/sound/wave_file.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace cardsong::sound {

namespace {

constexpr std::size_t kTagBytes = 4;
constexpr std::size_t kRiffHeaderBytes = 12;
constexpr std::size_t kChunkHeaderBytes = 8;
constexpr std::size_t kFormatBytes = 16;
constexpr std::size_t kExtensibleFormatBytes = 26; // up to the first two bytes of the sub-format
constexpr unsigned kInteger = 0x0001;
constexpr unsigned kFloat = 0x0003;
constexpr unsigned kExtensible = 0xFFFE;
constexpr unsigned kMinSpeed = 1000;
constexpr unsigned kMaxSpeed = 192000;

// Both ask for bytes that are there.
unsigned Number(std::span<const std::byte> bytes, std::size_t at, std::size_t count)
{
    unsigned number = 0;
    for (std::size_t i = count; i > 0; --i)
        number = number << 8 | std::to_integer<unsigned>(bytes[at + i - 1]);
    return number;
}

bool HasTag(std::span<const std::byte> bytes, std::size_t at, std::string_view tag)
{
    return std::memcmp(bytes.data() + at, tag.data(), kTagBytes) == 0;
}

bool IsPlayable(const WaveSound& sound, unsigned frameBytes)
{
    const unsigned bits = sound.bitsPerSample;
    const bool hasBits = sound.kind == SampleKind::Float ? bits == 32 || bits == 64
                                                         : bits == 8 || bits == 16 || bits == 24 || bits == 32;
    return hasBits && (sound.channels == 1 || sound.channels == 2) && sound.samplesPerSecond >= kMinSpeed &&
           sound.samplesPerSecond <= kMaxSpeed && frameBytes == sound.FrameBytes();
}

std::optional<WaveSound> ReadFormat(std::span<const std::byte> chunk)
{
    if (chunk.size() < kFormatBytes)
        return std::nullopt;
    unsigned tag = Number(chunk, 0, 2);
    if (tag == kExtensible && chunk.size() >= kExtensibleFormatBytes)
        tag = Number(chunk, 24, 2);
    if (tag != kInteger && tag != kFloat)
        return std::nullopt;
    WaveSound sound;
    sound.kind = tag == kFloat ? SampleKind::Float : SampleKind::Integer;
    sound.channels = Number(chunk, 2, 2);
    sound.samplesPerSecond = Number(chunk, 4, 4);
    sound.bitsPerSample = Number(chunk, 14, 2);
    return IsPlayable(sound, Number(chunk, 12, 2)) ? std::optional(sound) : std::nullopt;
}

} // namespace

std::optional<WaveSound> ReadWave(std::span<const std::byte> file)
{
    if (file.size() < kRiffHeaderBytes || !HasTag(file, 0, "RIFF") || !HasTag(file, 8, "WAVE"))
        return std::nullopt;
    std::optional<WaveSound> sound;
    for (std::size_t at = kRiffHeaderBytes; file.size() - at >= kChunkHeaderBytes;) {
        const std::size_t start = at + kChunkHeaderBytes;
        const std::size_t saidBytes = Number(file, at + kTagBytes, 4);
        const std::size_t sizeBytes = std::min(saidBytes, file.size() - start);
        const auto chunk = file.subspan(start, sizeBytes);
        if (HasTag(file, at, "fmt ")) {
            sound = ReadFormat(chunk);
        } else if (HasTag(file, at, "data")) {
            if (!sound || sizeBytes < sound->FrameBytes())
                return std::nullopt;
            sound->samples = chunk.first(sizeBytes - sizeBytes % sound->FrameBytes());
            return sound;
        }
        at = std::min(start + sizeBytes + sizeBytes % 2, file.size()); // chunks begin at even places
    }
    return std::nullopt;
}

} // namespace cardsong::sound
