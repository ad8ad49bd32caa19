#include "common/file_stream.h"

UniqueFileStream OpenForReading(const WCHAR* path)
{
    if (path == nullptr)
        return {};
    UniqueFileStream file(_wfopen(path, TEXT("rb")));
    if (file)
        std::setvbuf(file.Get(), nullptr, _IONBF, 0);
    return file;
}
