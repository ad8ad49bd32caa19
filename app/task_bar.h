// The device's task bar, which the player covers.
#pragma once

void HideTaskBar();
void ShowTaskBar();
