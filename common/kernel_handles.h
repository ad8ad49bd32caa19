// Open files, kernel objects and modules that close themselves.
#pragma once

#include "common/unique_handle.h"

// Of CreateFileW.
struct FileTraits : InvalidWhenNone {
    static void Close(HANDLE file) { CloseHandle(file); }
};
using UniqueFile = UniqueHandle<FileTraits>;

// Of CreateEventW, CreateProcessW and their like.
struct KernelObjectTraits : NullWhenNone<HANDLE> {
    static void Close(HANDLE object) { CloseHandle(object); }
};
using UniqueKernelObject = UniqueHandle<KernelObjectTraits>;

// Of LoadLibraryExW.
struct ModuleTraits : NullWhenNone<HMODULE> {
    static void Close(HMODULE module) { FreeLibrary(module); }
};
using UniqueModule = UniqueHandle<ModuleTraits>;
