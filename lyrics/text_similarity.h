// How much of a song's name stands in another text: the measure by which a lyrics file is chosen. It knows no file.
#pragma once

#include "platform/ce.h"

// How many units other than spaces a text has.
std::int32_t UnitsWithoutSpaces(WStringView text);

// The greatest score of any alignment of the two. From a pair of places on, units are compared one by one: equal ones
// count 1, except a space; others end the alignment where `name` has no ASCII letter; two ASCII letters whose codes
// differ by 34 count 1, and other letters of `name` nothing. The time it takes grows with the product of the lengths.
//
// An alignment that cannot score more than `above` is left out: the result is then `above`.
std::int32_t TextSimilarity(WStringView name, WStringView text, std::int32_t above = 0);
