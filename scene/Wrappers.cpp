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

/// What the children of a node are once wrappers are gone: none, one, or more.
struct Content {
    enum : std::uint8_t { None, One, More } count = None;
    bool isWrapper = false; ///< the node itself
    std::uint32_t only = 0; ///< the number of the one

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
    explicit Decision(const NodePtr& root) : m_nodes(parentsFirst(root)), m_contents(m_nodes.size())
    {
        auto end = static_cast<std::uint32_t>(m_nodes.size());
        for (std::uint32_t i = end; i-- > 0;) {
            fetchBefore(i);
            const std::uint32_t first = end - m_nodes[i]->getNChildren();
            if (first < end)
                decide(i, first, end);
            end = first;
        }
    }

    template <class Take>
    void each(Take take) const
    {
        for (std::size_t i = 0; i < m_nodes.size(); ++i)
            if (m_contents[i].isWrapper)
                take(m_nodes[i]);
    }

private:
    void fetchBefore(std::uint32_t number) const
    {
        if (number >= NodeAccess::FarAhead)
            NodeAccess::fetch(*m_nodes[number - NodeAccess::FarAhead]);
        if (number >= NodeAccess::NearAhead)
            NodeAccess::fetchHeld(*m_nodes[number - NodeAccess::NearAhead]);
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
        const NodePtr& node = m_nodes[number];
        const char* name = nameOf(node);
        const bool holdsItsName =
            content.count == Content::One && *name && std::strcmp(name, nameOf(m_nodes[content.only])) == 0;
        content.isWrapper = number > 0 && (!*name || holdsItsName) && saysNothing(node);
        if (!content.isWrapper && holdsItsName && saysNothing(m_nodes[content.only]))
            m_contents[content.only].isWrapper = true;
    }

    std::vector<NodePtr> m_nodes;
    std::vector<Content> m_contents; ///< by the number of the node
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
