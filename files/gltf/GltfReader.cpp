#include "files/gltf/GltfReader.h"

#include "files/SceneBuilding.h"
#include "files/gltf/GltfInstances.h"
#include "files/gltf/GltfLevels.h"
#include "files/gltf/GltfMeshes.h"
#include "host/OSGSystem/Names.h"
#include "scene/MatrixMath.h"
#include "scene/SceneEdits.h"

#include <algorithm>
#include <cmath>

namespace files::gltf
{

namespace
{

QString nodePlace(int node)
{
    return QStringLiteral("/nodes/%1").arg(node);
}

/// A node of the document whose turn will come.
struct Step {
    int node;
    osg::NodePtr parent;
    std::uint64_t depth;
};

/// Builds the nodes of a scene, level by level.
class GltfTree
{
public:
    GltfTree(const GltfDocument& document, ReadTask& task)
        : m_model(document.model), m_cameras(document.cameras), m_extras(document.extras), m_task(task),
          m_variants(document, task), m_meshes(document, m_variants, task), m_levels(document.model, task),
          m_seen(document.model.nodes.size())
    {
    }

    osg::NodePtr build();

private:
    std::string sceneName() const;
    std::vector<int> rootNodes();
    std::vector<int> nodesWithoutParent() const;
    void failIfTooDeep(std::uint64_t depth, int node) const;
    void enter(const Step& step);
    void add(const Step& step);
    const tinygltf::Node& node(int index) const;
    using Instances = std::optional<std::vector<osg::Matrix>>;
    bool addParts(const Step& step, int index, const osg::Matrix& matrix, const Instances& instances);
    osg::NodePtr makeNodeFor(const tinygltf::Node& node, const std::string& name, const osg::Matrix& matrix,
                             const GltfMeshes::Geometries& geometries);
    osg::Matrix matrixOf(const tinygltf::Node& node, int index) const;
    void addCamera(const osg::NodePtr& parent, int camera);
    void addGeometry(const osg::NodePtr& parent, const osg::GeometryPtr& core);
    void addInstances(const osg::NodePtr& parent, const std::string& name, const std::vector<osg::Matrix>& places,
                      const GltfMeshes::Geometries& geometries);

