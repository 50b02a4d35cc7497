#pragma once

#include "ptx/model/Job.h"
#include "ptx/model/Model.h"

#include <string>

namespace ptx::model
{

/// Tells of something of the input that is left out. @return the tag for it
std::string lossOf(const Job& job, const std::string& reason);

/// Marks the products that have no mesh because the CAD kernel crashed on it.
void markLostParts(Model& model, const Job& job);

} // namespace ptx::model
