// Calls a function that no device has, so that the check of such calls has something to find.
#include <windows.h>

DWORD AskForWhatNoDeviceHas()
{
    return GetLogicalDrives();
}
