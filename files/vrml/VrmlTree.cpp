#include "files/vrml/VrmlTree.h"

#include "files/vrml/VrmlGeometry.h"
#include "files/vrml/VrmlParser.h"
#include "files/vrml/VrmlTransforms.h"
#include "host/OSGSystem/Names.h"
#include "host/znOpenSGUberCamera/UberCamera.h"
#include "scene/EditScope.h"
#include "scene/MatrixMath.h"
#include "scene/SceneEdits.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace files::vrml
{

namespace
{

constexpr std::size_t maxInlineDepth = 16;

} // namespace

void Tree::build(const File& file, const osg::NodePtr& parent)
{
    m_open.push_back(&file);
    addAll(file.nodes, parent);
    m_open.pop_back();
}

void Tree::addAll(std::span<Node* const> nodes, const osg::NodePtr& parent)
{
    for (const Node* node : nodes)
        add(*node, parent);
}

void Tree::add(const Node& node, const osg::NodePtr& parent)
{
    const std::uint64_t limit = std::min(maxNesting, m_task.options().limits.maxDepth);
    if (m_depth >= limit)
        source().fail(ErrorCode::LimitExceeded, tr("nodes are nested deeper than %1").arg(limit), node.offset);
    m_task.countNodes(1);
    ++m_depth;
    switch (node.kind()) {
    case NodeKind::Group:
    case NodeKind::Transform:
        addAll(node.nodes("children"), makeGroupFor(node, parent));
        break;
    case NodeKind::Switch:
    case NodeKind::LOD:
        addChosen(node, parent);
        break;
    case NodeKind::Inline:
        addInline(node, parent);
        break;
    case NodeKind::Shape:
        addShape(node, parent);
        break;
    case NodeKind::Viewpoint:
        osg::addChild(parent, makeNode(node.name, coreOf(node, [&] { return makeCamera(node); })));
        break;
    default:
        break; // what stands here by itself is not seen
    }
    --m_depth;
}

/// The core that `make` makes when it is asked for first.
template <class Make>
osg::NodeCorePtr Tree::coreOf(const Node& node, Make make)
{
    const auto [entry, isNew] = m_cores.try_emplace(&node);
    if (isNew)
        entry->second = make();
    return entry->second.get();
}

osg::NodePtr Tree::makeGroupFor(const Node& node, const osg::NodePtr& parent)
{
    const osg::NodeCorePtr core = coreOf(node, [&]() -> osg::NodeCorePtr {
        if (node.kind() != NodeKind::Transform)
            return osg::Group::create();
        const osg::Matrix matrix = matrixOf(node);
        if (!std::all_of(matrix.values.begin(), matrix.values.end(), [](float v) { return std::isfinite(v); }))
            source().fail(ErrorCode::Damaged, tr("this transform has no finite numbers"), node.offset);
        const osg::Transform3DPtr transform = osg::Transform3DBase::create();
        osg::edit(transform, osg::TransformBase::MatrixFieldMask, [&] { transform->setMatrix(matrix); });
        return transform;
    });
    const osg::NodePtr made = makeNode(node.name, core);
    osg::addChild(parent, made);
    return made;
}

/// The child of a switch that is chosen, and the finest level.
void Tree::addChosen(const Node& node, const osg::NodePtr& parent)
{
    const bool isSwitch = node.kind() == NodeKind::Switch;
    const std::span<Node* const> all = node.nodes(isSwitch ? "choice" : "level");
    const std::int32_t chosen = isSwitch ? node.integer("whichChoice", -1) : 0;
    const osg::NodePtr group = makeGroupFor(node, parent);
    if (chosen >= 0 && static_cast<std::size_t>(chosen) < all.size())
        add(*all[static_cast<std::size_t>(chosen)], group);
}

void Tree::addInline(const Node& node, const osg::NodePtr& parent)
{
    const File* file = m_files.openInline(node, *m_open.back());
    if (!file)
        return;
    if (std::find(m_open.begin(), m_open.end(), file) != m_open.end())
        return source().warn(tr("the file '%1' takes itself in").arg(file->source.path()), node.offset);
    if (m_open.size() > maxInlineDepth)
        source().fail(ErrorCode::LimitExceeded,
                      tr("files take in each other deeper than %1").arg(static_cast<qulonglong>(maxInlineDepth)),
                      node.offset);
    build(*file, makeGroupFor(node, parent));
}

void Tree::addShape(const Node& node, const osg::NodePtr& parent)
{
    const osg::NodeCorePtr core = coreOf(node, [&] { return makeShape(node); });
    if (!core)
        return;
    m_hasGeometry = true;
    const Node* geometry = node.node("geometry");
    osg::addChild(parent, makeNode(node.name.empty() && geometry ? geometry->name : node.name, core));
}

const osg::Mesh& Tree::meshFor(const Node& geometry, bool isTextured)
{
    const auto [entry, isNew] = m_meshes.try_emplace({&geometry, isTextured});
    if (isNew)
        entry->second = meshOf(geometry, isTextured, source());
    return entry->second;
}

/// Lines and points show no picture.
osg::NodeCorePtr Tree::makeShape(const Node& node)
{
    const Node* geometry = node.node("geometry");
    if (!geometry)
        return {};
    const Node* appearance = node.node("appearance");
    const bool canHavePicture = geometry->kind() != NodeKind::IndexedLineSet && geometry->kind() != NodeKind::PointSet;
    const AppearanceTexture* texture = canHavePicture ? m_textures.of(appearance, source()) : nullptr;
    osg::Mesh mesh = meshFor(*geometry, texture);
    if (mesh.positions.empty())
        return {};
    if (texture && mesh.texCoords.empty()) {
        source().warn(tr("a picture was left out: the shape says not how it lies"), node.offset);
        texture = nullptr;
    }
    if (texture && texture->hasColors())
        mesh.colors = {};
    const Painted otherwise = mesh.triangles.empty() ? Painted::AsLines : Painted::ByMaterial;
    const Painted painted = mesh.colors.empty() ? otherwise : Painted::ByColors;
    return makeGeometry(geometry->name, std::move(mesh), m_materials.get(appearance, texture, painted));
}

osg::NodeCorePtr Tree::makeCamera(const Node& node) const
{
    using Base = osg::UberCameraBase;
    const osg::UberCameraPtr camera = Base::create();
    const osg::Matrix place = osg::translationMatrix(vectorOf(node.floats("position"), {0, 0, 10})) *
                              osg::rotationMatrix(rotationOf(node.floats("orientation")));
    const auto radians = node.number("fieldOfView", float(std::numbers::pi / 4));
    const auto degrees = float(std::clamp(radians * 180 / std::numbers::pi, 0.1, 179.0));
    const std::span<const std::string> description = node.strings("description");
    osg::setName(camera, description.empty() || description.front().empty() ? node.name : description.front());
    osg::edit(camera, osg::TransformBase::MatrixFieldMask, [&] { camera->setMatrix(place); });
    osg::edit(camera, Base::FieldOfViewFieldMask, [&] { camera->setFieldOfView(degrees); });
    return camera;
}

} // namespace files::vrml
