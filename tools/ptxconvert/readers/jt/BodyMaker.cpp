#include "tools/ptxconvert/readers/jt/BodyMaker.h"

#include "tools/ptxconvert/readers/jt/shapes/ShapeMesh.h"

#include <algorithm>
#include <set>

namespace ptx::jt
{

namespace
{

constexpr std::size_t StepsPerNode = 64;
constexpr std::size_t LeastSteps = 100000;

std::string reasonOf(const Damage& damage)
{
    return std::string(damage.what) + " (at " + std::to_string(damage.offset) + ")";
}

std::string placeOf(Id id, const Damage& damage)
{
    return "shape " + std::to_string(id) + ": " + reasonOf(damage);
}

std::vector<Id> shownChildren(const SceneNode& node)
{
    if (node.kind != ElementKind::Switch)
        return node.children;
    return node.selected >= 0 && static_cast<std::size_t>(node.selected) < node.children.size()
               ? std::vector<Id>{node.children[static_cast<std::size_t>(node.selected)]}
               : std::vector<Id>();
}

// Vertices of one mesh have all the same attributes, and a mesh draws either areas or not.
int formOf(const Shape& shape)
{
    return (shape.normals.empty() ? 0 : 1) | (shape.colours.empty() ? 0 : 2) |
           (shape.textureCoordinates.empty() ? 0 : 4) | (shape.triangles.empty() ? 8 : 0);
}

} // namespace

/// The meshes of a body, one for each appearance and form.
class Pieces
{
public:
    MeshBuilder& of(int appearance, int form) { return m_meshes[{appearance, form}]; }

