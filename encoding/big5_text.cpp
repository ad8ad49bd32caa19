#include "encoding/big5_text.h"

#include "encoding/big5_gb_tables.h"

namespace {

constexpr unsigned Entry(unsigned lead, unsigned trail)
{
    return lead | trail << 8;
}

// A trail byte of 0xFF stands one column behind its row: it reads the next row's first.
template <unsigned rows, unsigned columns>
unsigned At(const std::uint16_t (&table)[rows][columns], unsigned row, unsigned column)
{
    return table[row + column / columns][column % columns];
}

unsigned GbForBig5(unsigned lead, unsigned trail)
{
    if (lead > kLastBig5Lead || (lead == kLastBig5Lead && trail == 0xFF))
        return Entry(lead, trail);
    return At(kBig5ToGb, lead - kFirstDoubleByteLead, trail - kFirstBig5Trail);
}

// The free lead bytes 0xAA to 0xAF fall on the rows of 0xB0 to 0xB5, which stand in their place.
unsigned Big5ForGb(unsigned lead, unsigned trail)
{
    if (lead > kLastGbLead)
        return Entry(lead, trail);
    const unsigned skipped = lead >= 0xB0 ? kGbFreeRows : 0;
    return At(kGbToBig5, lead - kFirstDoubleByteLead - skipped, trail - kFirstGbTrail);
}

// Reads a pair before it writes one, so that a text can be converted in its place. A lead byte at the end finds the
// terminating zero for its trail byte, which is below every other.
template <unsigned firstTrail, unsigned (*entryOf)(unsigned, unsigned)>
void Convert(const char* source, char* destination)
{
    if (source == nullptr || destination == nullptr)
        return;
    while (*source != 0) {
        const auto lead = static_cast<unsigned char>(source[0]);
        const auto trail = static_cast<unsigned char>(source[1]);
        if (lead < kFirstDoubleByteLead || trail < firstTrail) {
            *destination++ = *source++;
            continue;
        }
        const unsigned entry = entryOf(lead, trail);
        destination[0] = static_cast<char>(entry);
        destination[1] = static_cast<char>(entry >> 8);
        source += 2;
        destination += 2;
    }
    *destination = 0;
}

} // namespace

void Big5ToGb(const char* source, char* destination)
{
    Convert<kFirstBig5Trail, GbForBig5>(source, destination);
}

void GbToBig5(const char* source, char* destination)
{
    Convert<kFirstGbTrail, Big5ForGb>(source, destination);
}
