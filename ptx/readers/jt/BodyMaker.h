#pragma once

#include "ptx/core/Log.h"
#include "ptx/core/Progress.h"
#include "ptx/model/Model.h"
#include "ptx/readers/jt/ShapeSupply.h"
#include "ptx/readers/jt/graph/InheritedMaterial.h"

#include <map>
#include <memory>
#include <vector>

namespace ptx::jt
{

/// What is the same for all bodies of a file.
struct BodyContext {
    const JtFile& file;
    double unit; ///< millimetres of one unit of the file
    int level;   ///< of detail, 0 for the finest
    unsigned threads;
    model::AppearanceTable& appearances;
    core::Progress& progress;
    core::Log& log;
};

/// What became of a body's shapes.
struct BodyResult {
    model::Body body;
    std::vector<std::string> losses; ///< reasons why a shape is not in it, for a person
};

/// The placement that the attributes of `node` give it.
graph::Placement placementOf(const graph::SceneGraph& graph, const graph::SceneNode& node);

class Pieces;

/// Makes bodies of the shapes below nodes. What the shapes have in place and colour is theirs, whatever is above the
/// nodes is not.
class BodyMaker
{
public:
    explicit BodyMaker(const BodyContext& context);

    /// Says for which starts bodies are going to be made, in this order: their shapes are decoded ahead on the threads
    /// that there are.
    void expect(const std::vector<std::vector<graph::Id>>& starts);

    /// The body of the shapes at and below `starts`, which are `top` itself or children of it. The attributes of `top`
    /// do not count but for what they forbid to those below.
    BodyResult make(graph::Id top, const std::vector<graph::Id>& starts);

    std::size_t triangles() const { return m_triangles; }
    int level() const { return m_context.level; }

private:
    struct Frame {
        graph::Id id = 0;
        graph::Placement placement{};
        graph::InheritedMaterial inherited;
    };

    void add(const shapes::Shape& shape, const Frame& frame, Pieces& pieces, BodyResult& result);
    void addShapesBelow(const std::vector<graph::Id>& starts, std::vector<graph::Id>& shapes, std::size_t& steps) const;
    std::size_t wantedLevel(const graph::SceneNode& node) const;
    std::vector<graph::Id> chosenChildren(const graph::SceneNode& node);
    bool isReadable(graph::Id start);
    const shapes::Shape& decoded(graph::Id id, const graph::SceneNode& node);

    BodyContext m_context;
    std::size_t m_steps; ///< that are left; shared nodes could multiply them without end
    std::size_t m_triangles = 0;
    std::unique_ptr<ShapeSupply> m_supply;
    std::map<graph::Id, shapes::Shape> m_decoded; ///< shapes of the body in work
};

} // namespace ptx::jt
