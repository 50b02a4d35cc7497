#pragma once

#include <cstdint>
#include <memory>

namespace osg
{

class Node;

/// The children of one node, in order. It owns the places, not the nodes.
///
/// A gap travels with the changes, and look-ups start where the last one ended: a run of changes at one place, the way
/// splices move thousands of children, costs a constant time each.
class ChildList
{
public:
    std::uint32_t size() const { return m_size; }
    Node* at(std::uint32_t index) const { return m_slots[index < m_gap ? index : index + gapLength()]; }
    /// `index` is at most `size()`.
    void insert(std::uint32_t index, Node* node);
    /// `index` is below `size()`.
    void remove(std::uint32_t index);
    /// The place of `node`, -1 if it is not here.
    std::int64_t find(const Node* node) const;
    /// Has the processor fetch the first places.
    void fetchPlaces() const { __builtin_prefetch(m_slots.get()); }
    /// Makes room for `count` children.
    void reserve(std::uint32_t count);
    /// Makes room for `count` more, and for others to come where it has to grow.
    void growBy(std::uint32_t count);

private:
    std::uint32_t gapLength() const { return m_capacity - m_size; }
    void moveGap(std::uint32_t index);

    std::unique_ptr<Node*[]> m_slots;
    std::uint32_t m_size = 0;
    std::uint32_t m_capacity = 0;
    std::uint32_t m_gap = 0;
    mutable std::uint32_t m_lastFound = 0;
};

} // namespace osg
