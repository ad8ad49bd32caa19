// Every beginning of a song, as a card pulled out too early leaves it.
#pragma once

#include "tags/byte_source.h"
#include "tests/tags/bytes.h"

#include <gtest/gtest.h>

namespace cardsong::test {

// Calls `check(source, sizeBytes)` for each beginning of `whole`, from nothing to all of it, until a check fails.
template <typename Check>
void ForEveryBeginning(const Bytes& whole, const Check& check)
{
    for (std::size_t sizeBytes = 0; sizeBytes <= whole.size(); ++sizeBytes) {
        const auto bytes = Prefix(whole, sizeBytes);
        MemorySource source(bytes);
        check(source, sizeBytes);
        if (testing::Test::HasFailure())
            return;
    }
}

} // namespace cardsong::test
