#pragma once

#include "host/OSGSystem/Math.h"

#include <gp_Trsf.hxx>

namespace ptx::occt
{

/// What `place` does to points, as a matrix.
inline osg::Matrix toMatrix(const gp_Trsf& place)
{
    osg::Matrix matrix;
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 4; ++column)
            matrix[static_cast<unsigned>(column * 4 + row)] = static_cast<float>(place.Value(row + 1, column + 1));
    return matrix;
}

} // namespace ptx::occt
