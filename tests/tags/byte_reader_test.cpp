#include "tags/byte_reader.h"

#include "tests/tags/bytes.h"

#include <gtest/gtest.h>

namespace {

using cardsong::test::Bytes;

TEST(ByteReader, ReadsLittleAndBigEndianNumbers)
{
    const Bytes bytes("\x01\x02\x03\x04\x05\x06\x07\x88");
    EXPECT_EQ(ByteReader(bytes).U16Le(), 0x0201);
    EXPECT_EQ(ByteReader(bytes).U32Le(), 0x04030201u);
    EXPECT_EQ(ByteReader(bytes).U64Le(), 0x8807060504030201u);
    EXPECT_EQ(ByteReader(bytes).U16Be(), 0x0102);
    EXPECT_EQ(ByteReader(bytes).U32Be(), 0x01020304u);
}

TEST(ByteReader, GoesOnWhereItStopped)
{
    const Bytes bytes("\x01\x02\x03\x04\x05");
    ByteReader reader(bytes);
    reader.Skip(1);
    EXPECT_EQ(reader.U16Be(), 0x0203);
    EXPECT_EQ(reader.RestBytes(), 2u);
    EXPECT_EQ(reader.Take(2).data(), bytes.data() + 3);
    EXPECT_EQ(reader.RestBytes(), 0u);
    EXPECT_TRUE(reader.Ok());
}

TEST(ByteReader, ANumberPastTheEndIsZeroAndAnError)
{
    const Bytes bytes("\x01");
    ByteReader reader(bytes);
    EXPECT_EQ(reader.U16Le(), 0);
    EXPECT_FALSE(reader.Ok());
}

TEST(ByteReader, TheErrorIsSticky)
{
    const Bytes bytes("\x01\x02\x03");
    ByteReader reader(bytes);
    reader.Skip(4);
    EXPECT_EQ(reader.RestBytes(), 0u);
    EXPECT_EQ(reader.U16Be(), 0);
    EXPECT_TRUE(reader.Take(0).empty());
    EXPECT_FALSE(reader.Ok());
}

TEST(ByteReader, NothingCanBeTakenFromNothing)
{
    ByteReader reader({});
    EXPECT_TRUE(reader.Take(0).empty());
    EXPECT_TRUE(reader.Ok());
}

} // namespace
