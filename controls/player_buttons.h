// The row of transport buttons of a player, for music or video. Knows no player and no meaning of a command.
#pragma once

#include "controls/player_button_ids.h"
#include "gui/skin_button_row.h"

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
