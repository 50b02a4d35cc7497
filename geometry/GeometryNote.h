#pragma once

#include "host/OSGSystem/Geometry.h"

#include <QString>

namespace geometry
{

/// A sentence for the user about one geometry.
struct GeometryNote {
    osg::GeometryPtr geometry;
    QString text;
};

} // namespace geometry
