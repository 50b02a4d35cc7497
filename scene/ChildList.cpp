#include "scene/ChildList.h"

#include <algorithm>

namespace osg
{

void ChildList::insert(std::uint32_t index, Node* node)
{
    growBy(1);
    moveGap(index);
    m_slots[m_gap++] = node;
    ++m_size;
}

void ChildList::remove(std::uint32_t index)
{
    moveGap(index);
    --m_size;
}

std::int64_t ChildList::find(const Node* node) const
{
    // Both ways from the last find, so that neighbours are met at once.
    const std::uint32_t start = std::min(m_lastFound, m_size);
    for (std::uint32_t step = 0; step <= std::max(start, m_size - start); ++step) {
        if (start + step < m_size && at(start + step) == node)
            return m_lastFound = start + step;
        if (step <= start && start - step < m_size && at(start - step) == node)
            return m_lastFound = start - step;
    }
    return -1;
}

void ChildList::reserve(std::uint32_t count)
{
    if (count <= m_capacity)
        return;
    auto slots = std::make_unique<Node*[]>(count);
    for (std::uint32_t i = 0; i < m_size; ++i)
        slots[i] = at(i);
    m_slots = std::move(slots);
    m_capacity = count;
    m_gap = m_size;
}

void ChildList::growBy(std::uint32_t count)
{
    if (m_size + count > m_capacity)
        reserve(std::max(m_size + count, m_capacity + m_capacity / 2 + 2));
}

void ChildList::moveGap(std::uint32_t index)
{
    Node** slots = m_slots.get();
    const std::uint32_t length = gapLength();
    if (index < m_gap)
        std::move_backward(slots + index, slots + m_gap, slots + m_gap + length);
    else
        std::move(slots + m_gap + length, slots + index + length, slots + m_gap);
    m_gap = index;
}

} // namespace osg
