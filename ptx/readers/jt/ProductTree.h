#pragma once

#include "ptx/core/Outcome.h"
#include "ptx/model/Job.h"
#include "ptx/model/Model.h"
#include "ptx/readers/jt/JtFile.h"

namespace ptx::jt
{

/// The structure of `file` with its meshes, `unit` millimetres for one unit of the file. Each part is a product, once;
/// nodes that only group shapes become one with the part around them. A shape that cannot be read is left out: the log
/// tells where it is damaged, and its product bears the tag of a missing part. A partition that another file holds is a
/// product with that file's name and without children.
model::Model buildStructure(const JtFile& file, double unit, const model::Job& job);

} // namespace ptx::jt
