// Guesses whether 8-bit text is GB2312 or Big5. It converts nothing.
#pragma once

#include <cstdint>

inline constexpr std::int32_t kNoCodePage = 0;
inline constexpr std::int32_t kCodePageGb2312 = 936;
inline constexpr std::int32_t kCodePageBig5 = 950;

// `text`: zero-terminated, not null. Returns kCodePageGb2312, kCodePageBig5, or kNoCodePage when no double-byte text is
// found. As many pairs of one as of the other count as GB2312. Keeps no state.
extern "C" std::int32_t GetCodePage(const char* text);
