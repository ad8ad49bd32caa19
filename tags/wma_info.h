// Reads the play time, the title and the track number from the header of a WMA song (Advanced Systems Format, revision
// 01.20.03). Only what stands before the Data Object counts.
#pragma once

#include "tags/byte_reader.h"
#include "tags/byte_source.h"

#include "platform/ce.h"

#include <cstddef>
#include <cstdint>
#include <span>

inline constexpr std::size_t kWmaTextUnits = 512; // with the zero

struct WmaInfo {
    std::uint8_t fileId[16];
    std::uint64_t fileBytes;
    std::uint64_t creationDate;
    std::uint64_t dataPackets;
    std::uint64_t playDuration; // 100 ns, as sendDuration and duration
    std::uint64_t sendDuration;
    std::uint32_t prerollMsLow;
    std::uint32_t prerollMsHigh;
    std::uint32_t flags;
    std::uint32_t leastPacketBytes;
    std::uint32_t mostPacketBytes;
    std::uint32_t mostBitRate;
    std::int64_t duration; // playDuration less the preroll; 0 for a broadcast
    WCHAR title[kWmaTextUnits];
    WCHAR author[kWmaTextUnits];
    WCHAR rights[kWmaTextUnits];
    WCHAR description[kWmaTextUnits];
    WCHAR album[kWmaTextUnits];
    std::uint32_t trackNumber;
};

// 0 when the Data Object was reached, -1 otherwise: not this format, cut short, a malformed object, or an object of
// more than 1024 bytes on the way. What was read before a failure stays in `info`, which the caller clears first.
int ReadWmaInfo(ByteSource& source, WmaInfo& info);

// The same for a file of the device; -1 also for null arguments and a file that cannot be opened.
int ReadWmaInfo(const WCHAR* path, WmaInfo* info);

// Takes the UTF-16 units that `byteLength` bytes hold and stores as many as fit `out`, and a zero. The last byte of an
// odd length is left in `reader`: who reads an attribute steps over it by the attribute's own length. When `reader`
// holds fewer bytes, no text is stored and it fails.
void ReadUtf16Field(ByteReader& reader, std::size_t byteLength, std::span<WCHAR> out);
