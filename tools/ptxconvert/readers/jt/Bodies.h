#pragma once

#include "tools/ptxconvert/core/Log.h"
#include "tools/ptxconvert/core/Progress.h"
#include "tools/ptxconvert/model/Model.h"
#include "tools/ptxconvert/readers/jt/JtFile.h"

#include <map>
#include <vector>

namespace ptx::jt
{

/// What is the same for all bodies of a file.
struct BodyContext {
    const JtFile& file;
    double unit; ///< millimetres of one unit of the file
    int level;   ///< of detail, 0 for the finest
    AppearanceTable& appearances;
    Progress& progress;
    Log& log;
};

/// What became of a body's shapes.
struct BodyResult {
    Body body;
    std::vector<std::string> losses; ///< reasons why a shape is not in it, for a person
};

/// What the materials on the way down to a node come to.
struct Finish {
    int appearance = NoAppearance;
    bool hidesVertexColours = false;
    unsigned final = 0; ///< fields that only forced materials change
};

/// What `around` and the materials of `node` come to, of which the last counts.
Finish finishOf(const SceneGraph& graph, const SceneNode& node, const Finish& around, AppearanceTable& appearances);
/// The placement that the attributes of `node` give it.
Placement placementOf(const SceneGraph& graph, const SceneNode& node);

class Pieces;

/// Makes bodies of the shapes below nodes. What the shapes have in place and colour is theirs, whatever is above the
/// nodes is not.
class BodyMaker
{
public:
    explicit BodyMaker(const BodyContext& context);

    /// The body of the shapes at and below `starts`, which are `top` itself or children of it. The attributes of `top`
    /// do not count but for what they forbid to those below.
    BodyResult make(Id top, const std::vector<Id>& starts);

    std::size_t triangles() const { return m_triangles; }
    int level() const { return m_context.level; }

private:
    struct Frame {
        Id id;
        Placement placement;
        Finish finish;
    };

    void add(const Shape& shape, const Frame& frame, Pieces& pieces, BodyResult& result);
    std::vector<Id> chosenChildren(const SceneNode& node);
    bool isReadable(Id start);
    const Shape& decoded(Id id, const SceneNode& node);

    BodyContext m_context;
    std::size_t m_steps; ///< that are left; shared nodes could multiply them without end
    std::size_t m_triangles = 0;
    std::map<Id, Shape> m_decoded; ///< shapes of the body in work
};

} // namespace ptx::jt
