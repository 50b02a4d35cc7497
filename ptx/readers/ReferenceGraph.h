#pragma once

#include "files/references/ReferencePolicy.h"

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace ptx::readers
{

/// The names that the file `path` gives for its parts; none when it cannot be read.
using PartNamesOf = std::function<std::vector<std::string>(const std::string& path)>;

/// The files that lead back to `root`, on the roads that begin there; `root` among them if there is such a road at all.
/// Paths are canonical. Only files that exist and that `policy` allows are followed, each
/// once.
std::set<std::string> filesLeadingBackTo(const std::string& root, const PartNamesOf& namesOf,
                                         const files::references::Policy& policy = {});

} // namespace ptx::readers
