#pragma once

#include "ptx/occt/meshing/ShapeBody.h"

#include <cstddef>
#include <vector>

namespace ptx::occt
{

/// Parts that one thread has to take one after another, because they share faces.
struct WorkGroup {
    std::vector<std::size_t> parts; ///< numbers of shapes
    std::size_t faces = 0;
};

/// Splits `shapes` into groups that can be worked on at the same time, the biggest first.
std::vector<WorkGroup> planWork(const std::vector<occt::meshing::ShapeBody>& shapes);

} // namespace ptx::occt
