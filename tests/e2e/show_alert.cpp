// Shows an alert with the sound that its argument asks for, until its input ends. For alert_sounds.py.
#include "gui/alert_message_window.h"
#include "platform/device_tree.h"
#include "platform/linux/sound/sound_player.h"

#include <chrono>
#include <cstdlib>
#include <iostream>

// DEVICE INSTALLED SOUND: two folders, and an AlertSound.
int main(int, char** arguments)
{
    cardsong::kernel::DeviceTree tree;
    tree.userDirectory = arguments[1];
    tree.systemDirectory = arguments[2];
    cardsong::kernel::InstallDeviceTree(tree);
    {
        CAlertMessageWin alert;
        alert.Prepare(nullptr, TEXT("Battery"), TEXT("The battery is low."), kAlertInfo, std::atoi(arguments[3]), 0, 0);
        if (alert.Show() == nullptr)
            return 1;
        std::cin.get();
    }
    PlaySoundW(nullptr, nullptr, 0);
    return cardsong::sound::EndSound(std::chrono::milliseconds(60)) ? 0 : 1;
}
