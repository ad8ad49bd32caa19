// The names of the ID3v2 frames.
#pragma once

#include <cstddef>
#include <span>

// The description of a frame by its four-byte identifier, letters compared without case; null for an unknown one.
const char* FrameDescription(std::span<const std::byte> identifier);
