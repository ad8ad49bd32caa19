// Splits the ID3v2 tag at the start of a song and the ID3v1 block at its end (id3.org: ID3v2.3.0, ID3v1.1). It decodes
// no text: encodings are the business of whoever shows it.
#pragma once

#include "containers/ptr_list_ctrl.h"
#include "tags/byte_source.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

struct Mp3FileInfo;

// One frame of an ID3v2 tag.
struct Id3Frame {
    char identifier[5];      // four characters and a zero
    const char* description; // of the identifier, from the frame table; never freed
    std::int32_t size;       // bytes of `data` less its zero: what the frame states, or what a torn tag has of it
    std::uint16_t flags;
    std::vector<std::byte> data; // the frame's data and one zero byte
};

// The header of an ID3v2 tag as it stands in the file.
struct Id3v2Header {
    char magic[3];
    std::uint8_t version;
    std::uint8_t revision;
    std::uint8_t flags;
    std::uint8_t size[4]; // seven bits each, the first the most significant
};

// The ID3v1 block as it stands in the file. No text is terminated.
struct Id3v1Tag {
    char magic[3];
    char title[30];
    char artist[30];
    char album[30];
    char year[4];
    char comment[28];
    std::uint8_t zero;
    std::uint8_t track;
    std::uint8_t genre;
};
static_assert(sizeof(Id3v2Header) == 10 && sizeof(Id3v1Tag) == 128);

enum class TagFrames { Skip, Read };

// Fills the tag header and the tag size of `info` and, when asked, its frame list. kTagOk with or without a tag,
// kTagNothingOpen for a null source. The tag size leaves out the 10 header bytes; it is what the header states, but
// with frames read no more than the file has.
int ReadId3v2(ByteSource* source, Mp3FileInfo& info, TagFrames frames);

// Empties `list` without freeing what it holds, then fills it with new Id3Frame records from a tag's bytes behind its
// header, up to the first frame that is empty or not in the frame table, and no more than kMostTagFrames.
void ParseId3v2Frames(CPtrListCtrl& list, std::span<const std::byte> body);

// 1 and the description set when the frame table knows the identifier, letters compared without case; else 0.
int LookupFrameDescription(Id3Frame& frame);

// Fills the ID3v1 block of `info`; without a tag only its first three bytes are set, in a file under 128 bytes none.
// kTagNothingOpen for a null source.
int ReadId3v1(ByteSource* source, Mp3FileInfo& info);

// Whether the block holds a tag.
bool HasId3v1(const Id3v1Tag& tag);

// Frees every frame and empties the list.
void FreeId3Frames(CPtrListCtrl& list);
