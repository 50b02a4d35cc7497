#include "scene/Wrappers.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/ComponentTransform.h"
#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Transform3D.h"
#include "scene/Attachments.h"
#include "scene/NodeWalk.h"

#include <algorithm>
#include <cstring>

namespace osg
{

namespace
{

/// A node, and what its children are once wrappers are gone: none, one, or more.
struct Content {
    Node* node = nullptr;
    std::uint32_t only = 0; ///< the number of the one
    enum : std::uint8_t { None, One, More } count = None;
    bool isWrapper = false; ///< the node itself

    void add(std::uint32_t child)
    {
        count = count == None ? One : More;
        only = child;
    }
    void add(const Content& other)
    {
        if (other.count == One)
            add(other.only);
        else if (other.count == More)
            count = More;
    }
};

bool hasAttachments(const AttachmentContainer& container)
{
    const AttachmentMap* map = AttachmentAccess::map(container);
    return map && !map->entries().empty();
}

bool isOnlyNamed(const Node& node)
{
    const AttachmentMap* map = AttachmentAccess::map(node);
    return !map || std::all_of(map->entries().begin(), map->entries().end(), [](const AttachmentMap::Entry& entry) {
        return &entry.attachment->getType() == &NameAttachment::_type;
    });
}

bool isPlain(const NodeCorePtr& core)
{
    if (!core)
        return true;
    const FieldContainerType* type = &core->getType();
    const bool isTransform =
        type == &Transform3DBase::_type || type == &ComponentTransformBase::_type || type == &TransformBase::_type;
    if (type != &Group::_type && !(isTransform && fcCast<Transform>(core)->isIdentity()))
        return false;
    return !hasAttachments(*core);
}

bool saysNothing(const NodePtr& node)
{
    return node->getNChildren() > 0 && node->isActive() && isPlain(node->getCore()) && isOnlyNamed(*node);
}

const char* nameOf(const NodePtr& node)
{
    const char* name = getName(node);
    return name ? name : "";
}

/// Decides on the nodes of a tree from its leaves up. Children of a node follow each other where a parent comes before
/// its children.
class Decision
{
public:
    explicit Decision(const NodePtr& root)
    {
        visitParentsFirst(root, [this](const NodePtr& node) { m_contents.push_back({node.get()}); });
        auto end = static_cast<std::uint32_t>(m_contents.size());
        for (std::uint32_t i = end; i-- > 0;) {
            fetchBefore(i);
            const std::uint32_t first = end - m_contents[i].node->getNChildren();
            if (first < end)
                decide(i, first, end);
            end = first;
        }
    }

    template <class Take>
    void each(Take take) const
    {
        for (const Content& content : m_contents)
            if (content.isWrapper)
                take(NodePtr(content.node));
    }

private:
    void fetchBefore(std::uint32_t number) const
    {
        if (number >= NodeAccess::FarAhead)
            NodeAccess::fetch(*m_contents[number - NodeAccess::FarAhead].node);
        if (number >= NodeAccess::NearAhead)
            NodeAccess::fetchHeld(*m_contents[number - NodeAccess::NearAhead].node);
    }

    /// Of a node with children; one without is no wrapper and has no content.
    void decide(std::uint32_t number, std::uint32_t firstChild, std::uint32_t endOfChildren)
    {
        Content& content = m_contents[number];
        for (std::uint32_t child = firstChild; child < endOfChildren; ++child)
            if (m_contents[child].isWrapper)
                content.add(m_contents[child]);
            else
                content.add(child);
        const NodePtr node(content.node);
        const NodePtr only(content.count == Content::One ? m_contents[content.only].node : nullptr);
        const char* name = nameOf(node);
        const bool holdsItsName = only && *name && std::strcmp(name, nameOf(only)) == 0;
        content.isWrapper = number > 0 && (!*name || holdsItsName) && saysNothing(node);
        if (!content.isWrapper && holdsItsName && saysNothing(only))
            m_contents[content.only].isWrapper = true;
    }

    std::vector<Content> m_contents; ///< parents first
};

} // namespace

Wrappers::Wrappers(const NodePtr& root)
{
    Decision(root).each([this](const NodePtr& node) {
        m_nodes.push_back(node);
        m_known.insert(node->getContainerId());
    });
}

} // namespace osg
