// Cuts LRC text into groups: tags in brackets, and the text that they stand before. Lines mean nothing to it.
#pragma once

#include "platform/ce.h"

#include <vector>

struct LrcGroup {
    std::vector<std::int32_t> timesMs; // of its time tags, in their order; other tags are passed over
    WString text;                      // without control characters; may be empty
};

// Reads the groups of a text from its start to its end. `text` is borrowed.
class LrcGroups {
public:
    explicit LrcGroups(WStringView text) : m_rest(text) {}

    // False at the end: of the text, or at a "[" that no "]" follows, with which all that stands behind is dropped, and
    // the tags before it too.
    bool Next(LrcGroup& group);

private:
    bool TakeTags(std::vector<std::int32_t>& timesMs);

    WStringView m_rest;
};
