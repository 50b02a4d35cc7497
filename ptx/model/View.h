#pragma once

#include "host/OSGSystem/Math.h"
#include "scene/ViewTags.h"

#include <string>

namespace ptx::model
{

/// Stands for the set of views of what every view shows.
inline constexpr int AlwaysShown = -1;

/// A view that was saved in the CAD file.
struct View {
    std::string name;  ///< unique in its file, without square brackets
    std::string group; ///< what it is a view of, without square brackets; never empty
    /// The camera in the space of the file: it looks along its negative Z axis, with its Y axis upwards.
    osg::Matrix placement;
    bool isParallel = true;
    float height = 0;         ///< of the picture, in millimetres; when it is parallel
    float fieldOfView = 0;    ///< from the lower to the upper edge, in degrees; when it is not
    osg::ViewFacts facts;     ///< in the space of the camera
    bool isAtOpening = false; ///< what it shows is shown from the start; of one view at most
};

} // namespace ptx::model
