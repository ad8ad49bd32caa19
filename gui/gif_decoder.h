// A GIF file of the device, read whole and decoded image by image. Knows no bitmap and no window.
#pragma once

#include "gif/gif_sequence.h"
#include "platform/ce.h"

#include <cstddef>
#include <cstdint>
#include <memory>

class GifDecoder {
public:
    // Copies `path` (null: none), at most 260 units. `background` stands behind the images of a file without a global
    // colour table. Reads nothing yet.
    GifDecoder(LPCWSTR path, COLORREF background);
    GifDecoder(const GifDecoder&) = delete;
    GifDecoder& operator=(const GifDecoder&) = delete;

    // Reads the file, its header and its number of images, in place of what an earlier Open left. False when the file
    // is missing, empty, not below 4 GB, cannot be read whole, is no GIF of version 89a or below, or holds no image.
    [[nodiscard]] bool Open();
    // Zeros before a successful Open.
    void GetSize(std::uint16_t& widthPx, std::uint16_t& heightPx, std::uint32_t& frameCount) const;
    const GifScreen& Screen() const { return m_images.Screen(); }
    // As GifSequence::DecodeNextFrame.
    const GifFrame* DecodeNextFrame() { return m_images.DecodeNextFrame(); }

private:
    bool ReadWholeFile();

    WString m_path;
    COLORREF m_background;
    std::unique_ptr<std::byte[]> m_file;
    std::size_t m_fileBytes = 0;
    GifSequence m_images; // borrows m_file
};
