#pragma once

#include "ptx/model/Bounds.h"
#include "ptx/model/View.h"

#include <vector>

namespace ptx::step
{

/// A plane that cuts, in millimetres.
struct Section {
    osg::Vec3f point;
    osg::Vec3f normal; ///< a unit vector
};

/// A camera as a file writes it. Lengths are millimetres, axes unit vectors at right angles.
struct WrittenCamera {
    osg::Vec3f origin;                                     ///< of the view system
    osg::Vec3f right{1, 0, 0}, up{0, 1, 0}, axis{0, 0, 1}; ///< its X, Y and Z
    osg::Vec3f projectionPoint;                            ///< in the view system, or in that of the model
    float planeDistance = 0;                               ///< of the picture's plane, along the axis
    float width = 0, height = 0;                           ///< of the picture
    bool isParallel = true;
    std::vector<Section> sections = {};
};

/// Puts placement and lens of `camera` into `view`. Programs have several habits of writing where the eye is and which
/// way it looks; the box `shown` around what there is to see decides between them. A parallel camera goes back along
/// its axis until it has all of that in front of it, which changes nothing in the picture. A window that cannot be
/// meant is replaced by one around the box. Of what a section cuts, the part on the side of the eye goes.
void frame(model::View& view, const WrittenCamera& camera, const model::Bounds& shown);

} // namespace ptx::step
