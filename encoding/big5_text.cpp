#include "encoding/big5_text.h"

#include "encoding/big5_gb_tables.h"

namespace {

// The codes of one set in the order of its table.
struct Big5 {
    static constexpr unsigned kFirstTrail = kFirstBig5Trail;
    static constexpr unsigned kCodes = kBig5Rows * kBig5Columns;
    static constexpr const std::uint16_t* kCounterparts = kBig5ToGb;

    static unsigned Index(unsigned lead, unsigned trail)
    {
        return (lead - kFirstDoubleByteLead) * kBig5Columns + trail - kFirstTrail;
    }
};

// The free lead bytes 0xAA to 0xAF fall on the rows of 0xB0 to 0xB5, which stand in their place.
struct Gb2312 {
    static constexpr unsigned kFirstTrail = kFirstGbTrail;
    static constexpr unsigned kCodes = (kLastGbLead - kFirstDoubleByteLead + 1 - kGbFreeRows) * kGbColumns;
    static constexpr const std::uint16_t* kCounterparts = kGbToBig5;

    static unsigned Index(unsigned lead, unsigned trail)
    {
        const unsigned skipped = lead >= 0xB0 ? kGbFreeRows : 0;
        return (lead - kFirstDoubleByteLead - skipped) * kGbColumns + trail - kFirstTrail;
    }
};

// A trail byte of 0xFF stands one column behind its row and reads the next row's first; what stands behind the last row
// stays as it is.
template <typename Set>
unsigned Converted(unsigned lead, unsigned trail)
{
    const unsigned index = Set::Index(lead, trail);
    return index < Set::kCodes ? Set::kCounterparts[index] : lead | trail << 8;
}

unsigned Byte(const char* at)
{
    return static_cast<unsigned char>(*at);
}

// One loop for a run of pairs and one for a run of single bytes: text is made of runs. What comes next is read before a
// pair is written, so that a text can be converted in its place; a lead byte at the end finds the terminating zero for
// its trail byte, which is below every other.
template <typename Set>
void Convert(const char* source, char* destination)
{
    if (source == nullptr || destination == nullptr)
        return;
    unsigned lead = Byte(source);
    for (;;) {
        while (lead >= kFirstDoubleByteLead && Byte(source + 1) >= Set::kFirstTrail) {
            const unsigned pair = Converted<Set>(lead, Byte(source + 1));
            source += 2;
            lead = Byte(source);
            *destination++ = static_cast<char>(pair);
            *destination++ = static_cast<char>(pair >> 8);
        }
        do {
            *destination++ = static_cast<char>(lead);
            if (lead == 0)
                return;
            lead = Byte(++source);
        } while (lead < kFirstDoubleByteLead);
    }
}

} // namespace

void Big5ToGb(const char* source, char* destination)
{
    Convert<Big5>(source, destination);
}

void GbToBig5(const char* source, char* destination)
{
    Convert<Gb2312>(source, destination);
}
