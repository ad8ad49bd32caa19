#include "platform/linux/kernel/radio_calls.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace cardsong::kernel {
namespace {

class SystemRadioCalls final : public RadioCalls {
public:
    int Open(const char* path, int flags) override { return open(path, flags); }
    int Control(int descriptor, unsigned long request, void* argument) override
    {
        return static_cast<int>(TEMP_FAILURE_RETRY(ioctl(descriptor, request, argument)));
    }
    void Close(int descriptor) override { close(descriptor); }
};

RadioCalls*& Installed()
{
    static RadioCalls* s_calls = nullptr;
    return s_calls;
}

} // namespace

void InstallRadioCalls(RadioCalls* calls)
{
    Installed() = calls;
}

RadioCalls& CurrentRadioCalls()
{
    static auto* const s_system = new SystemRadioCalls;
    return Installed() ? *Installed() : *s_system;
}

} // namespace cardsong::kernel
