#include "ptx/readers/jt/BodyMaker.h"

#include "ptx/readers/jt/shapes/ShapeMesh.h"

#include <algorithm>
#include <set>

namespace ptx::jt
{

namespace
{

constexpr std::size_t StepsPerNode = 64;
constexpr std::size_t LeastSteps = 100000;

std::string reasonOf(const container::Damage& damage)
{
    return std::string(damage.what) + " (at " + std::to_string(damage.offset) + ")";
}

std::string placeOf(graph::Id id, const container::Damage& damage)
{
    return "shape " + std::to_string(id) + ": " + reasonOf(damage);
}

std::vector<graph::Id> shownChildren(const graph::SceneNode& node)
{
    if (node.kind != graph::ElementKind::Switch)
        return node.children;
    return node.selected >= 0 && static_cast<std::size_t>(node.selected) < node.children.size()
               ? std::vector<graph::Id>{node.children[static_cast<std::size_t>(node.selected)]}
               : std::vector<graph::Id>();
}

// Vertices of one mesh have all the same attributes, and a mesh draws either areas or not.
int formOf(const shapes::Shape& shape)
{
    return (shape.normals.empty() ? 0 : 1) | (shape.colours.empty() ? 0 : 2) |
           (shape.textureCoordinates.empty() ? 0 : 4) | (shape.triangles.empty() ? 8 : 0);
}

} // namespace

/// The meshes of a body, one for each appearance and form.
class Pieces
{
public:
    model::MeshBuilder& of(int appearance, int form) { return m_meshes[{appearance, form}]; }

