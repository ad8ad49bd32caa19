// Which of a song's tags names its title. Titles lose the blanks at their end; empty: none.
#pragma once

#include "platform/ce.h"
#include "tags/byte_source.h"
#include "tags/mp3_info.h"
#include "tags/wma_info.h"

// The ID3v2 title, else the ID3v1 title. `source`: the song that `info` was read from.
[[nodiscard]] WString Mp3Title(ByteSource& source, const Mp3FileInfo& info);
[[nodiscard]] WString WmaTitle(const WmaInfo& info);
