// Pixel memory of the GIF decoder: RGB565 words, and the one gate that the size of every picture passes. Knows no file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <span>

// Largest picture that is given memory. The format allows 65535 x 65535, which would be 8 GB from a file of 30 bytes;
// the device's screen has 320 x 240 pixels, and 16 million leave room for any skin while one picture stays below 32 MB.
constexpr std::uint64_t kMaxPixels = 4096ULL * 4096ULL;

constexpr bool IsPixelCountAllowed(std::uint32_t widthPx, std::uint32_t heightPx)
{
    return std::uint64_t{ widthPx } * heightPx <= kMaxPixels;
}

constexpr std::uint16_t Rgb565(std::uint8_t red, std::uint8_t green, std::uint8_t blue)
{
    return static_cast<std::uint16_t>((red >> 3) << 11 | (green >> 2) << 5 | blue >> 3);
}

// Row-major pixels without padding, or none at all.
template <typename Pixel>
class PixelBuffer {
public:
    // Replaces the content by widthPx x heightPx pixels that may be anything: who asks for them writes each one. False,
    // and no content, when the gate or the memory refuses.
    [[nodiscard]] bool Allocate(std::uint32_t widthPx, std::uint32_t heightPx)
    {
        Reset();
        if (!IsPixelCountAllowed(widthPx, heightPx))
            return false;
        const std::size_t count = std::size_t{ widthPx } * heightPx;
        m_pixels.reset(new (std::nothrow) Pixel[count]);
        m_count = m_pixels ? count : 0;
        return m_pixels != nullptr;
    }
    void Reset()
    {
        m_pixels.reset();
        m_count = 0;
    }
    bool IsAllocated() const { return m_pixels != nullptr; }
    std::span<Pixel> Pixels() { return { m_pixels.get(), m_count }; }
    std::span<const Pixel> Pixels() const { return { m_pixels.get(), m_count }; }

private:
    std::unique_ptr<Pixel[]> m_pixels;
    std::size_t m_count = 0;
};
