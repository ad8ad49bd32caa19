#include "library/inserted_card.h"

#include "common/file_search.h"
#include "library/file_names.h"

namespace {

bool IsNamed(const WIN32_FIND_DATAW& found)
{
    const WStringView name(found.cFileName);
    return name != TEXT(".") && name != TEXT("..");
}

} // namespace

bool IsCardInserted()
{
    const WString pattern = WString(kCardFolder) + TEXT("\\*.*");
    for (FileSearch search(pattern.c_str()); search; search.Next())
        if (IsNamed(search.Entry()))
            return true;
    return false;
}
