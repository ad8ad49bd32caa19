// Reads the Xing header that an encoder puts into the first frame of a song with a variable bit rate. It knows no file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

// The part of the first frame that a Xing header can reach into.
inline constexpr std::size_t kXingReachBytes = 156;

struct XingInfo {
    std::uint8_t frameHeader[4];
    char tag[4];
    std::uint32_t flags; // which of the four fields below the file holds, from bit 0 on
    std::uint32_t frameCount;
    std::uint32_t byteCount;
    std::uint8_t tableOfContents[100]; // of 256ths of the bytes, by hundredths of the time
    std::uint8_t quality[4];
};

// kTagOk when the tag is present ("Info", of a constant bit rate, is none), else kTagBadData with the frame header and
// the bytes in the tag's place set. Fields are taken from where a frame of MPEG-1 stereo holds them, whatever the frame
// is.
int ParseXingHeader(std::span<const std::byte, kXingReachBytes> frameBytes, XingInfo& out);

// Fills in the byte count, the frame count and the table of contents where the file holds none. `frameBytes` is the
// length of the first frame, not 0. A byte count of 0 leaves a table of zeros.
void CompleteXingInfo(XingInfo& xing, std::uint32_t fileBytes, std::uint32_t id3v2TagBytes, std::uint32_t frameBytes);

// `wholeBytes` less the ID3v2 tag and an ID3v1 tag, which counts whether there is one or not; 0 when nothing is left.
std::uint32_t AudioBytes(std::uint32_t wholeBytes, std::uint32_t id3v2TagBytes);
