#include "files/scenefile/ArrayPlan.h"

#include "files/scenefile/SceneFormat.h"

namespace osg::scenefile
{

std::uint64_t ArrayPlan::place(const void* data, std::uint64_t size)
{
    const auto [first, last] = m_known.equal_range(data);
    for (auto known = first; known != last; ++known)
        if (m_pieces[known->second].size == size)
            return m_pieces[known->second].offset;
    const Piece piece = {data, size, alignedUp(m_size, alignment)};
    m_known.emplace(data, m_pieces.size());
    m_pieces.push_back(piece);
    m_size = piece.offset + size;
    return piece.offset;
}

} // namespace osg::scenefile
