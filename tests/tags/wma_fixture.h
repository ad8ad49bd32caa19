// A WMA song read from memory, and what was read of it.
#pragma once

#include "tags/wma_info.h"
#include "tests/tags/wma_bytes.h"

#include <gtest/gtest.h>

#include <memory>

namespace cardsong::test::wma {

class WmaFixture : public testing::Test {
protected:
    int Read(const Bytes& bytes)
    {
        info = std::make_unique<WmaInfo>();
        info->trackNumber = 99;
        MemorySource source(bytes);
        return ReadWmaInfo(source, *info);
    }
    std::unique_ptr<WmaInfo> info;
};

} // namespace cardsong::test::wma
