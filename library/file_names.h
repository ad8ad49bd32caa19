// Questions about file names and paths of the device. It knows no song, list or tag, so that playback/ may use it.
#pragma once

#include "platform/ce.h"

// A path of the device with its zero; longer ones are out of reach.
inline constexpr std::size_t kPathUnits = 260;
using PathBuffer = WCHAR[kPathUnits];

// The folder in which the storage card appears.
inline constexpr const WCHAR* kCardFolder = TEXT("\\SDMMC");

// 1 when `name` ends in `ext` (".mp3"), letters compared without case; 0 when not, and when `ext` is empty.
int HasExtension(const WCHAR* name, const WCHAR* ext);

// What follows the last backslash within the first 260 units; a path without one is its own name. Cut to fit `out`,
// which may lie over `path`. 0 for a null path or an empty name.
int GetFileNameFromPath(const WCHAR* path, PathBuffer& out);

// `name` up to its last ".". Cut to fit `out`, which may lie over `name`. 0 for null or when nothing is left.
int StripExtension(const WCHAR* name, PathBuffer& out);

// 1 when `path`, less one trailing backslash, names a file; 0 for a folder, for nothing there and for null.
int FileExists(const WCHAR* path);
