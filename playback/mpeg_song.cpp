#include "playback/mpeg_song.h"

#include "playback/mpeg_info_frame.h"
#include "playback/tags_around_sound.h"

#include <algorithm>
#include <cmath>

namespace cardsong::playback {

namespace {

// The first look is enough for nearly every song. The second is as far as we go.
constexpr std::uint64_t kReaches[] = { 16 * 1024, 1024 * 1024 };

// Frames of low bit rates borrow from up to nine in front of them (511 bytes, ISO/IEC 11172-3, 2.4.3.4), and a decoder
// needs one more to overlap with.
constexpr int kLeadFrames = 12;

// A bit rate that is the same in so many places of a song is constant.
constexpr int kSpots = 24;
constexpr std::size_t kSpotBytes = 4096;

// Frames are counted so far: no usual song is longer.
constexpr std::uint64_t kMostCountedBytes = 64 * 1024 * 1024;

constexpr double kIndexSeconds = 5.0;

// A told length that does not fit the bytes that are there belongs to a file that was cut or joined.
constexpr std::uint64_t kToldSlackBytes = 4096;
constexpr std::uint64_t kFewestFrameBytes = 24; // 8 kb/s at 24 kHz

} // namespace

std::unique_ptr<MpegSong> MpegSong::Open(std::unique_ptr<SongFile> file)
{
    if (!file)
        return nullptr;
    std::unique_ptr<MpegSong> song(new MpegSong(std::move(file)));
    song->m_sound = FindSound(*song->m_file);
    std::optional<MpegRun> run;
    for (const std::uint64_t reach : kReaches) {
        if (!run)
            run = FindMpegRun(*song->m_file, song->m_sound, song->m_sound.begin, song->m_sound.begin + reach);
    }
    const auto header = run ? FrameAt(*song->m_file, *run, run->offset, song->m_sound.end) : std::nullopt;
    if (!header)
        return nullptr;
    song->m_header = *header;
    song->m_start = { *run, run->offset, 0.0 };
    song->TakeInfoFrame();
    song->m_next = song->m_start;
    if (!song->Next())
        return nullptr;
    song->m_next = song->m_start;
    song->m_seconds = song->MeasureSeconds();
    return song;
}

void MpegSong::TakeInfoFrame()
{
    const auto info = ReadMpegInfo(m_file->At(m_start.offset, m_header.frameBytes), m_header);
    if (!info)
        return;
    const std::uint64_t bytes = m_sound.end - m_start.offset;
    const std::uint64_t told = info->bytes;
    if ((told == 0 || (told > bytes ? told - bytes : bytes - told) <= kToldSlackBytes) &&
        info->frames <= bytes / kFewestFrameBytes)
        m_toldFrames = info->frames;
    m_start.offset += m_header.frameBytes;
}

double MpegSong::MeasureSeconds()
{
    if (m_toldFrames != 0)
        return m_toldFrames * m_header.Seconds();
    if (const auto frameBytes = ConstantFrameBytes())
        return std::round(static_cast<double>(m_sound.end - m_start.offset) / *frameBytes) * m_header.Seconds();
    return CountSeconds();
}

// Exact up to kMostCountedBytes. What lies behind counts as what was seen before it.
double MpegSong::CountSeconds()
{
    Place place = m_start;
    const std::uint64_t reach = m_start.offset + kMostCountedBytes;
    while (place.offset < reach) {
        const auto header = Settle(place, reach);
        if (!header)
            return place.seconds;
        Pass(place, *header);
        if (m_index.empty() || place.seconds - m_index.back().seconds >= kIndexSeconds)
            m_index.push_back(place);
    }
    const auto seen = static_cast<double>(place.offset - m_start.offset);
    return place.seconds * static_cast<double>(m_sound.end - m_start.offset) / seen;
}

void MpegSong::GoTo(double seconds)
{
    if (!(seconds > 0.0)) {
        m_next = m_start;
        return;
    }
    const double lead = std::max(0.0, seconds - kLeadFrames * m_header.Seconds());
    const auto constant = ConstantPlace(lead);
    m_next = constant ? *constant : WalkedPlace(lead);
}

std::optional<MpegSong::Frame> MpegSong::Next()
{
    const auto header = Settle(m_next, m_sound.end);
    if (!header)
        return std::nullopt;
    Frame frame;
    frame.bytes = m_file->At(m_next.offset, header->frameBytes);
    if (frame.bytes.size() < header->frameBytes)
        return std::nullopt;
    frame.startSeconds = m_next.seconds;
    Pass(m_next, *header);
    frame.endSeconds = m_next.seconds;
    return frame;
}

// Moves the place to the next frame unless it is a frame's already. That frame may be of another kind: some files are
// several songs joined.
std::optional<MpegHeader> MpegSong::Settle(Place& place, std::uint64_t reach)
{
    if (const auto header = FrameAt(*m_file, place.run, place.offset, m_sound.end))
        return header;
    const auto run = FindMpegRun(*m_file, m_sound, place.offset, reach, &m_isCancelled);
    if (!run)
        return std::nullopt;
    place.run = *run;
    place.offset = run->offset;
    return FrameAt(*m_file, place.run, place.offset, m_sound.end);
}

void MpegSong::Pass(Place& place, const MpegHeader& header) const
{
    place.offset += header.frameBytes;
    place.seconds += header.Seconds();
}

// Some encoders never pad a frame. So the mean is measured, not worked out from the bit rate.
void MpegSong::MeasureConstancy()
{
    m_constancyIsKnown = true;
    if (m_header.bitsPerSecond == 0)
        return;
    int padded = 0, frames = 0;
    const std::uint64_t bytes = m_sound.end - m_start.offset;
    for (std::uint64_t spot = 0; spot < kSpots; ++spot) {
        const std::uint64_t begin = m_start.offset + bytes * spot / kSpots;
        const auto run = FindMpegRun(*m_file, m_sound, begin, begin + kSpotBytes);
        if (!run)
            return;
        std::uint64_t offset = run->offset;
        while (const auto header = FrameAt(*m_file, *run, offset, std::min(begin + kSpotBytes, m_sound.end))) {
            if (header->bitsPerSecond != m_header.bitsPerSecond ||
                header->samplesPerSecond != m_header.samplesPerSecond || header->samples != m_header.samples)
                return;
            padded += header->paddingBytes != 0 ? 1 : 0;
            ++frames;
            offset += header->frameBytes;
        }
    }
    const auto bare = static_cast<double>(m_header.frameBytes - m_header.paddingBytes);
    if (padded == 0)
        m_constantFrameBytes = bare;
    else
        m_constantFrameBytes = m_header.bitsPerSecond / 8.0 * m_header.Seconds();
}

std::optional<double> MpegSong::ConstantFrameBytes()
{
    if (!m_constancyIsKnown)
        MeasureConstancy();
    return m_constantFrameBytes > 0.0 ? std::optional(m_constantFrameBytes) : std::nullopt;
}

std::optional<MpegSong::Place> MpegSong::ConstantPlace(double seconds)
{
    const auto frameBytes = ConstantFrameBytes();
    if (!frameBytes)
        return std::nullopt;
    const double number = std::floor(std::min(seconds, m_seconds) / m_header.Seconds());
    const auto begin = m_start.offset + static_cast<std::uint64_t>(std::max(0.0, (number - 0.5) * *frameBytes));
    const auto run = FindMpegRun(*m_file, m_sound, begin, begin + SongFile::kMostAtOnce);
    if (!run || !IsOfOneKind(run->word, m_start.run.word))
        return std::nullopt;
    const double found = std::round(static_cast<double>(run->offset - m_start.offset) / *frameBytes);
    return Place{ *run, run->offset, found * m_header.Seconds() };
}

MpegSong::Place MpegSong::WalkedPlace(double seconds)
{
    const auto behind = std::upper_bound(m_index.begin(), m_index.end(), seconds,
                                         [](double wanted, const Place& place) { return wanted < place.seconds; });
    Place place = behind == m_index.begin() ? m_start : *std::prev(behind);
    for (;;) {
        Place next = place;
        const auto header = Settle(next, m_sound.end);
        if (!header)
            return next;
        place = next;
        Pass(next, *header);
        if (next.seconds > seconds)
            return place;
        place = next;
        if (m_index.empty() ? next.seconds >= kIndexSeconds : next.seconds - m_index.back().seconds >= kIndexSeconds)
            m_index.push_back(place);
    }
}

} // namespace cardsong::playback
