#include "files/glb/GlbFold.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Names.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "host/znOpenSGUberCamera/UberCamera.h"
#include "scene/CoreMaterial.h"
#include "scene/MatrixMath.h"
#include "scene/Tags.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace files::glb
{

namespace
{

std::string_view nameOf(const osg::AttachmentContainerPtr& container)
{
    const char* name = osg::getName(container);
    return name ? name : "";
}

/// A core that does no more than hold children, and perhaps a material for them.
bool isMereGroup(const osg::NodeCorePtr& core)
{
    return osg::fcCast<osg::Group>(core) && !osg::fcCast<osg::ExtReference>(core) && matrixOf(core).isIdentity();
}

/// What a geometry is called when its node is gone; none when its node and its core have a name each.
std::optional<std::string_view> bodyName(const osg::NodePtr& node, std::string_view above)
{
    const std::string_view own = nameOf(node);
    const std::string_view core = nameOf(node->getCore());
    if (core.empty())
        return own.empty() ? above : own;
    return own.empty() || own == core || own == above ? std::optional(core) : std::nullopt;
}

bool hasAttributes(const osg::NodePtr& node)
{
    return osg::attributeAttachment(node, osg::AttributeOwner::Occurrence) ||
           osg::attributeAttachment(node, osg::AttributeOwner::Product);
}

} // namespace

osg::Matrix matrixOf(const osg::NodeCorePtr& core)
{
    const auto transform = osg::fcCast<osg::Transform>(core);
    return transform ? transform->getMatrix() : osg::Matrix();
}

bool isAnnotations(const osg::NodePtr& node)
{
    const std::vector<std::string>& tags = osg::tagsOf(node);
    return std::find(tags.begin(), tags.end(), osg::AnnotationsTag) != tags.end();
}

std::optional<unsigned> GlbFold::onlyChild(const osg::NodePtr& node) const
{
    std::optional<unsigned> only;
    for (unsigned i = 0; i < node->getNChildren(); ++i)
        if (isShown(node->getChild(i))) {
            if (only)
                return std::nullopt;
            only = i;
        }
    return only;
}

bool GlbFold::hasShownChild(const osg::NodePtr& node) const
{
    for (unsigned i = 0; i < node->getNChildren(); ++i)
        if (isShown(node->getChild(i)))
            return true;
    return false;
}

bool GlbFold::isTold(const osg::NodePtr& node) const
{
    return m_variants.visibility(node) || isAnnotations(node);
}

/// Both must not say something of the same. A camera keeps its own name; one that has a place of its own is a node.
bool GlbFold::isLink(const Chain& chain, const osg::NodePtr& child) const
{
    const osg::NodeCorePtr core = child->getCore();
    const bool isCamera =
        osg::fcCast<osg::UberCamera>(core) && child->getNChildren() == 0 && matrixOf(core).isIdentity();
    const std::string_view name = nameOf(child);
    const bool isNameKept = name.empty() || name == nameOf(chain.first) || (isCamera && name == nameOf(core));
    return (isCamera || isMereGroup(core)) && isNameKept && !isTold(child) &&
           !(chain.occurrence && osg::attributeAttachment(child, osg::AttributeOwner::Occurrence)) &&
           !(chain.product && osg::attributeAttachment(child, osg::AttributeOwner::Product));
}

GlbFold::Chain GlbFold::chain(const osg::NodePtr& node, const osg::MaterialPtr& above) const
{
    Chain chain{node, node, osg::materialBelow(node, above),
                osg::attributeAttachment(node, osg::AttributeOwner::Occurrence),
                osg::attributeAttachment(node, osg::AttributeOwner::Product)};
    while (m_isOn && osg::fcCast<osg::Group>(chain.last->getCore())) {
        const std::optional<unsigned> only = onlyChild(chain.last);
        const osg::NodePtr child = only ? chain.last->getChild(*only) : osg::NodePtr();
        if (!child || !isLink(chain, child))
            break;
        chain.last = child;
        chain.material = osg::materialBelow(child, chain.material);
        if (!chain.occurrence)
            chain.occurrence = osg::attributeAttachment(child, osg::AttributeOwner::Occurrence);
        if (!chain.product)
            chain.product = osg::attributeAttachment(child, osg::AttributeOwner::Product);
    }
    return chain;
}

bool GlbFold::mayBeBody(const osg::NodePtr& node) const
{
    return m_isOn && node->getNChildren() == 0 && osg::fcCast<osg::Geometry>(node->getCore()) && !isTold(node) &&
           !hasAttributes(node);
}

GlbFold::Below GlbFold::below(const Chain& chain) const
{
    Below below;
    const std::string_view above = nameOf(chain.first);
    std::optional<std::string_view> common;
    bool isOneName = true;
    for (unsigned i = 0; i < chain.last->getNChildren(); ++i) {
        const osg::NodePtr child = chain.last->getChild(i);
        if (!isShown(child))
            continue;
        below.nodes.push_back(i);
        if (!mayBeBody(child))
            continue;
        const std::optional<std::string_view> name = bodyName(child, above);
        isOneName = isOneName && name && name == common.value_or(*name);
        common = name;
        below.bodies.push_back(child);
    }
    if (below.bodies.empty())
        return below;
    if (!isOneName) {
        below.bodies.clear();
        return below;
    }
    std::erase_if(below.nodes, [&](unsigned i) { return mayBeBody(chain.last->getChild(i)); });
    if (*common != above)
        below.bodyName = *common;
    return below;
}

/// Whether the file may as well begin with the only child of a node at its top.
bool GlbFold::passes(const Top& top, const osg::NodePtr& child) const
{
    if (m_variants.visibility(child))
        return false;
    const osg::Matrix own = matrixOf(child->getCore());
    if (!own.isIdentity())
        return (top.above * own).isIdentity();
    const bool isDrawn = static_cast<bool>(osg::fcCast<osg::Geometry>(child->getCore()));
    return !nameOf(child).empty() && (isDrawn || osg::fcCast<osg::Group>(child->getCore()));
}

GlbFold::Top GlbFold::top(const osg::NodePtr& root, const osg::Matrix& unit) const
{
    Top top{root, unit, {}, {}};
    while (m_isOn && !isTold(top.root) && osg::fcCast<osg::Group>(top.root->getCore())) {
        const osg::Matrix own = matrixOf(top.root->getCore());
        if (!own.isIdentity()) {
            if ((top.above * own).isIdentity() && hasShownChild(top.root))
                top = {{}, {}, osg::materialBelow(top.root, top.material), top.root};
            break;
        }
        const std::optional<unsigned> only = hasAttributes(top.root) ? std::nullopt : onlyChild(top.root);
        const osg::NodePtr child = only ? top.root->getChild(*only) : osg::NodePtr();
        if (!child || !passes(top, child))
            break;
        top.material = osg::materialBelow(top.root, top.material);
        top.root = child;
    }
    return top;
}

} // namespace files::glb
