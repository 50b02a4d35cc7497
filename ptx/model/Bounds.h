#pragma once

#include "host/OSGSystem/Math.h"
#include "ptx/model/Model.h"

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

/// The box around all occurrences of `model`, in which each product counts as the box around it. Products that contain
/// themselves count once.
Bounds boundsOf(const Model& model);

} // namespace ptx::model
