#pragma once

#include "tools/ptxconvert/core/Log.h"
#include "tools/ptxconvert/core/Progress.h"
#include "tools/ptxconvert/model/Model.h"
#include "tools/ptxconvert/readers/jt/ShapeSupply.h"
#include "tools/ptxconvert/readers/jt/graph/InheritedMaterial.h"

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
    AppearanceTable& appearances;
    Progress& progress;
    Log& log;
};

/// What became of a body's shapes.
struct BodyResult {
    Body body;
    std::vector<std::string> losses; ///< reasons why a shape is not in it, for a person
};

/// The placement that the attributes of `node` give it.
Placement placementOf(const SceneGraph& graph, const SceneNode& node);

class Pieces;

/// Makes bodies of the shapes below nodes. What the shapes have in place and colour is theirs, whatever is above the
/// nodes is not.
class BodyMaker
{
public:
    explicit BodyMaker(const BodyContext& context);

    /// Says for which starts bodies are going to be made, in this order: their shapes are decoded ahead on the threads
    /// that there are.
    void expect(const std::vector<std::vector<Id>>& starts);

    /// The body of the shapes at and below `starts`, which are `top` itself or children of it. The attributes of `top`
    /// do not count but for what they forbid to those below.
    BodyResult make(Id top, const std::vector<Id>& starts);

    std::size_t triangles() const { return m_triangles; }
    int level() const { return m_context.level; }

private:
    struct Frame {
        Id id = 0;
        Placement placement{};
        Finish finish;
    };

    void add(const Shape& shape, const Frame& frame, Pieces& pieces, BodyResult& result);
    void addShapesBelow(const std::vector<Id>& starts, std::vector<Id>& shapes, std::size_t& steps) const;
    std::size_t wantedLevel(const SceneNode& node) const;
    std::vector<Id> chosenChildren(const SceneNode& node);
    bool isReadable(Id start);
    const Shape& decoded(Id id, const SceneNode& node);

    BodyContext m_context;
    std::size_t m_steps; ///< that are left; shared nodes could multiply them without end
    std::size_t m_triangles = 0;
    std::unique_ptr<ShapeSupply> m_supply;
    std::map<Id, Shape> m_decoded; ///< shapes of the body in work
};

} // namespace ptx::jt
