#include "platform/linux/kernel/private_use_codes.h"

#include "platform/linux/kernel/code_pages.h"

#include <array>

namespace cardsong::kernel {
namespace {

// A rectangle of codes, one lead byte after the other, whose characters follow each other from `firstUnit` on.
struct Area {
    UINT codePage;
    unsigned firstLead;
    unsigned lastLead;
    unsigned firstTrail;
    unsigned lastTrail;
    unsigned firstUnit;
};

// Windows' own numbering: whole rows first, then what the rows with characters leave free.
constexpr std::array kAreas = {
    Area{ kChinesePrc, 0xAA, 0xAF, 0xA1, 0xFE, 0xE000 },    Area{ kChinesePrc, 0xF8, 0xFE, 0xA1, 0xFE, 0xE234 },
    Area{ kChinesePrc, 0xA1, 0xA7, 0x40, 0xA0, 0xE4C6 },    Area{ kChinesePrc, 0xA2, 0xA2, 0xAB, 0xB0, 0xE766 },
    Area{ kChinesePrc, 0xA2, 0xA2, 0xE3, 0xE4, 0xE76C },    Area{ kChinesePrc, 0xA2, 0xA2, 0xEF, 0xF0, 0xE76E },
    Area{ kChinesePrc, 0xA2, 0xA2, 0xFD, 0xFE, 0xE770 },    Area{ kChinesePrc, 0xA4, 0xA4, 0xF4, 0xFE, 0xE772 },
    Area{ kChinesePrc, 0xA5, 0xA5, 0xF7, 0xFE, 0xE77D },    Area{ kChinesePrc, 0xA6, 0xA6, 0xB9, 0xC0, 0xE785 },
    Area{ kChinesePrc, 0xA6, 0xA6, 0xD9, 0xDF, 0xE78D },    Area{ kChinesePrc, 0xA6, 0xA6, 0xEC, 0xED, 0xE794 },
    Area{ kChinesePrc, 0xA6, 0xA6, 0xF3, 0xF3, 0xE796 },    Area{ kChinesePrc, 0xA6, 0xA6, 0xF6, 0xFE, 0xE797 },
    Area{ kChinesePrc, 0xA7, 0xA7, 0xC2, 0xD0, 0xE7A0 },    Area{ kChinesePrc, 0xA7, 0xA7, 0xF2, 0xFE, 0xE7AF },
    Area{ kChinesePrc, 0xA8, 0xA8, 0x96, 0xA0, 0xE7BC },    Area{ kChinesePrc, 0xA8, 0xA8, 0xBC, 0xBC, 0xE7C7 },
    Area{ kChinesePrc, 0xA8, 0xA8, 0xBF, 0xBF, 0xE7C8 },    Area{ kChinesePrc, 0xA8, 0xA8, 0xC1, 0xC4, 0xE7C9 },
    Area{ kChinesePrc, 0xA8, 0xA8, 0xEA, 0xFE, 0xE7CD },    Area{ kChinesePrc, 0xA9, 0xA9, 0x58, 0x58, 0xE7E2 },
    Area{ kChinesePrc, 0xA9, 0xA9, 0x5B, 0x5B, 0xE7E3 },    Area{ kChinesePrc, 0xA9, 0xA9, 0x5D, 0x5F, 0xE7E4 },
    Area{ kChinesePrc, 0xA9, 0xA9, 0x89, 0x95, 0xE7E7 },    Area{ kChinesePrc, 0xA9, 0xA9, 0x97, 0xA3, 0xE7F4 },
    Area{ kChinesePrc, 0xA9, 0xA9, 0xF0, 0xFE, 0xE801 },    Area{ kChinesePrc, 0xD7, 0xD7, 0xFA, 0xFE, 0xE810 },
    Area{ kChinesePrc, 0xFE, 0xFE, 0x50, 0xA0, 0xE815 },    Area{ kChineseTaiwan, 0xFA, 0xFE, 0x40, 0xFE, 0xE000 },
    Area{ kChineseTaiwan, 0x8E, 0xA0, 0x40, 0xFE, 0xE311 }, Area{ kChineseTaiwan, 0x81, 0x8D, 0x40, 0xFE, 0xEEB8 },
};

// No trail byte of either page is 0x7F; those of page 950 go on at 0xA1.
constexpr unsigned kFirstNoTrail = 0x7F;
constexpr unsigned LastNoTrail(UINT codePage)
{
    return codePage == kChineseTaiwan ? 0xA0 : 0x7F;
}

constexpr unsigned GapBefore(const Area& area, unsigned trail)
{
    const unsigned lastNoTrail = LastNoTrail(area.codePage);
    return area.firstTrail < kFirstNoTrail && trail > lastNoTrail ? lastNoTrail - kFirstNoTrail + 1 : 0;
}

constexpr unsigned Column(const Area& area, unsigned trail)
{
    return trail - area.firstTrail - GapBefore(area, trail);
}

constexpr unsigned Columns(const Area& area)
{
    return Column(area, area.lastTrail) + 1;
}

constexpr bool Holds(const Area& area, unsigned lead, unsigned trail)
{
    return lead >= area.firstLead && lead <= area.lastLead && trail >= area.firstTrail && trail <= area.lastTrail &&
           (trail < kFirstNoTrail || trail > LastNoTrail(area.codePage));
}

} // namespace

std::optional<char16_t> PrivateUseUnit(UINT codePage, unsigned char lead, unsigned char trail)
{
    for (const Area& area : kAreas) {
        if (area.codePage == codePage && Holds(area, lead, trail))
            return static_cast<char16_t>(area.firstUnit + (lead - area.firstLead) * Columns(area) +
                                         Column(area, trail));
    }
    return std::nullopt;
}

std::string PrivateUsePair(UINT codePage, char16_t unit)
{
    for (const Area& area : kAreas) {
        const unsigned columns = Columns(area);
        const unsigned units = (area.lastLead - area.firstLead + 1) * columns;
        if (area.codePage != codePage || unit < area.firstUnit || unit >= area.firstUnit + units)
            continue;
        const unsigned index = unit - area.firstUnit;
        unsigned trail = area.firstTrail + index % columns;
        if (area.firstTrail < kFirstNoTrail && trail >= kFirstNoTrail)
            trail += LastNoTrail(codePage) - kFirstNoTrail + 1;
        return { static_cast<char>(area.firstLead + index / columns), static_cast<char>(trail) };
    }
    return {};
}

} // namespace cardsong::kernel
