// Modules loaded for their resources, and what the rest of the layer may know of them.
#pragma once

#include "platform/linux/ce/kernel.h"

#include <cstddef>

namespace cardsong::kernel {

// The program's own resources are read anew at the next call: another device tree was installed.
void ForgetProgramResources();

// How many bytes of a loaded resource lie from `data` on; 0 when it lies in none that LoadResource has given out. For
// readers of templates, which get a bare pointer to foreign bytes.
std::size_t ResourceBytesFrom(const void* data);

} // namespace cardsong::kernel