    const tinygltf::Model& m_model;
    const std::vector<std::optional<GltfCamera>>& m_cameras;
    const GltfExtras& m_extras;
    ReadTask& m_task;
    GltfVariants m_variants;
    GltfMeshes m_meshes;
    GltfPartPlaces m_parts;
    GltfLevels m_levels;
    std::vector<bool> m_seen;
    std::vector<Step> m_queue;
    bool m_hasGeometry = false;
};

osg::Vec3f vectorOf(const std::vector<double>& numbers, const osg::Vec3f& otherwise)
{
    if (numbers.size() != 3)
        return otherwise;
    return {float(numbers[0]), float(numbers[1]), float(numbers[2])};
}

osg::Quaternion rotationOf(const std::vector<double>& numbers)
{
    if (numbers.size() != 4)
        return {};
    return {float(numbers[0]), float(numbers[1]), float(numbers[2]), float(numbers[3])};
}

osg::Matrix matrixFrom(const tinygltf::Node& node)
{
    osg::Matrix matrix;
    if (node.matrix.size() == matrix.values.size())
        std::transform(node.matrix.begin(), node.matrix.end(), matrix.values.begin(),
                       [](double number) { return static_cast<float>(number); });
    else if (!node.translation.empty() || !node.rotation.empty() || !node.scale.empty())
        matrix = osg::composed(
            {vectorOf(node.translation, {}), rotationOf(node.rotation), vectorOf(node.scale, {1, 1, 1}), {}});
    return matrix;
}

osg::Matrix GltfTree::matrixOf(const tinygltf::Node& node, int index) const
{
    const osg::Matrix matrix = matrixFrom(node);
    if (!std::all_of(matrix.values.begin(), matrix.values.end(), [](float value) { return std::isfinite(value); }))
        m_task.fail(ErrorCode::Damaged, tr("the transform of this node has no finite numbers"), nodePlace(index));
    return matrix;
}

std::string GltfTree::sceneName() const
{
    const auto scene = static_cast<std::size_t>(std::max(m_model.defaultScene, 0));
    return scene < m_model.scenes.size() ? m_model.scenes[scene].name : std::string();
}

std::vector<int> GltfTree::nodesWithoutParent() const
{
    std::vector<bool> isChild(m_model.nodes.size());
    for (const tinygltf::Node& node : m_model.nodes)
        for (const int child : node.children)
            if (child >= 0 && static_cast<std::size_t>(child) < isChild.size())
                isChild[static_cast<std::size_t>(child)] = true;
    std::vector<int> result;
    for (std::size_t i = 0; i < isChild.size(); ++i)
        if (!isChild[i] && !m_levels.isLevel(static_cast<int>(i)))
            result.push_back(static_cast<int>(i));
    return result;
}

std::vector<int> GltfTree::rootNodes()
{
    if (m_model.scenes.empty())
        return nodesWithoutParent();
    const auto scene = static_cast<std::size_t>(std::max(m_model.defaultScene, 0));
    if (scene >= m_model.scenes.size())
        m_task.fail(ErrorCode::Damaged, tr("the scene %1 does not exist").arg(m_model.defaultScene),
                    QStringLiteral("/scene"));
    if (m_model.scenes.size() > 1)
        m_task.warn(
            tr("only the default one of %1 scenes was imported").arg(static_cast<qulonglong>(m_model.scenes.size())));
    return m_model.scenes[scene].nodes;
}

void GltfTree::failIfTooDeep(std::uint64_t depth, int node) const
{
    if (depth > m_task.options().limits.maxDepth)
        m_task.fail(ErrorCode::LimitExceeded, tr("the tree is deeper than %1").arg(m_task.options().limits.maxDepth),
                    nodePlace(node));
}

/// A node that is met twice is its own ancestor or has two parents; glTF allows neither.
void GltfTree::enter(const Step& step)
{
    if (step.node < 0 || static_cast<std::size_t>(step.node) >= m_seen.size())
        m_task.fail(ErrorCode::Damaged, tr("this node does not exist"), nodePlace(step.node));
    if (m_seen[static_cast<std::size_t>(step.node)])
        m_task.fail(ErrorCode::Damaged, tr("this node hangs below itself or below two others"), nodePlace(step.node));
    failIfTooDeep(step.depth, step.node);
    m_seen[static_cast<std::size_t>(step.node)] = true;
}

const tinygltf::Node& GltfTree::node(int index) const
{
    return m_model.nodes[static_cast<std::size_t>(index)];
}

/// A level of detail without a name is called as the node that it takes the place of, whose facts it has, too.
void GltfTree::add(const Step& step)
{
    static const GltfMeshes::Geometries none;
    enter(step);
    const int index = m_levels.shown(step.node);
    if (index != step.node)
        enter({index, step.parent, step.depth});
    const tinygltf::Node& from = this->node(index);
    const std::string& name = from.name.empty() ? this->node(step.node).name : from.name;
    const GltfMeshes::Geometries& geometries = from.mesh < 0 ? none : m_meshes.geometries(from.mesh, nodePlace(index));
    const osg::Matrix matrix = matrixOf(from, index);
    const Instances instances = instancesOf(from, m_meshes.accessors(), m_task, nodePlace(index));
    if (addParts(step, index, matrix, instances))
        return;
    m_task.countNodes(1 + geometries.size());
    const osg::NodePtr node = makeNodeFor(from, name, matrix, instances ? none : geometries);
    if (instances)
        addInstances(node, name, *instances, geometries);
    if (const auto group = m_extras.groupOfNode(step.node))
        m_parts.addGroup(*group, node);
    m_extras.addToNode(step.node, node);
    m_extras.addMeshToNode(from.mesh, node);
    osg::addChild(step.parent, node);
    m_variants.addNode(step.node, node);
    addCamera(node, from.camera);
    for (const int child : from.children)
        m_queue.push_back({child, node, step.depth + 1});
}

/// What a node of ours draws together becomes the parts that it was, if the node tells them.
bool GltfTree::addParts(const Step& step, int index, const osg::Matrix& matrix, const Instances& instances)
{
    const tinygltf::Node& from = node(index);
    const std::vector<GltfPart>* parts = m_extras.partsOfNode(step.node);
    if (!parts || parts->empty() || from.mesh < 0 || !from.children.empty() || from.camera >= 0)
        return false;
    const QString place = nodePlace(index);
    const std::optional<std::vector<GltfMeshes::Geometries>> pieces =
        m_meshes.parts(from.mesh, instances ? 1 : parts->size(), place);
    const GltfMeshes::Geometries& whole = pieces ? pieces->front() : m_meshes.geometries(from.mesh, place);
    if (instances ? instances->size() != parts->size() : !pieces)
        return false;
    for (std::size_t i = 0; i < parts->size(); ++i) {
        const GltfMeshes::Geometries& own = instances ? whole : (*pieces)[i];
        failIfTooDeep(step.depth + (*parts)[i].path.size(), step.node);
        m_task.countNodes(1 + own.size() + (*parts)[i].path.size());
        m_hasGeometry = m_hasGeometry || !own.empty();
        m_parts.add(step.parent, instances ? matrix * (*instances)[i] : matrix, (*parts)[i], own);
    }
    return true;
}

osg::NodePtr GltfTree::makeNodeFor(const tinygltf::Node& node, const std::string& name, const osg::Matrix& matrix,
                                   const GltfMeshes::Geometries& geometries)
{
    m_hasGeometry = m_hasGeometry || !geometries.empty();
    if (node.children.empty() && node.camera < 0 && matrix.isIdentity() && geometries.size() == 1)
        return makeNode(name, geometries.front().get());
    const osg::NodePtr result = matrix.isIdentity() ? makeGroup(name) : makeTransform(name, matrix);
    for (const osg::RefPtr<osg::GeometryPtr>& core : geometries)
        addGeometry(result, core.get());
    return result;
}

/// In a node of its own, named after the camera.
void GltfTree::addCamera(const osg::NodePtr& parent, int camera)
{
    const auto index = static_cast<std::size_t>(std::max(camera, 0));
    if (camera < 0 || index >= m_cameras.size() || !m_cameras[index])
        return;
    m_task.countNodes(1);
    const osg::NodePtr node =
        makeNode(m_cameras[index]->name, makeCamera(*m_cameras[index], m_extras.millimetresPerUnit()));
    m_extras.addCameraToNode(camera, node);
    osg::addChild(parent, node);
}

/// Named after the mesh.
void GltfTree::addGeometry(const osg::NodePtr& parent, const osg::GeometryPtr& core)
{
    const char* name = osg::getName(core);
    osg::addChild(parent, makeNode(name ? name : "", core));
}

/// Each in a node of its own, named after the node that has them and numbered from 1 on.
void GltfTree::addInstances(const osg::NodePtr& parent, const std::string& name, const std::vector<osg::Matrix>& places,
                            const GltfMeshes::Geometries& geometries)
{
    m_hasGeometry = m_hasGeometry || (!geometries.empty() && !places.empty());
    m_task.countNodes(places.size() * geometries.size());
    for (std::size_t i = 0; i < places.size(); ++i) {
        const osg::NodePtr instance = makeTransform(name + ' ' + std::to_string(i + 1), places[i]);
        for (const osg::RefPtr<osg::GeometryPtr>& core : geometries)
            addGeometry(instance, core.get());
        osg::addChild(parent, instance);
    }
}

osg::NodePtr GltfTree::build()
{
    FreshTree tree(makeGroup({}));
    const osg::NodePtr place =
        makeTransform(sceneName(), toMillimetresZUp(m_extras.millimetresPerUnit(), m_extras.upAxis()));
    m_extras.addToScene(std::max(m_model.defaultScene, 0), place);
    osg::addChild(tree.root(), place);
    for (const int node : rootNodes())
        m_queue.push_back({node, place, 3});
    for (std::size_t i = 0; i < m_queue.size(); ++i)
        add(Step(m_queue[i]));
    m_parts.finish();
    if (!m_hasGeometry)
        m_task.fail(ErrorCode::Empty, tr("there is no mesh in the scene of this file"));
    m_variants.attach(tree.root());
    return tree.take();
}

} // namespace

osg::NodePtr readGltf(ReadTask& task)
{
    const GltfDocument document = openGltf(task);
    return GltfTree(document, task).build();
}

} // namespace files::gltf
