// Puts the device's folders, as the command line names them, in force for this process.
#pragma once

#include "platform/host/options.h"

#include <filesystem>

namespace cardsong::host {

// The file of this very program.
[[nodiscard]] std::filesystem::path ProgramFile();

// `skin`: its folder; empty: the installed one.
void LayOutDevice(const Options& options, const std::filesystem::path& installedTree,
                  const std::filesystem::path& skin);

} // namespace cardsong::host
