#pragma once

#include "host/OSGSystem/Node.h"

#include <QString>

#include <cstdint>

namespace geometry
{

struct OcclusionOptions {
    int rays = 96;      ///< for each vertex of each place, 1 to 4096
    int mostPlaces = 8; ///< of a geometry that is used more often this many, evenly chosen, are looked at
    int threads = 0;    ///< 0 for one a core
};

struct OcclusionResult {
    QString error;          ///< empty when all went well
    std::uint64_t rays = 0; ///< how many were cast
};

/// What `znNodeUtils::addAmbientOcclusionData` does; see there. The same tree gives the same values, whatever the
/// number of threads. Rays reach half as far as the radius of the ball around the tree, and nearer things count more.
OcclusionResult addAmbientOcclusion(const osg::NodePtr& root, const OcclusionOptions& options = {});

} // namespace geometry
