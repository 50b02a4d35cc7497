#pragma once

#include "host/OSGSystem/Math.h"
#include "ptx/model/Model.h"

#include <vector>

namespace ptx::model
{

/// A box along the axes; empty as long as nothing was put into it.
struct Bounds {
    osg::Vec3f low, high;
    bool isEmpty = true;

    void add(const osg::Vec3f& point);
    /// The corner by its number: the bits tell x, y and z.
    osg::Vec3f corner(unsigned number) const;
};

struct ModelBounds {
    Bounds whole;                 ///< around all occurrences
    std::vector<Bounds> products; ///< around each product, in its own space; empty for one that is nowhere
};

/// The boxes of `model`, in which each occurrence counts as the box around its product. Products that contain
/// themselves count once.
ModelBounds boundsOf(const Model& model);

} // namespace ptx::model
