#pragma once

#include "ptx/core/Outcome.h"
#include "ptx/model/Job.h"
#include "ptx/occt/DocumentWalker.h"
#include "ptx/occt/HealingAhead.h"
#include "ptx/readers/step/FacetOwners.h"
#include "ptx/readers/step/SavedViews.h"

namespace ptx::step
{

/// What one STEP file holds.
struct StepContent : occt::DocumentContent {
    std::vector<SavedView> views;  ///< in the space of this file
    std::vector<FacetBody> facets; ///< bodies that the file holds as triangles
};

/// Reads the STEP file `job.input` without the files that it refers to: products whose geometry lies elsewhere have
/// names for it and nothing else. What is broken in the file is left out and marked. Enters the stages from reading to
/// structure unless `isPart`, which goes on in the present one; of a part the saved views are not read.
/// The parts are healed `ahead` where that is possible.
core::Outcome<StepContent> readStepFile(const model::Job& job, bool isPart, occt::HealingAhead& ahead);

/// Whether there is anything to see in `content`, whose part files are not.
bool isEmpty(const StepContent& content);

/// The failure for a file without geometry, whose `cause` is a clause: "it holds no solids".
core::Failure nothingToImport(const std::string& cause);

} // namespace ptx::step
