#include "importer/plmxml/Numbers.h"

#include "importer/plmxml/References.h"

#include <charconv>
#include <cmath>
#include <utility>

namespace importer::plmxml
{

std::optional<std::vector<double>> numbersIn(std::string_view list)
{
    std::vector<double> numbers;
    bool areNumbers = true;
    eachWord(list, [&](std::string_view word) {
        if (word.starts_with('+'))
            word.remove_prefix(1);
        double number = 0;
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
        const bool isNumber =
            (error == std::errc() && end == word.data() + word.size()) || error == std::errc::result_out_of_range;
        areNumbers = isNumber && std::isfinite(number) && numbers.size() < MostNumbers;
        numbers.push_back(number);
        return areNumbers;
    });
    return areNumbers ? std::optional(std::move(numbers)) : std::nullopt;
}

} // namespace importer::plmxml
