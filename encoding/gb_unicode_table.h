// The published GB2312 to Unicode mapping of the hanzi 0xB0A1 to 0xDDF9, made by tools/encoding/make_tables.
#pragma once

#include <cstdint>

inline constexpr int kGbFirstHanziLead = 0xB0;
inline constexpr int kGbLastHanziLead = 0xDD;
inline constexpr int kGbFirstTrail = 0xA1;
inline constexpr int kGbLastTrail = 0xFE;

// One row per lead byte, one column per trail byte; 0 where there is no character: 0xD7FA to 0xD7FE and 0xDDFA to
// 0xDDFE.
extern const std::uint16_t kGbToUnicode[kGbLastHanziLead - kGbFirstHanziLead + 1][kGbLastTrail - kGbFirstTrail + 1];
