// Whether a card lies in a host folder, and whether it is still the same one. Knows no watch and no window.
#pragma once

#include <optional>
#include <string>

#include <sys/types.h>

namespace cardsong::host {

// The folder as the file system tells it from every other.
struct CardIdentity {
    dev_t device;
    ino_t number;

    friend bool operator==(const CardIdentity&, const CardIdentity&) = default;
};

// The card at `folder`, or nothing. A folder is a card when something lies in it or a file system is mounted on it: one
// that is empty may be the place of a card that is away. `known`: the card that was there; while its folder is, it is
// there, even when all its files were deleted.
[[nodiscard]] std::optional<CardIdentity> FindCard(const std::string& folder, const std::optional<CardIdentity>& known);

} // namespace cardsong::host
