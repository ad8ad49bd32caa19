// Songs as lines of text, in the forms that a user can choose. It knows no command line and no terminal.
#pragma once

#include <cstdio>
#include <functional>
#include <span>
#include <string>
#include <string_view>

struct ListedSong {
    std::string path; // on this machine, in whatever bytes its name has
    std::string lengthMs;
    std::string title; // UTF-8; of a song without one, the file's name less the extension
};

struct ListingForm {
    std::string_view option; // that chooses it
    std::string_view help;   // one line
    std::string (*line)(const ListedSong& song);
};
// The first is the one that no option chooses: its texts are empty.
[[nodiscard]] std::span<const ListingForm> ListingForms();

// Writes a line for each song of the card in force, in the order of the scan. Tells `progress` the number of songs so
// far after each. Memory does not grow with the number of songs. False when `out` did not take everything.
bool WriteSongs(std::FILE* out, const ListingForm& form, const std::function<void(unsigned long)>& progress);
