#include "encoding/gb_unicode_text.h"

#include "encoding/gb_unicode_table.h"

namespace {

// The character of a byte pair, 0 when the table does not know the pair.
Utf16Unit Hanzi(unsigned char lead, unsigned char trail)
{
    if (lead < kGbFirstHanziLead || lead > kGbLastHanziLead || trail < kGbFirstTrail || trail > kGbLastTrail)
        return 0;
    return static_cast<Utf16Unit>(kGbToUnicode[lead - kGbFirstHanziLead][trail - kGbFirstTrail]);
}

} // namespace

void gbToUnicode(const char* source, Utf16Unit* destination)
{
    for (; *source != 0; ++source, ++destination) {
        const Utf16Unit hanzi = Hanzi(static_cast<unsigned char>(source[0]), static_cast<unsigned char>(source[1]));
        if (hanzi != 0) {
            *destination = hanzi;
            ++source;
        } else {
            *destination = static_cast<Utf16Unit>(static_cast<signed char>(*source));
        }
    }
}
