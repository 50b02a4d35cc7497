#pragma once

#include "ptx/core/Outcome.h"
#include "ptx/readers/jt/graph/SceneGraph.h"
#include "ptx/readers/jt/shapes/Shape.h"

#include <memory>
#include <string>

namespace ptx::jt
{

/// A JT file in memory with its scene graph; meshes are decoded when they are asked for.
struct JtFile {
    std::string path;
    std::unique_ptr<const std::string> content; ///< what the segments refer to
    container::Framing framing;
    graph::SceneGraph graph; ///< with the properties that metadata segments give

    /// The mesh that a shape node names: the finest of those that the file holds; its damage tells why there is none.
    shapes::Shape shapeOf(const graph::SceneNode& node) const;
    /// The segment of that mesh; null when the file holds none.
    const container::Segment* shapeSegment(const graph::SceneNode& node) const;
};

/// Takes `content`, read from `path`, to pieces. A file without a readable scene graph is damaged.
core::Outcome<JtFile> openJtFile(const std::string& path, std::string content);

/// The names of the files that hold parts of the file at `path`, as it writes them; none if it cannot be read.
std::vector<std::string> partNamesIn(const std::string& path);

/// Whether `node` stands for what another file holds. The first partition of a file names the file itself.
bool isExternal(const graph::SceneGraph& graph, graph::Id id, const graph::SceneNode& node);

} // namespace ptx::jt
