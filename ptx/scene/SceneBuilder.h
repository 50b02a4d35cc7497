#pragma once

#include "host/OSGSystem/Node.h"
#include "ptx/core/Outcome.h"
#include "ptx/model/Model.h"

#include <cstddef>
#include <string>

namespace ptx::scene
{

/// A scene with its counts.
struct Scene {
    osg::RefPtr<osg::NodePtr> root;
    std::size_t occurrences = 0; ///< of parts with geometry
    std::size_t callouts = 0;    ///< that are drawn beside parts
    std::size_t nodes = 0;
};

/// Makes the scene of `model`. Its root refers to `input`, the absolute path of the CAD file, bears the tag of a
/// converted tree and nothing else; below it stands a transform for each occurrence, and below that a geometry for each
/// appearance of its body. Occurrences share the geometries of their part. A product in
/// another file is a reference to it, without children. Fails when instances multiply to more than
/// `mostNodes` nodes (0: no limit), or when a product contains itself.
core::Outcome<Scene> buildScene(const model::Model& model, const std::string& input, double mostNodes);

} // namespace ptx::scene
