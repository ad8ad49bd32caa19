#include "library/tag_title.h"

#include "library/tag_text.h"
#include "tags/id3_frame_search.h"

#include <utility>

namespace {

constexpr std::size_t kMostTitleBytes = 1024;

WString WithoutBlanksAtTheEnd(WString text)
{
    text.resize(text.find_last_not_of(TEXT(" \t\r\n")) + 1);
    return text;
}

} // namespace

WString Mp3Title(ByteSource& source, const Mp3FileInfo& info)
{
    WString title;
    if (info.id3v2TagBytes > 0)
        title = DecodeTextFrame(
            FindId3v2Frame(source, info.id3v2TagBytes, info.id3v2Header.version, "TIT2", kMostTitleBytes));
    title = WithoutBlanksAtTheEnd(std::move(title));
    if (title.empty() && HasId3v1(info.id3v1))
        title = WithoutBlanksAtTheEnd(DecodeTextWithoutCodePage(std::as_bytes(std::span(info.id3v1.title))));
    return title;
}

WString WmaTitle(const WmaInfo& info)
{
    return WithoutBlanksAtTheEnd(info.title);
}
