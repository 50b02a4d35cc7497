#include "files/glb/GlbNodes.h"

#include "files/Text.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Transform.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "scene/MatrixMath.h"
#include "scene/Tags.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace files::glb
{

namespace
{

/// Of a node above what is drawn beside a part to tell of it, as converters tag it.
constexpr const char* AnnotationsTag = "ptx::pmi";

/// (x, y, z) millimetres with Z up are (x, z, -y) / 1000 metres with Y up.
osg::Matrix toFile(const WriteOptions& options)
{
    const auto unit = static_cast<float>(1 / options.millimetresPerUnit);
    if (options.upAxis == UpAxis::Z)
        return {{unit, 0, 0, 0, 0, unit, 0, 0, 0, 0, unit, 0, 0, 0, 0, 1}};
    return {{unit, 0, 0, 0, 0, 0, -unit, 0, 0, unit, 0, 0, 0, 0, 0, 1}};
}

osg::Matrix matrixOf(const osg::NodeCorePtr& core)
{
    const auto transform = osg::fcCast<osg::Transform>(core);
    return transform ? transform->getMatrix() : osg::Matrix();
}

/// The file that a reference without content names; empty for anything else.
std::string referredFile(const osg::NodePtr& node)
{
    const auto reference = osg::fcCast<osg::ExtReference>(node->getCore());
    if (!reference || node->getNChildren() > 0)
        return {};
    for (const osg::FileReferencePtr& file : {reference->getSourceFile(), reference->getSmartFile()})
        if (file && !file->getPath().empty())
            return file->getPath();
    return {};
}

/// The step of a node of which the file tells no other.
std::string stepByName(const osg::NodePtr& node)
{
    const char* name = osg::getName(node);
    return name ? name : "-";
}

/// The third root of how a matrix changes volumes; 1 for one that leaves no space.
double scaleOf(const osg::Matrix& m)
{
    const double volume = double(m[0]) * (double(m[5]) * m[10] - double(m[6]) * m[9]) -
                          double(m[4]) * (double(m[1]) * m[10] - double(m[2]) * m[9]) +
                          double(m[8]) * (double(m[1]) * m[6] - double(m[2]) * m[5]);
    const double scale = std::cbrt(std::abs(volume));
    return scale > 1e-9 && scale < 1e9 ? scale : 1;
}

/// The topmost group rules all below it.
osg::MaterialPtr materialBelow(const osg::NodePtr& node, const osg::MaterialPtr& above)
{
    const auto group = above ? osg::MaterialGroupPtr() : osg::fcCast<osg::MaterialGroup>(node->getCore());
    return group ? group->getMaterial() : above;
}

} // namespace

GlbNodes::GlbNodes(const osg::NodePtr& root, const WriteOptions& options)
    : m_variants(root), m_meshes(m_variants, options), m_cameras(options.millimetresPerUnit), m_idSteps(root)
{
    enqueue({root, {}, toFile(options), {}, 1, extrasOf(root, stepByName(root))});
    while (!m_queue.empty()) {
        Step step = std::move(m_queue.front());
        m_queue.pop_front();
        add(std::move(step));
    }
}

std::size_t GlbNodes::enqueue(Step step)
{
    m_queue.push_back(std::move(step));
    return m_enqueued++;
}

void GlbNodes::add(Step step)
{
    if (!step.inner.is_null()) {
        Json json = step.inner;
        if (step.node)
            addContent(step, json);
        m_list.add(json);
        return;
    }
    const osg::Matrix own = matrixOf(step.node->getCore());
    const osg::Matrix matrix = step.above.isIdentity() ? own : step.above * own;
    step.scale *= scaleOf(matrix);
    const std::optional<GlbPlacement> placement = placementOf(matrix);
    Json json = placement ? placement->outer : Json::object();
    const char* name = osg::getName(step.node);
    if (name)
        json["name"] = name;
    addVariants(step.node, json);
    if (!placement)
        m_warnings << files::tr("what hangs below '%1' was left out because its transform has no finite numbers")
                          .arg(QString::fromUtf8(name ? name : ""));
    else if (placement->inner.empty())
        addContent(step, json);
    else
        json["children"] = {enqueue({step.node, step.material, {}, placement->inner, step.scale})};
    m_list.addText(withExtras(std::move(json), step.extras));
}

std::string GlbNodes::extrasOf(const osg::NodePtr& node, const std::string& idStep)
{
    std::string members = m_attributes.membersOf(node);
    if (idStep != stepByName(node))
        members += (members.empty() ? "\"step\":" : ",\"step\":") + textOf(Json(idStep));
    const std::vector<std::string>& tags = osg::tagsOf(node);
    if (std::find(tags.begin(), tags.end(), AnnotationsTag) != tags.end())
        members += members.empty() ? "\"annotations\":true" : ",\"annotations\":true";
    return members;
}

void GlbNodes::addContent(const Step& step, Json& json)
{
    if (const auto geometry = osg::fcCast<osg::Geometry>(step.node->getCore()))
        if (const auto mesh = m_meshes.number(geometry, step.material))
            json["mesh"] = *mesh;
    if (const std::string file = referredFile(step.node); !file.empty())
        json["extras"]["externalReference"] = file;
    if (const auto camera = osg::fcCast<osg::UberCamera>(step.node->getCore()))
        addCamera(camera, step.scale, json);
    addChildren(step, json);
}

/// Viewers measure a camera's distances in the space of its node, which the top node has scaled.
void GlbNodes::addCamera(const osg::UberCameraPtr& camera, double scale, Json& json)
{
    const auto unscaled = static_cast<float>(1 / scale);
    const Json lens = {{"camera", m_cameras.add(camera)}, {"scale", {unscaled, unscaled, unscaled}}};
    json["children"].push_back(enqueue({{}, {}, {}, lens}));
}

void GlbNodes::addVariants(const osg::NodePtr& node, Json& json)
{
    if (const Json sets = m_variants.sets(); m_list.size() == 0 && !sets.empty())
        json["extras"]["variantSets"] = sets;
    const Json* visibility = m_variants.visibility(node);
    if (!visibility)
        return;
    json["extras"]["variants"] = *visibility;
    if (node->isActive())
        return;
    json["extensions"]["KHR_node_visibility"]["visible"] = false;
    m_hasHidden = true;
}

/// The attributes of children are looked at here, as their steps are, which are made of them: when it is their turn to
/// be added, a large tree has driven them out of the caches.
void GlbNodes::addChildren(const Step& step, Json& json)
{
    const osg::MaterialPtr material = materialBelow(step.node, step.material);
    const std::vector<std::string> idSteps = m_idSteps.below(step.node);
    for (unsigned i = 0; i < step.node->getNChildren(); ++i) {
        const osg::NodePtr child = step.node->getChild(i);
        if (child->isActive() || m_variants.visibility(child))
            json["children"].push_back(enqueue({child, material, {}, {}, step.scale, extrasOf(child, idSteps[i])}));
    }
}

} // namespace files::glb
