// Texts in tags, turned to Unicode. Knows no file and no kind of song.
#pragma once

#include "platform/ce.h"

#include <cstddef>
#include <span>

// 8-bit text, up to its end or a zero, whose code page nobody noted: Chinese, else Latin-1.
[[nodiscard]] WString DecodeTextWithoutCodePage(std::span<const std::byte> bytes);

// The contents of an ID3v2 text frame: a byte that names the encoding, then the text, up to its end or a zero. Empty
// for an unknown encoding.
[[nodiscard]] WString DecodeTextFrame(std::span<const std::byte> frame);
