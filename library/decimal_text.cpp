#include "library/decimal_text.h"

#include <string>

WString DecimalText(std::int64_t number)
{
    const std::string digits = std::to_string(number);
    return WString(digits.begin(), digits.end());
}
