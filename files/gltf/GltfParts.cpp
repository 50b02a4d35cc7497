#include "files/gltf/GltfParts.h"

#include "files/SceneBuilding.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Transform.h"
#include "scene/MatrixMath.h"
#include "scene/SceneEdits.h"

#include <unordered_map>
#include <utility>

namespace files::gltf
{

namespace
{

template <class T>
void take(const osg::Buffer<T>& from, const std::vector<std::uint32_t>& vertices, osg::Buffer<T>& to)
{
    if (from.empty())
        return;
    std::vector<T> values;
    values.reserve(vertices.size());
    for (const std::uint32_t vertex : vertices)
        values.push_back(from[vertex]);
    to = std::move(values);
}

osg::Matrix matrixOf(const osg::NodePtr& node)
{
    const auto transform = osg::fcCast<osg::Transform>(node->getCore());
    return transform ? transform->getMatrix() : osg::Matrix();
}

std::string nameOf(const osg::NodePtr& node)
{
    const char* name = osg::getName(node);
    return name ? name : "";
}

} // namespace

osg::Mesh meshOfPart(const osg::Mesh& whole, std::size_t first, std::size_t count)
{
    const auto elements = !whole.triangles.empty() ? &osg::Mesh::triangles
                          : !whole.lines.empty()   ? &osg::Mesh::lines
                                                   : &osg::Mesh::points;
    std::unordered_map<std::uint32_t, std::uint32_t> numbers;
    std::vector<std::uint32_t> vertices;
    std::vector<std::uint32_t> indices;
    indices.reserve(count);
    for (std::size_t i = first; i < first + count; ++i) {
        const std::uint32_t vertex = (whole.*elements)[i];
        const auto [entry, isNew] = numbers.try_emplace(vertex, static_cast<std::uint32_t>(vertices.size()));
        if (isNew)
            vertices.push_back(vertex);
        indices.push_back(entry->second);
    }
    osg::Mesh mesh;
    take(whole.positions, vertices, mesh.positions);
    take(whole.normals, vertices, mesh.normals);
    take(whole.texCoords, vertices, mesh.texCoords);
    take(whole.texCoords1, vertices, mesh.texCoords1);
    take(whole.colors, vertices, mesh.colors);
    mesh.*elements = std::move(indices);
    return mesh;
}

void GltfPartPlaces::add(const osg::NodePtr& anchor, const osg::Matrix& place, const GltfPart& part,
                         Geometries geometries)
{
    m_parts.push_back({anchor, place, &part, std::move(geometries)});
}

void GltfPartPlaces::finish()
{
    for (const Placed& placed : m_parts)
        add(placed);
    m_parts.clear();
    m_children.clear();
}

osg::NodePtr GltfPartPlaces::childOf(const osg::NodePtr& node, const std::string& name)
{
    const auto [entry, isNew] = m_children.try_emplace(node);
    Children& children = entry->second;
    for (unsigned i = 0; isNew && i < node->getNChildren(); ++i) {
        const auto [known, isFirst] = children.try_emplace(nameOf(node->getChild(i)), node->getChild(i));
        if (!isFirst || osg::fcCast<osg::Geometry>(node->getChild(i)->getCore()))
            known->second = {};
    }
    const auto found = children.find(name);
    if (found != children.end() && found->second)
        return found->second;
    const osg::NodePtr group = makeGroup(name);
    osg::addChild(node, group);
    children[name] = group;
    return group;
}

/// To the node that the group of the part numbers, if it has one that is below its anchor.
bool GltfPartPlaces::descendToGroup(const Placed& placed, osg::NodePtr& parent, osg::Matrix& above) const
{
    const auto group = placed.part->group ? m_groups.find(*placed.part->group) : m_groups.end();
    if (group == m_groups.end())
        return false;
    osg::Matrix place;
    for (osg::NodePtr node = group->second; node != placed.anchor; node = node->getParent()) {
        if (!node->getParent())
            return false;
        place = matrixOf(node) * place;
    }
    parent = group->second;
    above = place;
    return true;
}

void GltfPartPlaces::add(const Placed& placed)
{
    osg::NodePtr parent = placed.anchor;
    osg::Matrix above;
    if (!descendToGroup(placed, parent, above))
        for (const std::string& name : placed.part->path) {
            parent = childOf(parent, name);
            above = above * matrixOf(parent);
        }
    std::optional<osg::Matrix> back = osg::inverted(above);
    if (!back) {
        parent = placed.anchor;
        back = osg::Matrix();
    }
    const osg::NodePtr node = makeTransform(placed.part->name, *back * placed.place);
    osg::setAttributes(node, osg::AttributeOwner::Product, placed.part->product.get());
    osg::setAttributes(node, osg::AttributeOwner::Occurrence, placed.part->occurrence.get());
    for (const osg::RefPtr<osg::GeometryPtr>& core : placed.geometries) {
        const char* name = osg::getName(core.get());
        osg::addChild(node, makeNode(name ? name : "", core.get()));
    }
    osg::addChild(parent, node);
}

} // namespace files::gltf
