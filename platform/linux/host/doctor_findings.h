// What the doctor looks at, one function a line of its answer. Each may hang, crash or end the process, and keeps
// threads: it has a process of its own.
#pragma once

#include "platform/linux/host/doctor.h"

namespace cardsong::host {

[[nodiscard]] Finding LookAtDisplay(const Options& options);
[[nodiscard]] Finding LookAtSound(const Options& options);
[[nodiscard]] Finding LookAtMp3(const Options& options);
[[nodiscard]] Finding LookAtWma(const Options& options);
[[nodiscard]] Finding LookAtCard(const Options& options);
[[nodiscard]] Finding LookAtSkin(const Options& options);
[[nodiscard]] Finding LookAtTexts(const Options& options);
[[nodiscard]] Finding LookAtFonts(const Options& options);
[[nodiscard]] Finding LookAtDeviceFolder(const Options& options);
[[nodiscard]] Finding LookAtBus(const Options& options);

} // namespace cardsong::host
