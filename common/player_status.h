// What the player does, as it tells other programs that ask: one text in the registry, so that an answer is read whole.
#pragma once

#include "platform/ce.h"

#include <cstdint>
#include <optional>

constexpr const WCHAR* kStatusKey = TEXT("CARDSONG"); // below HKEY_LOCAL_MACHINE
constexpr const WCHAR* kStatusValue = TEXT("Status");

// Names of states and repeat modes, as they are told.
constexpr const WCHAR* kStopped = TEXT("stopped");
constexpr const WCHAR* kPlaying = TEXT("playing");
constexpr const WCHAR* kPaused = TEXT("paused");
constexpr const WCHAR* kRepeatOff = TEXT("off");
constexpr const WCHAR* kRepeatAll = TEXT("all");
constexpr const WCHAR* kRepeatSingle = TEXT("single");

struct PlayerStatus {
    std::uint32_t request = 0; // the asker's number
    WString state = kStopped;
    std::int32_t number = 0; // 1-based place of the song in the play list; 0: none is loaded
    std::int32_t count = 0;  // of the songs in the play list
    std::int32_t positionMs = 0;
    std::int32_t lengthMs = 0; // 0: unknown
    bool shuffle = false;
    WString repeat = kRepeatOff;
    WString song; // its display title; empty: none is loaded

    bool operator==(const PlayerStatus&) const = default;
};

// "request=5 state=playing number=2 count=12 position_ms=61000 length_ms=245000 shuffle=0 repeat=all song=Title":
// always these fields in this order, the song with all its blanks. Control characters in it become blanks.
[[nodiscard]] WString StatusText(const PlayerStatus& status);
// Nothing for any other text.
[[nodiscard]] std::optional<PlayerStatus> ReadStatusText(WStringView text);

// False when the registry cannot be written.
bool StoreStatus(const PlayerStatus& status);
// The last answer stored, to whomever; nothing when there is none.
[[nodiscard]] std::optional<PlayerStatus> LoadStatus();
