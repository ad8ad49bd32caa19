// The apartment of each thread: counted, since the media engine here needs none.
#include "platform/linux/ce/kernel.h"

namespace {

constexpr HRESULT kChangedMode = static_cast<HRESULT>(0x80010106);
constexpr DWORD kApartmentThreaded = 2;

thread_local unsigned t_initialisations = 0;
thread_local DWORD t_model = 0;

} // namespace

HRESULT CoInitializeEx(LPVOID, DWORD model)
{
    const DWORD wanted = model & kApartmentThreaded;
    if (t_initialisations == 0) {
        t_model = wanted;
        t_initialisations = 1;
        return S_OK;
    }
    if (wanted != t_model)
        return kChangedMode;
    ++t_initialisations;
    return S_FALSE;
}

void CoUninitialize()
{
    if (t_initialisations != 0)
        --t_initialisations;
}
