#include "importer/plmxml/Numbers.h"

#include "importer/plmxml/References.h"

#include <charconv>
#include <cmath>

namespace importer::plmxml
{

std::optional<std::vector<double>> numbersIn(std::string_view list)
{
    std::vector<double> numbers;
    for (std::string_view word : wordsOf(list)) {
        if (word.starts_with('+'))
            word.remove_prefix(1);
        double number = 0;
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
        const bool isNumber =
            (error == std::errc() && end == word.data() + word.size()) || error == std::errc::result_out_of_range;
        if (!isNumber || !std::isfinite(number) || numbers.size() == MostNumbers)
            return std::nullopt;
        numbers.push_back(number);
    }
    return numbers;
}

} // namespace importer::plmxml
