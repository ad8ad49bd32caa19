// Volume and balance as the chain's elements take them, from hundredths of a decibel.
#pragma once

namespace cardsong::playback {

// By what the amplitude is multiplied: 1 for kLoudest, 0 for kSilent and below.
[[nodiscard]] double FactorOf(long volume);

// -1 to 1: the share by which the other side's amplitude is lowered, with the sign of the side that stays.
[[nodiscard]] double SideOf(long balance);

} // namespace cardsong::playback
