#pragma once

#include "ptx/core/Limits.h"
#include "ptx/core/Log.h"
#include "ptx/core/Progress.h"
#include "ptx/core/Settings.h"
#include "ptx/model/Job.h"

#include <Standard_Handle.hxx>
#include <StepSelect_WorkLibrary.hxx>

#include <string>
#include <vector>

namespace ptxtest
{

/// What OCCT has of a STEP file after the reading.
struct ReadModel {
    bool isRead = false;
    std::string text;                 ///< all entities as OCCT writes them, in their order
    std::vector<int> numbers;         ///< of the entities in the text that was read
    std::vector<std::string> reports; ///< what OCCT says of entities, each with the number of its entity
    int complaints = 0;               ///< of the parser about the text
    int longLists = 0;                ///< of more than a thousand parameters, in entities that OCCT does not know
    std::vector<std::string> losses;  ///< what our records lack
};

/// Reads `path` with OCCT's own parser.
ReadModel readByParser(const std::string& path);
/// Reads `path` with our records, on `threads` threads. The words of the log go to `log` when it is given.
ReadModel readByRecords(const std::string& path, int threads = 2, std::string* log = nullptr);

} // namespace ptxtest
