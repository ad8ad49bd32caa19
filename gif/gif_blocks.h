// The blocks of a GIF (Graphics Interchange Format 87a and 89a) as records. Knows neither pixels' order nor files.
#pragma once

#include "gif/gif_reader.h"

#include <array>
#include <cstdint>
#include <optional>

enum class GifBlock : std::uint8_t { Terminator = 0x00, Extension = 0x21, Image = 0x2C, Trailer = 0x3B };
enum class GifLabel : std::uint8_t { PlainText = 0x01, GraphicControl = 0xF9, Comment = 0xFE, Application = 0xFF };

// RGB565 colours by index; entries beyond `size` are black, so that every index of a picture has a colour.
struct GifColorTable {
    std::array<std::uint16_t, 256> colors{};
    std::uint32_t size = 0; // 0: the file has no such table
};

// The background index of a screen without a colour table: no index at all.
constexpr std::uint32_t kNoBackgroundIndex = 266;

struct GifScreen {
    std::array<char, 4> signature{}; // zero-terminated, as the version
    std::array<char, 4> version{};
    std::uint16_t widthPx = 0;
    std::uint16_t heightPx = 0;
    std::uint32_t colorResolution = 0;
    bool isSorted = false;
    std::uint32_t backgroundIndex = kNoBackgroundIndex;
    std::uint8_t pixelAspect = 0;
    GifColorTable globalTable;
};

struct GifGraphicControl {
    bool isPresent = false;
    std::uint32_t disposal = 0; // 0 to 7
    bool waitsForUser = false;
    bool hasTransparency = false;
    std::uint32_t delayHundredths = 0;
    std::uint32_t transparentIndex = 0;
};

struct GifImageDescriptor {
    std::uint16_t leftPx = 0;
    std::uint16_t topPx = 0;
    std::uint16_t widthPx = 0;
    std::uint16_t heightPx = 0;
    bool isInterlaced = false;
    bool isSorted = false;
    GifColorTable localTable;
};

// Reads signature, version, logical screen and global colour table from the start of the file. Nothing when the data
// end before, the signature is not "GIF", the version is greater than "89a" or the screen has no pixel.
std::optional<GifScreen> ReadGifScreen(GifReader& reader);

// Counts the images up to the trailer or the end of the data, decodes none and leaves the reader where it was. 0 when
// anything else stands among the blocks: a byte that starts none, or an extension with an unknown label.
std::uint32_t CountGifImages(GifReader& reader);

// Reads the sub-blocks of a graphic control extension into `control`; those that are not 4 bytes long are skipped.
void ReadGifGraphicControl(GifReader& reader, GifGraphicControl& control);

// Reads what follows the byte 0x2C up to the image data. Nothing when the data end before.
std::optional<GifImageDescriptor> ReadGifImageDescriptor(GifReader& reader);
