#include "app/audio_settings.h"

#include "common/kernel_handles.h"

void StartAudioSettings()
{
    WCHAR arguments[] = TEXT("-s");
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(TEXT("TAVO_SET_AUDIO.exe"), arguments, nullptr, nullptr, FALSE, CREATE_NEW_CONSOLE, nullptr,
                        nullptr, nullptr, &process))
        return;
    const UniqueKernelObject started(process.hProcess);
    const UniqueKernelObject itsThread(process.hThread);
}
