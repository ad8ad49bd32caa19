// Finds one frame of an ID3v2 tag (id3.org: ID3v2.3.0, ID3v2.4.0) without reading the others, which may be pictures.
#pragma once

#include "tags/byte_source.h"

#include <cstdint>
#include <string_view>
#include <vector>

// The data of the first frame with this identifier (four characters), at most `mostBytes` of it; empty when there is no
// such frame. `tagBytes` is the size that the tag's header states, `version` its version; sizes of frames have seven
// bits a byte from version 4 on.
std::vector<std::byte> FindId3v2Frame(ByteSource& source, std::uint32_t tagBytes, std::uint8_t version,
                                      std::string_view identifier, std::size_t mostBytes);
