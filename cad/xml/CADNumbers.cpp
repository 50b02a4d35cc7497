#include "cad/xml/CADNumbers.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <locale>
#include <new>
#include <sstream>
#include <stdexcept>

namespace HB::XML::CAD
{

namespace
{

constexpr std::string_view hexDigits = "0123456789abcdefABCDEF";

// Narrowing a double beyond the largest float gives infinity.
static_assert(std::numeric_limits<float>::is_iec559 && std::numeric_limits<double>::is_iec559);

std::string_view withoutLeadingSpace(std::string_view token)
{
    while (!token.empty() && (token[0] == ' ' || (token[0] >= '\t' && token[0] <= '\r')))
        token.remove_prefix(1);
    return token;
}

/// Whether a number in hexadecimal digits begins here.
bool startsHexadecimal(std::string_view token)
{
    if (token.size() < 3 || token[0] != '0' || (token[1] != 'x' && token[1] != 'X'))
        return false;
    const auto digits = token.substr(token[2] == '.' ? 3 : 2);
    return !digits.empty() && hexDigits.find(digits[0]) != std::string_view::npos;
}

template <class Number>
std::errc readUnsigned(std::string_view token, Number& number)
{
    if (token.empty() || token[0] == '-')
        return std::errc::invalid_argument;
    const auto isHexadecimal = startsHexadecimal(token);
    if (isHexadecimal)
        token.remove_prefix(2);
    const auto format = isHexadecimal ? std::chars_format::hex : std::chars_format::general;
    return std::from_chars(token.data(), token.data() + token.size(), number, format).ec;
}

template <class Number>
Number readNumber(std::string_view token, const char* invalid, const char* outOfRange)
{
    token = withoutLeadingSpace(token);
    const auto isNegative = !token.empty() && token[0] == '-';
    if (isNegative || (!token.empty() && token[0] == '+'))
        token.remove_prefix(1);
    Number number = 0;
    const auto error = readUnsigned(token, number);
    if (error == std::errc::invalid_argument)
        throw std::invalid_argument(invalid);
    if (error == std::errc::result_out_of_range)
        throw std::out_of_range(outOfRange);
    return isNegative ? -number : number;
}

} // namespace

void parseTransformValues(std::string_view text, std::vector<float>& values)
{
    if (values.empty())
        values.reserve(static_cast<std::size_t>(std::count(text.begin(), text.end(), ' ')) + 1);
    for (auto blank = text.find(' '); blank != std::string_view::npos; blank = text.find(' ')) {
        const auto number =
            readNumber<double>(text.substr(0, blank), "invalid stod argument", "stod argument out of range");
        values.push_back(static_cast<float>(number));
        text.remove_prefix(blank + 1);
    }
    values.push_back(readNumber<float>(text, "invalid stof argument", "stof argument out of range"));
}

void parseFloatList(const std::string& text, std::vector<float>& list)
{
    list.clear();
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    float number = 0;
    while (!stream.eof()) {
        stream >> number;
        if (stream.fail() && !stream.eof())
            throw std::bad_alloc();
        list.push_back(number);
    }
}

} // namespace HB::XML::CAD
