#include "lyrics/lyrics_context.h"

#include "lyrics/embedded_lyrics.h"
#include "lyrics/lyrics_file.h"
#include "lyrics/lyrics_file_search.h"
#include "lyrics/lyrics_folder.h"
#include "lyrics/lyrics_parser.h"

namespace {

// The path of the song's lyrics file; empty when neither folder has one.
WString FindFileOfSong(const WString& songPath, const WString& lyricsFolder)
{
    for (const WString& folder : { FolderOfPath(songPath), lyricsFolder }) {
        if (const auto name = FindLyricsFile(folder, songPath.c_str()))
            return PathInFolder(folder, *name);
    }
    return {};
}

} // namespace

LyricsContext::LyricsContext(LANGID uiLanguage) : m_uiLanguage(uiLanguage) {}

LyricsContext::~LyricsContext()
{
    Clear();
}

void LyricsContext::Clear()
{
    LyricList(m_list).FreeAll();
    m_positions = {};
    m_currentLineSize = {};
}

int LyricsContext::AddLine(std::int32_t timeMs, WStringView text)
{
    return LyricList(m_list).Add(timeMs, std::make_shared<const WString>(text));
}

void LyricsContext::ParseText(WStringView text)
{
    Clear();
    const LyricList lines(m_list);
    ParseLrcText(text, lines);
    if (lines.IsEmpty()) {
        ShowPlaceholders();
        return;
    }
    if (lines.At(0).timeMs > 0)
        lines.Add(0, SongTitle());
    m_hasLyrics = true;
}

void LyricsContext::LoadBytes(const LyricsBytes& bytes, std::int32_t codePage)
{
    ParseText(DecodeLyrics(bytes, codePage, m_uiLanguage, Utf8()));
}

void LyricsContext::LoadFile(const WCHAR* path)
{
    if (const auto bytes = ReadLyricsFile(path))
        LoadBytes(*bytes, kDetectCodePage);
    else
        ShowPlaceholders();
}

void LyricsContext::ShowPlaceholders()
{
    Clear();
    const LyricText title = SongTitle();
    for (int i = 0; i < kPlaceholderLines; ++i)
        LyricList(m_list).Add(i * kPlaceholderIntervalMs, title);
    m_hasLyrics = false;
}

int LyricsContext::FindForSong(const WCHAR* songPath)
{
    m_songPath = songPath != nullptr ? songPath : TEXT("");
    if (const auto embedded = FindEmbeddedLyrics(m_songPath.c_str())) {
        LoadBytes(embedded->bytes, embedded->codePage);
    } else {
        const WString file = FindFileOfSong(m_songPath, m_settings.folder);
        if (file.empty())
            return 0;
        LoadFile(file.c_str());
    }
    m_isReady = true;
    return 1;
}

void LyricsContext::ConvertToScript(char* destination, const char* source) const
{
    ConvertToUiScript(destination, source, m_uiLanguage);
}

void LyricsContext::ReloadSettings()
{
    m_settings = LoadLyricsSettings();
    EnsureFolder(m_settings.folder);
}

void LyricsContext::SetFolder(WStringView path)
{
    m_settings.folder = path;
    EnsureFolder(path);
}

void LyricsContext::SetColors(COLORREF playColor, COLORREF nextColor, COLORREF backgroundColor, DWORD isTransparent)
{
    m_settings.playColor = playColor;
    m_settings.nextColor = nextColor;
    m_settings.backgroundColor = backgroundColor;
    m_settings.isTransparent = isTransparent;
}

void LyricsContext::SetStripRect(const RECT* rect)
{
    if (rect != nullptr)
        m_stripRect = ClippedStripRect(*rect);
}

LyricText LyricsContext::SongTitle() const
{
    return std::make_shared<const WString>(m_titlePrefix + NameOfSong(m_songPath.c_str()));
}
