#include "tags/xing_header.h"

#include "tags/tag_results.h"
#include "tests/tags/bytes.h"

#include <gtest/gtest.h>

namespace {

using cardsong::test::Bytes;

// A first frame with `tag` at its place; frame count 0x01020304, byte count 0x05060708, contents 10 to 109, quality 1
// to 4.
Bytes Frame(const char* tag, std::uint32_t flags)
{
    Bytes bytes;
    bytes.Big(0xFFFB9004, 4).Fill(32).Text(tag).Big(flags, 4).Big(0x01020304, 4).Big(0x05060708, 4);
    for (int i = 0; i < 100; ++i)
        bytes.Fill(1, 10 + i);
    return bytes.Big(0x01020304, 4);
}

int Parse(const Bytes& bytes, XingInfo& xing)
{
    return ParseXingHeader(std::span(bytes).first<kXingReachBytes>(), xing);
}

TEST(XingHeader, AllFieldsAreReadWhenFlagged)
{
    XingInfo xing = {};
    ASSERT_EQ(Parse(Frame("Xing", 15), xing), kTagOk);
    EXPECT_EQ(xing.frameHeader[0], 0xFF);
    EXPECT_EQ(xing.frameHeader[3], 0x04);
    EXPECT_EQ(std::string(xing.tag, 4), "Xing");
    EXPECT_EQ(xing.flags, 15u);
    EXPECT_EQ(xing.frameCount, 0x01020304u);
    EXPECT_EQ(xing.byteCount, 0x05060708u);
    EXPECT_EQ(xing.tableOfContents[0], 10);
    EXPECT_EQ(xing.tableOfContents[99], 109);
    EXPECT_EQ(xing.quality[0], 1);
    EXPECT_EQ(xing.quality[3], 4);
}

TEST(XingHeader, AFieldIsReadFromItsPlaceWhateverOtherFlagsSay)
{
    XingInfo xing = {};
    ASSERT_EQ(Parse(Frame("XING", 1), xing), kTagOk);
    EXPECT_EQ(xing.frameCount, 0x01020304u);
    EXPECT_EQ(xing.byteCount, 0u);
    EXPECT_EQ(xing.tableOfContents[99], 0);
    EXPECT_EQ(xing.quality[0], 0);
    ASSERT_EQ(Parse(Frame("xing", 2), xing), kTagOk);
    EXPECT_EQ(xing.frameCount, 0u);
    EXPECT_EQ(xing.byteCount, 0x05060708u);
    ASSERT_EQ(Parse(Frame("Xing", 4), xing), kTagOk);
    EXPECT_EQ(xing.byteCount, 0u);
    EXPECT_EQ(xing.tableOfContents[0], 10);
    ASSERT_EQ(Parse(Frame("Xing", 8), xing), kTagOk);
    EXPECT_EQ(xing.tableOfContents[0], 0);
    EXPECT_EQ(xing.quality[3], 4);
}

TEST(XingHeader, AnInfoHeaderIsNone)
{
    XingInfo xing = {};
    EXPECT_EQ(Parse(Frame("Info", 15), xing), kTagBadData);
    EXPECT_EQ(std::string(xing.tag, 4), "Info");
    EXPECT_EQ(xing.frameHeader[1], 0xFB);
    EXPECT_EQ(xing.frameCount, 0u);
}

TEST(XingHeader, WhatTheFileHoldsIsKept)
{
    XingInfo xing = {};
    ASSERT_EQ(Parse(Frame("Xing", 15), xing), kTagOk);
    CompleteXingInfo(xing, 1000, 0, 417);
    EXPECT_EQ(xing.frameCount, 0x01020304u);
    EXPECT_EQ(xing.byteCount, 0x05060708u);
    EXPECT_EQ(xing.tableOfContents[1], 11);
}

TEST(XingHeader, AMissingByteCountIsTheFileSize)
{
    XingInfo xing = {};
    CompleteXingInfo(xing, 100'128 + 1000, 1000, 400);
    EXPECT_EQ(xing.byteCount, 101'128u);
    EXPECT_EQ(xing.frameCount, 250u);
}

TEST(XingHeader, AMissingFrameCountComesFromTheByteCount)
{
    XingInfo xing = {};
    xing.flags = 2;
    xing.byteCount = 128 + 999;
    CompleteXingInfo(xing, 1'000'000, 0, 100);
    EXPECT_EQ(xing.frameCount, 9u);
}

TEST(XingHeader, AByteCountBelowTheTagsGivesNoFrames)
{
    XingInfo xing = {};
    xing.flags = 2;
    xing.byteCount = 100;
    CompleteXingInfo(xing, 1'000'000, 0, 100);
    EXPECT_EQ(xing.frameCount, 0u);
}

TEST(XingHeader, AMissingTableOfContentsIsEven)
{
    XingInfo xing = {};
    CompleteXingInfo(xing, 100'050, 0, 417); // a step of 1000 bytes
    EXPECT_EQ(xing.tableOfContents[0], 0);
    EXPECT_EQ(xing.tableOfContents[1], 1000 * 256 / 100'050);
    EXPECT_EQ(xing.tableOfContents[50], 50 * 1000 * 256 / 100'050);
    EXPECT_EQ(xing.tableOfContents[99], 99 * 1000 * 256 / 100'050);
}

TEST(XingHeader, ATableOfContentsOfALargeFileDoesNotWrap)
{
    XingInfo xing = {};
    CompleteXingInfo(xing, 4'000'000'000, 0, 417);
    EXPECT_EQ(xing.tableOfContents[50], 128);
    EXPECT_EQ(xing.tableOfContents[99], 253);
}

TEST(XingHeader, AByteCountOfZeroDividesNothing)
{
    XingInfo xing = {};
    xing.flags = 2;
    CompleteXingInfo(xing, 1'000'000, 0, 417);
    EXPECT_EQ(xing.frameCount, 0u);
    EXPECT_EQ(xing.tableOfContents[99], 0);
}

TEST(AudioBytes, AreTheFileLessItsTagsAndNeverBelowZero)
{
    EXPECT_EQ(AudioBytes(1128, 0), 1000u);
    EXPECT_EQ(AudioBytes(1128, 999), 1u);
    EXPECT_EQ(AudioBytes(1128, 1000), 0u);
    EXPECT_EQ(AudioBytes(1128, 1001), 0u);
    EXPECT_EQ(AudioBytes(0, 0), 0u);
    EXPECT_EQ(AudioBytes(100, 0xFFFFFFFF), 0u);
}

} // namespace
