#pragma once

#include <string>
#include <utility>
#include <vector>

/// Packed files for tests.
namespace packedfiles
{

/// `text` by gzip.
std::string gzipped(const std::string& text);

/// Writes a ZIP file with these entries, a name and a content each.
void writeZip(const std::string& path, const std::vector<std::pair<std::string, std::string>>& entries);

} // namespace packedfiles
