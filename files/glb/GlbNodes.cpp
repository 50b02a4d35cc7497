#include "files/glb/GlbNodes.h"

#include "files/Text.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Transform.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "scene/MatrixMath.h"
#include "scene/Tags.h"

#include <cmath>
#include <utility>

namespace files::glb
{

namespace
{

/// (x, y, z) millimetres with Z up are (x, z, -y) / 1000 metres with Y up.
osg::Matrix toFile(const WriteOptions& options)
{
    const auto unit = static_cast<float>(1 / options.millimetresPerUnit);
    if (options.upAxis == UpAxis::Z)
        return {{unit, 0, 0, 0, 0, unit, 0, 0, 0, 0, unit, 0, 0, 0, 0, 1}};
    return {{unit, 0, 0, 0, 0, 0, -unit, 0, 0, unit, 0, 0, 0, 0, 0, 1}};
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

std::string nameOf(const osg::NodePtr& node)
{
    const char* name = osg::getName(node);
    return name ? name : "";
}

} // namespace

GlbNodes::GlbNodes(const osg::NodePtr& root, const WriteOptions& options, const QString& path)
    : m_options(options), m_variants(options.variants ? root : osg::NodePtr()),
      m_fold(m_variants, options.fold, options.hidden != Hidden::LeaveOut), m_meshes(m_variants, options, path),
      m_cameras(options.millimetresPerUnit), m_idSteps(root)
{
    const GlbFold::Top top = m_fold.top(root, toFile(options));
    if (top.root)
        enqueue(stepOf({}, m_fold.chain(top.root, top.material), {}));
    if (top.frame)
        enqueueFrame(m_fold.chain(top.frame, top.material));
    m_queue.front().above = top.above;
    addScene(top.frame);
    while (!m_queue.empty()) {
        Step step = std::move(m_queue.front());
        m_queue.pop_front();
        add(std::move(step));
    }
    if (options.hidden == Hidden::LeaveOut && m_variants.hidden() > 0)
        m_warnings << files::tr("%1 hidden nodes that variant sets show were left out")
                          .arg(static_cast<qulonglong>(m_variants.hidden()));
}

/// What a frame draws itself hangs in a node below it.
void GlbNodes::enqueueFrame(GlbFold::Chain frame)
{
    Step step;
    step.chain = std::move(frame);
    GlbFold::Below below;
    for (unsigned i = 0; i < step.chain.last->getNChildren(); ++i)
        if (m_fold.isShown(step.chain.last->getChild(i)))
            below.nodes.push_back(i);
    enqueueChildren(step, below);
}

/// The frame of a file that was read is told by its scene.
void GlbNodes::addScene(const osg::NodePtr& frame)
{
    Json json;
    for (std::size_t i = 0; i < m_enqueued; ++i)
        json["nodes"].push_back(i);
    if (!frame) {
        m_scene = textOf(json);
        return;
    }
    if (const std::string name = nameOf(frame); !name.empty())
        json["name"] = name;
    m_scene = withExtras(std::move(json),
                         m_attributes.members(osg::attributeAttachment(frame, osg::AttributeOwner::Occurrence),
                                              osg::attributeAttachment(frame, osg::AttributeOwner::Product)));
}

std::size_t GlbNodes::enqueue(Step step)
{
    m_queue.push_back(std::move(step));
    return m_enqueued++;
}

GlbNodes::Step GlbNodes::stepOf(const Step& parent, const GlbFold::Chain& chain,
                                const std::optional<std::string>& idStep)
{
    Step step;
    step.chain = chain;
    step.scale = parent.scale;
    step.vertexScale = parent.vertexScale;
    step.name = step.within = decodedName(nameOf(chain.first));
    std::string told = step.name.empty() ? "-" : step.name;
    if (step.within.empty())
        step.within = parent.within;
    if (const osg::GeometryPtr naming = namingOf(parent, chain)) {
        step.naming = GlbMeshes::body(naming, chain.material);
        told.clear();
    }
    step.product = chain.product || isAnnotations(chain.first) ? chain.product : parent.product;
    step.extras = m_attributes.members(chain.occurrence, chain.product);
    if (idStep)
        if (const std::string id = idOf(chain, *idStep); id != told)
            step.extras += (step.extras.empty() ? "\"step\":" : ",\"step\":") + textOf(Json(id));
    if (isAnnotations(chain.first))
        step.extras += step.extras.empty() ? "\"annotations\":true" : ",\"annotations\":true";
    return step;
}

/// With the steps of the nodes that are one with the first; of one that only wraps a body it is that of the body.
std::string GlbNodes::idOf(const GlbFold::Chain& chain, const std::string& idStep)
{
    std::string id = idStep;
    for (osg::NodePtr node = chain.first; node != chain.last;) {
        const unsigned only = m_fold.onlyChild(node).value();
        const std::string step = m_idSteps.below(node)[only];
        id += (id.empty() || step.empty() ? "" : "/") + step;
        node = node->getChild(only);
    }
    if (!id.empty() || m_fold.below(chain).bodies.size() != 1)
        return id;
    const std::optional<unsigned> body = m_fold.onlyChild(chain.last);
    return body ? m_idSteps.below(chain.last)[*body] : id;
}

void GlbNodes::add(Step step)
{
    if (!step.inner.is_null()) {
        Json json = step.inner;
        if (step.chain.first)
            addContent(step, json);
        m_list.add(json);
        return;
    }
    const osg::Matrix matrix = placeOf(step);
    step.scale *= scaleOf(matrix);
    const std::optional<GlbPlacement> placement = placementOf(matrix);
    Json json = placement ? placement->outer : Json::object();
    if (step.naming.first)
        step.name = step.within + nameBehind(step);
    if (!step.name.empty())
        json["name"] = step.name;
    addVariants(step.chain.first, json);
    const std::string extras = std::move(step.extras);
    if (!placement)
        m_warnings << files::tr("what hangs below '%1' was left out because its transform has no finite numbers")
                          .arg(QString::fromStdString(step.name));
    else if (placement->inner.empty())
        addContent(step, json);
    else {
        step.above = {};
        step.inner = placement->inner;
        json["children"] = {enqueue(std::move(step))};
    }
    m_list.addText(withExtras(std::move(json), extras));
}

/// The transform in the file, and with it the scale of the vertices of `step`.
osg::Matrix GlbNodes::placeOf(Step& step) const
{
    const osg::Matrix own = matrixOf(step.chain.first->getCore());
    const osg::Matrix matrix = step.above.isIdentity() ? own : step.above * own;
    if (!m_options.scaleIntoVertices)
        return matrix;
    const Unscaled result = unscaled(matrix, step.vertexScale);
    step.vertexScale = result.below;
    return result.matrix;
}

/// The material gets its number here, as it does for a node with a name.
std::string GlbNodes::nameBehind(const Step& step)
{
    const std::string number = step.namingNumber > 1 ? " " + std::to_string(step.namingNumber) : std::string();
    return " \u00B7 " + m_meshes.materialName(step.naming) + number;
}

void GlbNodes::addContent(const Step& step, Json& json)
{
    const osg::NodePtr& node = step.chain.last;
    const GlbFold::Below below = m_fold.below(step.chain);
    if (const GlbMeshes::Bodies bodies = bodiesOf(step, below); !bodies.empty())
        if (const auto mesh = m_meshes.number(bodies, step.vertexScale, [&] { return meshName(step, below); }))
            json["mesh"] = *mesh;
    if (const std::string file = referredFile(node); !file.empty())
        json["extras"]["externalReference"] = file;
    if (const auto camera = osg::fcCast<osg::UberCamera>(node->getCore()))
        addCamera(camera, step.scale, json);
    for (const std::size_t child : enqueueChildren(step, below))
        json["children"].push_back(child);
}

/// What the node itself draws, and what those of its children draw that are no nodes of their own.
GlbMeshes::Bodies GlbNodes::bodiesOf(const Step& step, const GlbFold::Below& below)
{
    GlbMeshes::Bodies bodies;
    if (const auto geometry = osg::fcCast<osg::Geometry>(step.chain.last->getCore()))
        bodies.push_back(GlbMeshes::body(geometry, step.chain.material));
    for (const osg::NodePtr& body : below.bodies)
        bodies.push_back(GlbMeshes::body(osg::fcCast<osg::Geometry>(body->getCore()), step.chain.material));
    return bodies;
}

std::string GlbNodes::meshName(const Step& step, const GlbFold::Below& below)
{
    if (!below.bodyName.empty())
        return decodedName(below.bodyName);
    const std::string product = step.product ? step.product->text("Product") : std::string();
    return product.empty() ? step.within : product;
}

/// Viewers measure a camera's distances in the space of its node, which the top node has scaled.
void GlbNodes::addCamera(const osg::UberCameraPtr& camera, double scale, Json& json)
{
    const auto unscaled = static_cast<float>(1 / scale);
    if (m_fold.isOn() && std::abs(unscaled - 1) < 1e-6f) {
        json["camera"] = m_cameras.add(camera);
        return;
    }
    Step lens;
    lens.inner = {{"camera", m_cameras.add(camera)}, {"scale", {unscaled, unscaled, unscaled}}};
    json["children"].push_back(enqueue(std::move(lens)));
}

void GlbNodes::addVariants(const osg::NodePtr& node, Json& json)
{
    const Json* visibility = m_variants.visibility(node);
    if (!visibility)
        return;
    json["extras"]["variants"] = *visibility;
    if (!node->isActive())
        hide(json);
}

/// `json` has its transform already.
void GlbNodes::hide(Json& json)
{
    json["extensions"]["KHR_node_visibility"]["visible"] = false;
    m_hasHidden = true;
    if (m_options.hidden != Hidden::Shrink)
        return;
    Json shown = Json::object();
    for (const char* member : {"matrix", "translation", "rotation", "scale"})
        if (const auto found = json.find(member); found != json.end()) {
            shown[member] = std::move(*found);
            json.erase(found);
        }
    json.update(shrunk(shown));
    json["extras"]["shown"] = std::move(shown);
}

/// What a chain draws first: its own geometry, or one below it.
osg::GeometryPtr GlbNodes::drawnBy(const GlbFold::Chain& chain) const
{
    if (const auto own = osg::fcCast<osg::Geometry>(chain.last->getCore()))
        return own;
    for (unsigned i = 0; i < chain.last->getNChildren(); ++i)
        if (const osg::NodePtr child = chain.last->getChild(i); m_fold.isShown(child))
            if (const auto geometry = osg::fcCast<osg::Geometry>(child->getCore()))
                return geometry;
    return {};
}

/// Programs number what has the name of another node, and name what has none: such a node is to be named after the
/// material of what it draws, which this returns. Null for others.
osg::GeometryPtr GlbNodes::namingOf(const Step& parent, const GlbFold::Chain& chain) const
{
    const std::string name = decodedName(nameOf(chain.first));
    const bool isNamed = !name.empty() && name != parent.within;
    return !m_fold.isOn() || parent.within.empty() || isNamed ? osg::GeometryPtr() : drawnBy(chain);
}

/// The attributes of children are looked at here, as their steps are, which are made of them: when it is their turn to
/// be added, a large tree has driven them out of the caches. Returns the numbers of their nodes.
std::vector<std::size_t> GlbNodes::enqueueChildren(const Step& parent, const GlbFold::Below& below)
{
    std::vector<std::size_t> numbers;
    const std::vector<std::string> idSteps = m_idSteps.below(parent.chain.last);
    std::map<osg::MaterialPtr, unsigned> uses;
    for (const unsigned index : below.nodes) {
        const osg::NodePtr child = parent.chain.last->getChild(index);
        Step step = stepOf(parent, m_fold.chain(child, parent.chain.material), idSteps[index]);
        if (step.naming.first)
            step.namingNumber = ++uses[step.naming.second];
        numbers.push_back(enqueue(std::move(step)));
    }
    return numbers;
}

} // namespace files::glb
