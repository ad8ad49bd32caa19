// Files of the device opened for reading bytes.
#pragma once

#include "common/unique_handle.h"

#include <cstdio>

struct FileStreamTraits : NullWhenNone<std::FILE*> {
    static void Close(std::FILE* file) { std::fclose(file); }
};
using UniqueFileStream = UniqueHandle<FileStreamTraits>;

// Without a buffer: its readers read in blocks of their own. None when the file cannot be opened or `path` is null.
UniqueFileStream OpenForReading(const WCHAR* path);
