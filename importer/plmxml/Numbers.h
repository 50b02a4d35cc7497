#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace importer::plmxml
{

/// More numbers than that belong to nothing.
inline constexpr std::size_t MostNumbers = 16;

/// The numbers of a list that is separated by white space. Nothing where a word is no finite number, and where there
/// are more than MostNumbers; one that is too small or too large for a double counts as 0.
std::optional<std::vector<double>> numbersIn(std::string_view list);

} // namespace importer::plmxml
