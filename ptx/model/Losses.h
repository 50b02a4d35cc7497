#pragma once

#include "ptx/model/Job.h"
#include "ptx/model/Model.h"

#include <string>
#include <vector>

namespace ptx::model
{

/// Tells of something of the input that is left out. @return the tag for it
std::string lossOf(const Job& job, const std::string& reason);

/// Puts `tags` where they are found of a part file, too: what is on the root of such a file gets lost when the part
/// comes into its assembly.
void addToFile(Model& model, const std::vector<std::string>& tags);

/// Marks the products that have no mesh because the CAD kernel crashed on it.
void markLostParts(Model& model, const Job& job);

} // namespace ptx::model
