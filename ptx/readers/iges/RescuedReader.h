#pragma once

#include "ptx/core/Progress.h"

#include <IGESCAFControl_Reader.hxx>

#include <string>
#include <vector>

namespace ptx::iges
{

/// OCCT's reader, which can leave out what OCCT crashes on.
class RescuedReader : public IGESCAFControl_Reader
{
public:
    /// After the text was read: gives names without a text an empty one; OCCT crashes on them.
    void mendNames();

    /// After the text was read: leaves out the entities that OCCT crashes on, found by copies of this process that
    /// translate them one by one.
    /// @return a sentence for each
    std::vector<std::string> leaveOutCrashing(core::Progress& progress);
};

} // namespace ptx::iges
