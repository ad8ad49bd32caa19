#include "app/task_bar.h"

#include "platform/ce.h"

namespace {

void Show(int command)
{
    if (const HWND taskBar = FindWindowW(TEXT("HHTaskBar"), nullptr); taskBar != nullptr)
        ShowWindow(taskBar, command);
}

} // namespace

void HideTaskBar()
{
    Show(SW_HIDE);
}

void ShowTaskBar()
{
    Show(SW_SHOW);
}
