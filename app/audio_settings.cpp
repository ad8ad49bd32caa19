#include "app/audio_settings.h"

#include "platform/ce.h"

void StartAudioSettings()
{
    WCHAR arguments[] = TEXT("-s");
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(TEXT("TAVO_SET_AUDIO.exe"), arguments, nullptr, nullptr, FALSE, CREATE_NEW_CONSOLE, nullptr,
                        nullptr, nullptr, &process))
        return;
    CloseHandle(process.hProcess);
    CloseHandle(process.hThread);
}
