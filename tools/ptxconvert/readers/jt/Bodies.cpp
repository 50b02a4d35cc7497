#include "tools/ptxconvert/readers/jt/Bodies.h"

#include "tools/ptxconvert/readers/jt/ShapeMesh.h"

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

/// The meshes of a body, one for each appearance.
class Pieces
{
public:
    MeshBuilder& of(int appearance) { return m_meshes[appearance]; }

    Body take()
    {
        Body body;
        for (auto& [appearance, mesh] : m_meshes)
            if (!mesh.isEmpty())
                body.pieces.push_back({appearance, mesh.take()});
        return body;
    }

private:
    std::map<int, MeshBuilder> m_meshes;
};

} // namespace

int appearanceOf(const SceneGraph& graph, const SceneNode& node, AppearanceTable& appearances)
{
    int appearance = NoAppearance;
    for (const Id id : node.attributes)
        if (const auto at = graph.attributes.find(id); at != graph.attributes.end() && at->second.diffuse) {
            const Colour& c = *at->second.diffuse;
            appearance = appearances.indexOf({c[0], c[1], c[2], c[3]});
        }
    return appearance;
}

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
        entry->second = m_context.file.shapeOf(node);
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

// A level of detail that cannot be read is stood in for by the next coarser one.
std::vector<Id> BodyMaker::chosenChildren(const SceneNode& node)
{
    const std::vector<Id>& children = node.children;
    if (node.kind == ElementKind::Switch)
        return node.selected >= 0 && static_cast<std::size_t>(node.selected) < children.size()
                   ? std::vector<Id>{children[static_cast<std::size_t>(node.selected)]}
                   : std::vector<Id>();
    if (node.kind != ElementKind::Lod || children.empty())
        return children;
    const std::size_t wanted = std::min(static_cast<std::size_t>(m_context.level), children.size() - 1);
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

BodyResult BodyMaker::make(const std::vector<Id>& starts, bool withOwn)
{
    const SceneGraph& graph = m_context.file.graph;
    BodyResult result;
    Pieces pieces;
    std::vector<Frame> open;
    for (const Id start : starts)
        open.push_back({start, NoMove, NoAppearance, withOwn});
    while (!open.empty()) {
        Frame frame = open.back();
        open.pop_back();
        const SceneNode* node = graph.find(frame.id);
        if (!node || node->isIgnored)
            continue;
        if (frame.withOwn) {
            frame.placement = combined(placementOf(graph, *node), frame.placement);
            if (const int own = appearanceOf(graph, *node, m_context.appearances); own != NoAppearance)
                frame.appearance = own;
        }
        if (node->kind == ElementKind::Shape) {
            const Shape& shape = decoded(frame.id, *node);
            MeshBuilder& mesh = pieces.of(frame.appearance);
            if (shape.damage)
                result.losses.push_back(placeOf(frame.id, shape.damage));
            else if (!mesh.hasRoomFor(shape.positions.size() + shape.normals.size()))
                result.losses.push_back("a body has more vertices than a mesh can hold");
            else
                m_triangles += addShape(mesh, shape, frame.placement, m_context.unit);
        }
        const std::vector<Id> children = chosenChildren(*node);
        if (children.size() > m_steps) {
            result.losses.push_back("the groups of its shapes multiply without end");
            break;
        }
        m_steps -= children.size();
        for (const Id child : children)
            open.push_back({child, frame.placement, frame.appearance, true});
    }
    m_decoded.clear();
    result.body = pieces.take();
    return result;
}

} // namespace ptx::jt
