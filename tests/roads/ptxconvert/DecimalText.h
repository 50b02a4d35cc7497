#pragma once

#include <charconv>
#include <string>

namespace ptxtest
{

/// `value` with a decimal point and this many places, whatever the locale of the test is.
inline std::string decimalText(double value, int places)
{
    char text[64];
    const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, places).ptr;
    return {text, end};
}

} // namespace ptxtest
