#include "ptx/occt/LeakRules.h"

// NOLINTBEGIN(bugprone-reserved-identifier): the checker, a library of its own, asks for these names
/// OCCT keeps tables until the process ends. Where its allocator asks for the memory, the checker sees no further up;
/// memory that our own code loses is still told. Entities of a STEP file that refer to each other, as drawings of views
/// may, keep each other alive.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:Standard_MMgrRaw\n"
           "leak:IFSelect_Editor\n"
           "leak:TPrsStd_DriverTable\n"
           "leak:GeomToStep_\n"
           "leak:RWStep\n";
}

/// Standard error is for one sentence.
extern "C" const char* __lsan_default_options()
{
    return "print_suppressions=0";
}
// NOLINTEND(bugprone-reserved-identifier)
