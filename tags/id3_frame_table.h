// The names of the ID3v2 frames.
#pragma once

#include <cstddef>
#include <span>

// A tag has some twenty frames; more than this are the zeros or the noise of a damaged one, and are not looked at.
inline constexpr int kMostTagFrames = 1000;

// The description of a frame by its four-byte identifier, letters compared without case; null for an unknown one.
const char* FrameDescription(std::span<const std::byte> identifier);
