#pragma once

#include "ptx/model/Model.h"

#include <string>
#include <vector>

namespace ptx::model
{

/// Gives `tags` of the file to the first product at the root of `model`, and to the root itself where there is none:
/// what is on the root of a part file gets lost when the part comes into its assembly.
void tagFile(Model& model, const std::vector<std::string>& tags);

} // namespace ptx::model