    Body take()
    {
        Body body;
        for (auto& [look, mesh] : m_meshes)
            if (!mesh.isEmpty())
                body.pieces.push_back({look.first, mesh.take()});
        return body;
    }

private:
    std::map<std::pair<int, int>, MeshBuilder> m_meshes;
};

Placement placementOf(const SceneGraph& graph, const SceneNode& node)
{
    Placement placement = NoMove;
    for (const Id id : node.attributes)
        if (const auto at = graph.attributes.find(id); at != graph.attributes.end() && at->second.placement)
            placement = combined(placement, *at->second.placement);
    return placement;
}

BodyMaker::BodyMaker(const BodyContext& context)
    : m_context(context), m_steps(std::max(LeastSteps, StepsPerNode * context.file.graph.nodes.size()))
{
}

const Shape& BodyMaker::decoded(Id id, const SceneNode& node)
{
    const auto [entry, isNew] = m_decoded.try_emplace(id);
    if (isNew) {
        m_context.progress.touch();
        entry->second = m_supply ? m_supply->take(id) : m_context.file.shapeOf(node);
    }
    return entry->second;
}

// Whether some shape at or below `start` can be decoded.
bool BodyMaker::isReadable(Id start)
{
    std::vector<Id> open = {start};
    std::set<Id> seen = {start};
    while (!open.empty()) {
        const Id id = open.back();
        open.pop_back();
        const SceneNode* node = m_context.file.graph.find(id);
        if (!node)
            continue;
        if (node->kind == ElementKind::Shape && !decoded(id, *node).damage)
            return true;
        for (const Id child : node->children)
            if (seen.insert(child).second)
                open.push_back(child);
    }
    return false;
}

std::size_t BodyMaker::wantedLevel(const SceneNode& node) const
{
    return std::min(static_cast<std::size_t>(m_context.level), node.children.size() - 1);
}

void BodyMaker::expect(const std::vector<std::vector<Id>>& starts)
{
    if (m_context.threads < 2)
        return;
    std::vector<Id> shapes;
    std::size_t steps = m_steps;
    for (const std::vector<Id>& each : starts)
        addShapesBelow(each, shapes, steps);
    m_supply = std::make_unique<ShapeSupply>(m_context.file, std::move(shapes), m_context.threads);
}

// In the order in which `make` comes to them, each once.
void BodyMaker::addShapesBelow(const std::vector<Id>& starts, std::vector<Id>& shapes, std::size_t& steps) const
{
    std::vector<Id> open = starts;
    std::set<Id> seen;
    for (; !open.empty() && steps > 0; --steps) {
        const Id id = open.back();
        open.pop_back();
        const SceneNode* node = m_context.file.graph.find(id);
        if (!node || node->isIgnored || !seen.insert(id).second)
            continue;
        if (node->kind == ElementKind::Shape)
            shapes.push_back(id);
        if (node->kind == ElementKind::Lod && !node->children.empty()) {
            open.push_back(node->children[wantedLevel(*node)]);
        } else {
            const std::vector<Id> children = shownChildren(*node);
            open.insert(open.end(), children.begin(), children.end());
        }
    }
}

// A level of detail that cannot be read is stood in for by the next coarser one.
std::vector<Id> BodyMaker::chosenChildren(const SceneNode& node)
{
    if (node.kind != ElementKind::Lod || node.children.empty())
        return shownChildren(node);
    const std::vector<Id>& children = node.children;
    const std::size_t wanted = wantedLevel(node);
    for (std::size_t i = wanted; i < children.size(); ++i) {
        if (!isReadable(children[i]))
            continue;
        if (i != wanted)
            m_context.log.warning("level of detail " + std::to_string(wanted) + " cannot be read; level " +
                                  std::to_string(i) + " stands in for it");
        return {children[i]};
    }
    return {children[wanted]};
}

void BodyMaker::add(const Shape& decodedShape, const Frame& frame, Pieces& pieces, BodyResult& result)
{
    if (decodedShape.damage) {
        result.losses.push_back(placeOf(frame.id, decodedShape.damage));
        return;
    }
    if (decodedShape.leftOut)
        m_context.log.warning("shape " + std::to_string(frame.id) + " lacks " + decodedShape.leftOut);
    Shape bare;
    const bool isHidden = frame.finish.hidesVertexColours && !decodedShape.colours.empty();
    if (isHidden) {
        bare = decodedShape;
        bare.colours.clear();
    }
    const Shape& shape = isHidden ? bare : decodedShape;
    // Whoever takes the colours of vertices away, as the optimisation of trees does, is left with that of the material.
    MeshBuilder& mesh = pieces.of(frame.finish.appearance, formOf(shape));
    if (mesh.hasRoomFor(shape.positions.size() + shape.records()))
        m_triangles += addShape(mesh, shape, frame.placement, m_context.unit);
    else
        result.losses.emplace_back("a body has more vertices than a mesh can hold");
}

BodyResult BodyMaker::make(Id top, const std::vector<Id>& starts)
{
    const SceneGraph& graph = m_context.file.graph;
    BodyResult result;
    Pieces pieces;
    Finish around;
    std::size_t steps = m_steps / 2; // the rest is for other bodies
    if (const SceneNode* node = graph.find(top))
        around = finishOf(graph, *node, {}, m_context.appearances);
    around.appearance = NoAppearance;
    std::vector<Frame> open;
    open.reserve(starts.size());
    for (const Id start : starts)
        open.push_back({start, NoMove, around});
    while (!open.empty()) {
        Frame frame = open.back();
        open.pop_back();
        const SceneNode* node = graph.find(frame.id);
        if (!node || node->isIgnored)
            continue;
        if (frame.id != top) {
            frame.placement = combined(placementOf(graph, *node), frame.placement);
            frame.finish = finishOf(graph, *node, frame.finish, m_context.appearances);
        }
        if (node->kind == ElementKind::Shape)
            add(decoded(frame.id, *node), frame, pieces, result);
        const std::vector<Id> children = chosenChildren(*node);
        if (children.size() > steps) {
            result.losses.emplace_back("the groups of its shapes multiply without end");
            break;
        }
        steps -= children.size();
        m_steps -= children.size();
        for (const Id child : children)
            open.push_back({child, frame.placement, frame.finish});
    }
    m_decoded.clear();
    result.body = pieces.take();
    return result;
}

} // namespace ptx::jt
