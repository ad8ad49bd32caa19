// The calls that reach the radios of this machine, so that tests can answer in their place.
#pragma once

namespace cardsong::kernel {

// Arguments, results and errno are those of open, ioctl and close.
class RadioCalls {
public:
    virtual ~RadioCalls() = default;
    virtual int Open(const char* path, int flags) = 0;
    virtual int Control(int descriptor, unsigned long request, void* argument) = 0;
    virtual void Close(int descriptor) = 0;
};

// Borrowed until the next call; null puts the system's own back.
void InstallRadioCalls(RadioCalls* calls);
RadioCalls& CurrentRadioCalls();

} // namespace cardsong::kernel
