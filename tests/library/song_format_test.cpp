#include "library/song_format.h"

#include <gtest/gtest.h>

namespace {

TEST(SongFormatOf, AFileIsToldByTheEndOfItsName)
{
    EXPECT_EQ(SongFormatOf(TEXT("song.mp3")), SongFormat::Mp3);
    EXPECT_EQ(SongFormatOf(TEXT("Song.Mp3")), SongFormat::Mp3);
    EXPECT_EQ(SongFormatOf(TEXT("\\SDMMC\\song.wma")), SongFormat::Wma);
    EXPECT_EQ(SongFormatOf(TEXT("song.mp3.WMA")), SongFormat::Wma);
}

TEST(SongFormatOf, NoOtherNameHasOne)
{
    for (const WCHAR* name :
         { TEXT("song.ogg"), TEXT("song.mp3.txt"), TEXT("mp3"), TEXT("wma"), TEXT("song.mp"), TEXT("") })
        EXPECT_EQ(SongFormatOf(name), std::nullopt);
    EXPECT_EQ(SongFormatOf(nullptr), std::nullopt);
}

} // namespace
