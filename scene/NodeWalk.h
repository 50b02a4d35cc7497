#pragma once

#include "scene/NodeAccess.h"

#include <deque>
#include <vector>

namespace osg
{

/// The nodes of a walk that were visited, while their children were not: in the order of the walk.
class PendingParents
{
public:
    void add(const Node& node)
    {
        if (NodeAccess::children(node))
            m_nodes.push_back(&node);
    }
    bool isEmpty() const { return m_nodes.empty(); }
    const Node& first() const { return *m_nodes.front(); }
    void dropFirst() { m_nodes.pop_front(); }

    /// Fetches what lies ahead, step by step, down to the first child: the further ones follow in `fetchChildrenAfter`.
    void fetchAhead() const
    {
        constexpr std::size_t Lists = 16, Places = 12, Children = 8, Held = 4;
        if (m_nodes.size() > Lists)
            NodeAccess::fetchHeld(*m_nodes[Lists]);
        if (m_nodes.size() > Places)
            NodeAccess::fetchPlaces(*m_nodes[Places]);
        if (const Node* child = firstChildOf(Children))
            NodeAccess::fetch(*child);
        if (const Node* child = firstChildOf(Held))
            NodeAccess::fetchHeld(*child);
    }

private:
    /// Null where there is none, or no node at `place`. Where memory was out, a list may be empty.
    const Node* firstChildOf(std::size_t place) const
    {
        const ChildList* children = place < m_nodes.size() ? NodeAccess::children(*m_nodes[place]) : nullptr;
        return children && children->size() > 0 ? children->at(0) : nullptr;
    }

    std::deque<const Node*> m_nodes;
};

/// Calls `visit` for the node and all below it, each parent before its children, in the order of `parentsFirst`.
/// `visit` changes no children.
template <class Visit>
void visitParentsFirst(const osg::NodePtr& root, const Visit& visit)
{
    if (!root)
        return;
    visit(root);
    PendingParents parents;
    for (parents.add(*root); !parents.isEmpty(); parents.dropFirst()) {
        parents.fetchAhead();
        const Node& parent = parents.first();
        const ChildList& children = *NodeAccess::children(parent);
        for (std::uint32_t i = 0; i < children.size(); ++i) {
            NodeAccess::fetchChildrenAfter(parent, i);
            const osg::NodePtr child(children.at(i));
            visit(child);
            parents.add(*child);
        }
    }
}

/// The node and all below it, each parent before its children; empty for null. Valid while no node of it is destroyed;
/// a node that dissolves from the end on never appears again.
inline std::vector<osg::NodePtr> parentsFirst(const osg::NodePtr& root)
{
    std::vector<osg::NodePtr> nodes;
    visitParentsFirst(root, [&nodes](const osg::NodePtr& node) { nodes.push_back(node); });
    return nodes;
}

} // namespace osg
