// The row of transport buttons of a player, for music or video. Knows no player and no meaning of a command.
#pragma once

#include "gui/skin_button_row.h"

// Commands that the buttons send, each the identity of one button.
constexpr WORD kCommandPrevious = 256;
constexpr WORD kCommandBack5 = 257;
constexpr WORD kCommandPlay = 258;
constexpr WORD kCommandPause = 259;
constexpr WORD kCommandStop = 260;
constexpr WORD kCommandForward5 = 261;
constexpr WORD kCommandNext = 262;
constexpr WORD kCommandShuffleOff = 263;
constexpr WORD kCommandShuffleOn = 264;
constexpr WORD kCommandRepeatOff = 265;
constexpr WORD kCommandRepeatAll = 266;
constexpr WORD kCommandRepeatSingle = 267;

enum class PlayerButtonKind { Music = 0, Video = 1 };

class PlayerButtonSet : public SkinButtonRow {
public:
    // Frees the images and forgets the buttons; their windows go with the owner.
    void Destroy() { ForgetButtons(); }

    PlayerButtonKind Kind() const { return m_kind; }

private:
    friend void CreatePlayerButtons(PlayerButtonSet& set, HWND owner, PlayerButtonKind kind);

    PlayerButtonKind m_kind = PlayerButtonKind::Music;
};

// Makes the buttons of `kind` as children of `owner`, in place of what the set held. Alternatives that share a place
// (play and pause, the two faces of shuffle, the three of repeat) are all visible: the owner shows the one it wants.
void CreatePlayerButtons(PlayerButtonSet& set, HWND owner, PlayerButtonKind kind);
