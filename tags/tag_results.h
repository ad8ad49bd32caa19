// Results of the tag and stream readers.
#pragma once

inline constexpr int kTagOk = 0;
inline constexpr int kTagNothingOpen = -18;
inline constexpr int kTagBadData = -20;