    model::Body take()
    {
        model::Body body;
        for (auto& [look, mesh] : m_meshes)
            if (!mesh.isEmpty())
                body.pieces.push_back({look.first, mesh.take()});
        return body;
    }

private:
    std::map<std::pair<int, int>, model::MeshBuilder> m_meshes;
};

graph::Placement placementOf(const graph::SceneGraph& graph, const graph::SceneNode& node)
{
    graph::Placement placement = graph::NoMove;
    for (const graph::Id id : node.attributes)
        if (const auto at = graph.attributes.find(id); at != graph.attributes.end() && at->second.placement)
            placement = graph::combined(placement, *at->second.placement);
    return placement;
}

BodyMaker::BodyMaker(const BodyContext& context)
    : m_context(context), m_steps(std::max(LeastSteps, StepsPerNode * context.file.graph.nodes.size()))
{
}

const shapes::Shape& BodyMaker::decoded(graph::Id id, const graph::SceneNode& node)
{
    const auto [entry, isNew] = m_decoded.try_emplace(id);
    if (isNew) {
        m_context.progress.touch();
        entry->second = m_supply ? m_supply->take(id) : m_context.file.shapeOf(node);
    }
    return entry->second;
}

// Whether some shape at or below `start` can be decoded.
bool BodyMaker::isReadable(graph::Id start)
{
    std::vector<graph::Id> open = {start};
    std::set<graph::Id> seen = {start};
    while (!open.empty()) {
        const graph::Id id = open.back();
        open.pop_back();
        const graph::SceneNode* node = m_context.file.graph.find(id);
        if (!node)
            continue;
        if (node->kind == graph::ElementKind::Shape && !decoded(id, *node).damage)
            return true;
        for (const graph::Id child : node->children)
            if (seen.insert(child).second)
                open.push_back(child);
    }
    return false;
}

std::size_t BodyMaker::wantedLevel(const graph::SceneNode& node) const
{
    return std::min(static_cast<std::size_t>(m_context.level), node.children.size() - 1);
}

void BodyMaker::expect(const std::vector<std::vector<graph::Id>>& starts)
{
    if (m_context.threads < 2)
        return;
    std::vector<graph::Id> shapes;
    std::size_t steps = m_steps;
    for (const std::vector<graph::Id>& each : starts)
        addShapesBelow(each, shapes, steps);
    m_supply = std::make_unique<ShapeSupply>(m_context.file, std::move(shapes), m_context.threads);
}

// In the order in which `make` comes to them, each once.
void BodyMaker::addShapesBelow(const std::vector<graph::Id>& starts, std::vector<graph::Id>& shapes,
                               std::size_t& steps) const
{
    std::vector<graph::Id> open = starts;
    std::set<graph::Id> seen;
    for (; !open.empty() && steps > 0; --steps) {
        const graph::Id id = open.back();
        open.pop_back();
        const graph::SceneNode* node = m_context.file.graph.find(id);
        if (!node || node->isIgnored || !seen.insert(id).second)
            continue;
        if (node->kind == graph::ElementKind::Shape)
            shapes.push_back(id);
        if (node->kind == graph::ElementKind::Lod && !node->children.empty()) {
            open.push_back(node->children[wantedLevel(*node)]);
        } else {
            const std::vector<graph::Id> children = shownChildren(*node);
            open.insert(open.end(), children.begin(), children.end());
        }
    }
}

// A level of detail that cannot be read is stood in for by the next coarser one.
std::vector<graph::Id> BodyMaker::chosenChildren(const graph::SceneNode& node)
{
    if (node.kind != graph::ElementKind::Lod || node.children.empty())
        return shownChildren(node);
    const std::vector<graph::Id>& children = node.children;
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

void BodyMaker::add(const shapes::Shape& decodedShape, const Frame& frame, Pieces& pieces, BodyResult& result)
{
    if (decodedShape.damage) {
        result.losses.push_back(placeOf(frame.id, decodedShape.damage));
        return;
    }
    if (decodedShape.leftOut)
        m_context.log.warning("shape " + std::to_string(frame.id) + " lacks " + decodedShape.leftOut);
    shapes::Shape bare;
    const bool isHidden = frame.inherited.hidesVertexColours && !decodedShape.colours.empty();
    if (isHidden) {
        bare = decodedShape;
        bare.colours.clear();
    }
    const shapes::Shape& shape = isHidden ? bare : decodedShape;
    // Whoever takes the colours of vertices away, as the optimisation of trees does, is left with that of the material.
    model::MeshBuilder& mesh = pieces.of(frame.inherited.appearance, formOf(shape));
    if (mesh.hasRoomFor(shape.positions.size() + shape.records()))
        m_triangles += shapes::addShape(mesh, shape, frame.placement, m_context.unit);
    else
        result.losses.emplace_back("a body has more vertices than a mesh can hold");
}

BodyResult BodyMaker::make(graph::Id top, const std::vector<graph::Id>& starts)
{
    const graph::SceneGraph& graph = m_context.file.graph;
    BodyResult result;
    Pieces pieces;
    graph::InheritedMaterial around;
    std::size_t steps = m_steps / 2; // the rest is for other bodies
    if (const graph::SceneNode* node = graph.find(top))
        around = graph::inheritedMaterial(graph, *node, {}, m_context.appearances);
    around.appearance = model::NoAppearance;
    std::vector<Frame> open;
    open.reserve(starts.size());
    for (const graph::Id start : starts)
        open.push_back({start, graph::NoMove, around});
    while (!open.empty()) {
        Frame frame = open.back();
        open.pop_back();
        const graph::SceneNode* node = graph.find(frame.id);
        if (!node || node->isIgnored)
            continue;
        if (frame.id != top) {
            frame.placement = graph::combined(placementOf(graph, *node), frame.placement);
            frame.inherited = graph::inheritedMaterial(graph, *node, frame.inherited, m_context.appearances);
        }
        if (node->kind == graph::ElementKind::Shape)
            add(decoded(frame.id, *node), frame, pieces, result);
        const std::vector<graph::Id> children = chosenChildren(*node);
        if (children.size() > steps) {
            result.losses.emplace_back("the groups of its shapes multiply without end");
            break;
        }
        steps -= children.size();
        m_steps -= children.size();
        for (const graph::Id child : children)
            open.push_back({child, frame.placement, frame.inherited});
    }
    m_decoded.clear();
    result.body = pieces.take();
    return result;
}

} // namespace ptx::jt
