// Which GB2312 code stands for which Big5 code, and back: the published pairing of simplified and traditional
// characters decides (Open Chinese Convert, Apache License 2.0, as Debian's libopencc-data has it), then the character
// itself, then the C library's pairing of the two sets. Made by tools/encoding/make_tables.
#pragma once

#include <cstdint>

inline constexpr unsigned kFirstDoubleByteLead = 0xA1; // of both sets

inline constexpr unsigned kLastBig5Lead = 0xF9;
inline constexpr unsigned kFirstBig5Trail = 0x40;
inline constexpr unsigned kBig5Rows = kLastBig5Lead - kFirstDoubleByteLead + 1;
inline constexpr unsigned kBig5Columns = 0xFE - kFirstBig5Trail + 1;

inline constexpr unsigned kLastGbLead = 0xF7;
inline constexpr unsigned kFirstGbTrail = 0xA1;
inline constexpr unsigned kGbFreeRows = 6; // 0xAA to 0xAF hold nothing in GB2312 and have no row of their own
inline constexpr unsigned kGbRows = 0xFE - kFirstDoubleByteLead + 1 - kGbFreeRows;
inline constexpr unsigned kGbColumns = 0xFE - kFirstGbTrail + 1;

// Row by row, one for each lead byte, with a column for each trail byte. The low 8 bits of an entry are its lead byte,
// the high 8 its trail byte. A code without a counterpart has the white square: 0xA1F5 in GB2312, 0xA1BC in Big5.
extern const std::uint16_t kBig5ToGb[kBig5Rows * kBig5Columns];
extern const std::uint16_t kGbToBig5[kGbRows * kGbColumns];
