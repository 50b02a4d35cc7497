#pragma once

#include "tests/house/SourceTree.h"

namespace house
{

/// The sources of the product that have no header of their name, neither beside them nor, for what the open host
/// defines of the contract, in `host/`, and are neither a program's main nor known for a reason.
std::vector<Finding> sourcesWithoutHeader(const std::vector<SourceFile>& files);

/// The files `tests/FOLDER/UNITTest.cpp` that have no unit: a header or source of FOLDER, or a contract header that
/// FOLDER implements. A unit's name may be followed by the aspect that is tested, which begins with a capital letter.
/// Folders that mirror nothing are left out.
std::vector<Finding> testsWithoutUnit(const std::vector<SourceFile>& files);

} // namespace house
