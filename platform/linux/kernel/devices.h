// The stream drivers of the device, each a row of a table: the card's disk "DSK3:", its host "SDH1:" and the FM
// transmitter "FMT0:". Knows no file.
#pragma once

#include "platform/linux/kernel/handles.h"

#include <string_view>

namespace cardsong::kernel {

class DeviceObject : public KernelObject {
public:
    // Answers a control code. `input`: as many bytes as the code says; may be null. ERROR_INVALID_FUNCTION for a code
    // that the driver does not know.
    virtual DWORD Control(DWORD code, const void* input) = 0;
};

// A handle to the driver; INVALID_HANDLE_VALUE and ERROR_FILE_NOT_FOUND when there is none: the card's drivers need a
// card, the transmitter one of this machine.
HANDLE OpenDevice(std::u16string_view name);

} // namespace cardsong::kernel
