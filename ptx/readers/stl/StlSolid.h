#pragma once

#include "host/OSGSystem/Math.h"

#include <array>
#include <string>
#include <vector>

namespace ptx::stl
{

/// One triangle as the file holds it.
struct Facet {
    osg::Vec3f normal; ///< as written; often zero
    std::array<osg::Vec3f, 3> corners;
};

/// One solid of a file.
struct Solid {
    std::string name; ///< may be empty
    std::vector<Facet> facets;
};

} // namespace ptx::stl
