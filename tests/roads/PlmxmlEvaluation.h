#pragma once

#include "tests/roads/PlmxmlDialects.h"

#include <array>
#include <string>
#include <vector>

namespace dialects
{

/// Least and greatest corner, in millimetres.
using WorldBox = std::array<double, 6>;

/// The boxes of all files that a document shows, sorted. It knows each dialect as makeDocument writes it and nothing
/// else, searches for every reference, and shares no code with the import.
std::vector<WorldBox> boxesOf(Dialect dialect, const std::string& document);

} // namespace dialects
