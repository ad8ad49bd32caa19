#include "encoding/big5_gb_text.h"

#include "encoding/big5_gb_tables.h"

#include <array>

namespace {

using RowStarts = std::array<std::uint32_t, 256>;

// The codes of one set in the order of its table.
struct Big5 {
    static constexpr unsigned kFirstTrail = kFirstBig5Trail;
    static constexpr unsigned kCodes = kBig5Rows * kBig5Columns;
    static constexpr const std::uint16_t* kCounterparts = kBig5ToGb;

    static constexpr unsigned RowStart(unsigned lead)
    {
        return lead > kLastBig5Lead ? kCodes : (lead - kFirstDoubleByteLead) * kBig5Columns - kFirstTrail;
    }
};

// The free lead bytes 0xAA to 0xAF fall on the rows of 0xB0 to 0xB5, which stand in their place.
struct Gb2312 {
    static constexpr unsigned kFirstTrail = kFirstGbTrail;
    static constexpr unsigned kCodes = (kLastGbLead - kFirstDoubleByteLead + 1 - kGbFreeRows) * kGbColumns;
    static constexpr const std::uint16_t* kCounterparts = kGbToBig5;

    static constexpr unsigned RowStart(unsigned lead)
    {
        const unsigned row = lead - kFirstDoubleByteLead - (lead >= 0xB0 ? kGbFreeRows : 0);
        return lead > kLastGbLead ? kCodes : row * kGbColumns - kFirstTrail;
    }
};

// For each lead byte what to add a trail byte to; without a row, what lies behind all codes.
template <typename Set>
constexpr RowStarts MakeRowStarts()
{
    RowStarts starts = {};
    for (unsigned lead = kFirstDoubleByteLead; lead < starts.size(); ++lead)
        starts[lead] = Set::RowStart(lead);
    return starts;
}

template <typename Set>
constexpr RowStarts kRowStarts = MakeRowStarts<Set>();

// A trail byte of 0xFF stands one column behind its row and reads the next row's first; what stands behind the last row
// stays as it is.
template <typename Set>
unsigned Converted(unsigned lead, unsigned trail)
{
    const unsigned index = kRowStarts<Set>[lead] + trail;
    if (index < Set::kCodes) [[likely]]
        return Set::kCounterparts[index];
    return lead | trail << 8;
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
        if (lead >= kFirstDoubleByteLead) {
            unsigned trail = Byte(source + 1);
            while (trail >= Set::kFirstTrail) {
                const unsigned pair = Converted<Set>(lead, trail);
                source += 2;
                lead = Byte(source);
                *destination++ = static_cast<char>(pair);
                *destination++ = static_cast<char>(pair >> 8);
                if (lead < kFirstDoubleByteLead)
                    break;
                trail = Byte(source + 1);
            }
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
