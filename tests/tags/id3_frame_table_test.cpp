// The names of the ID3v2 frames.
#include "tags/id3_tags.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

struct Row {
    const char* identifier;
    const char* description;
};

// As section 4 of ID3v2.3.0 lists them, its misspelt word included, and RGAD.
// clang-format off
constexpr Row kRows[] = {
    { "AENC", "Audio encryption" },
    { "APIC", "Attached picture" },
    { "COMM", "Comments" },
    { "COMR", "Commercial frame" },
    { "ENCR", "Encryption method registration" },
    { "EQUA", "Equalization" },
    { "ETCO", "Event timing codes" },
    { "GEOB", "General encapsulated object" },
    { "GRID", "Group identification registration" },
    { "IPLS", "Involved people list" },
    { "LINK", "Linked information" },
    { "MCDI", "Music CD identifier" },
    { "MLLT", "MPEG location lookup table" },
    { "OWNE", "Ownership frame" },
    { "PRIV", "Private frame" },
    { "PCNT", "Play counter" },
    { "POPM", "Popularimeter" },
    { "POSS", "Position synchronisation frame" },
    { "RBUF", "Recommended buffer size" },
    { "RGAD", "Replay Gain Adjustment" },
    { "RVAD", "Relative volume adjustment" },
    { "RVRB", "Reverb" },
    { "SYLT", "Synchronized lyric/text" },
    { "SYTC", "Synchronized tempo codes" },
    { "TALB", "Album/Movie/Show title" },
    { "TBPM", "BPM (beats per minute)" },
    { "TCOM", "Composer" },
    { "TCON", "Content type" },
    { "TCOP", "Copyright message" },
    { "TDAT", "Date" },
    { "TDLY", "Playlist delay" },
    { "TENC", "Encoded by" },
    { "TEXT", "Lyricist/Text writer" },
    { "TFLT", "File type" },
    { "TIME", "Time" },
    { "TIT1", "Content group description" },
    { "TIT2", "Title/songname/content description" },
    { "TIT3", "Subtitle/Description refinement" },
    { "TKEY", "Initial key" },
    { "TLAN", "Language(s)" },
    { "TLEN", "Length" },
    { "TMED", "Media type" },
    { "TOAL", "Original album/movie/show title" },
    { "TOFN", "Original filename" },
    { "TOLY", "Original lyricist(s)/text writer(s)" },
    { "TOPE", "Original artist(s)/performer(s)" },
    { "TORY", "Original release year" },
    { "TOWN", "File owner/licensee" },
    { "TPE1", "Lead performer(s)/Soloist(s)" },
    { "TPE2", "Band/orchestra/accompaniment" },
    { "TPE3", "Conductor/performer refinement" },
    { "TPE4", "Interpreted, remixed, or otherwise modified by" },
    { "TPOS", "Part of a set" },
    { "TPUB", "Publisher" },
    { "TRCK", "Track number/Position in set" },
    { "TRDA", "Recording dates" },
    { "TRSN", "Internet radio station name" },
    { "TRSO", "Internet radio station owner" },
    { "TSIZ", "Size" },
    { "TSRC", "ISRC (international standard recording code)" },
    { "TSSE", "Software/Hardware and settings used for encoding" },
    { "TYER", "Year" },
    { "TXXX", "User defined text information frame" },
    { "UFID", "Unique file identifier" },
    { "USER", "Terms of use" },
    { "USLT", "Unsychronized lyric/text transcription" },
    { "WCOM", "Commercial information" },
    { "WCOP", "Copyright/Legal information" },
    { "WOAF", "Official audio file webpage" },
    { "WOAR", "Official artist/performer webpage" },
    { "WOAS", "Official audio source webpage" },
    { "WORS", "Official internet radio station homepage" },
    { "WPAY", "Payment" },
    { "WPUB", "Publishers official webpage" },
    { "WXXX", "User defined URL link frame" },
};
// clang-format on
static_assert(std::size(kRows) == 75);

Id3Frame Named(const std::string& identifier)
{
    Id3Frame frame = {};
    std::copy_n(identifier.begin(), 4, frame.identifier);
    return frame;
}

TEST(Id3FrameTable, EveryFrameHasTheStandardsName)
{
    for (const Row& row : kRows) {
        Id3Frame frame = Named(row.identifier);
        EXPECT_EQ(LookupFrameDescription(frame), 1) << row.identifier;
        EXPECT_STREQ(frame.description, row.description);
    }
}

TEST(Id3FrameTable, LettersAreComparedWithoutCase)
{
    for (const char* identifier : { "uslt", "Uslt", "usLT" }) {
        Id3Frame frame = Named(identifier);
        EXPECT_EQ(LookupFrameDescription(frame), 1) << identifier;
        EXPECT_STREQ(frame.description, "Unsychronized lyric/text transcription");
    }
}

TEST(Id3FrameTable, AnUnknownIdentifierKeepsTheDescription)
{
    for (const char* identifier : { "TDRC", "TIT4", "TT2 ", "USL\0", "\0\0\0\0" }) {
        Id3Frame frame = Named({ identifier, 4 });
        frame.description = "before";
        EXPECT_EQ(LookupFrameDescription(frame), 0) << identifier;
        EXPECT_STREQ(frame.description, "before");
    }
}

TEST(Id3FrameTable, OneLetterOffIsNoFrameUnlessTheStandardNamesIt)
{
    const auto isNamed = [](const std::string& identifier) {
        return std::any_of(std::begin(kRows), std::end(kRows),
                           [&identifier](const Row& row) { return identifier == row.identifier; });
    };
    for (const Row& row : kRows) {
        for (std::size_t place = 0; place < 4; ++place) {
            for (const char letter : std::string("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789")) {
                std::string identifier = row.identifier;
                identifier[place] = letter;
                Id3Frame frame = Named(identifier);
                ASSERT_EQ(LookupFrameDescription(frame), isNamed(identifier) ? 1 : 0) << identifier;
            }
        }
    }
}

} // namespace
