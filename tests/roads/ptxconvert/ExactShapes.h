#pragma once

#include "tests/roads/ptxconvert/ConvertRun.h"

#include <TopoDS_Shape.hxx>

#include <string>

namespace ptxtest
{

/// What OCCT says of a shape from its surfaces, without any mesh; lengths are millimetres.
struct ExactMeasures {
    osg::Vec3f low, high;
    double area = 0;
    double volume = 0; ///< of its solids
    bool isSolid = false;
    double diagonal = 0;
};

ExactMeasures exactMeasures(const TopoDS_Shape& shape);

/// Everything in the STEP file `path` and the files it refers to, by OCCT's own road; null when it reads nothing.
TopoDS_Shape shapeOfStepFile(const std::string& path);

/// Writes `shape` as a STEP file. @return whether that went well
bool writeStepFile(const TopoDS_Shape& shape, const std::string& path);

} // namespace ptxtest
