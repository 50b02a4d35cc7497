#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace osg
{

/// A set of ids of containers. Ids count up from 1, and what belongs together mostly came one after the other: a bit
/// for each id touches far less memory than a table with a place for each.
class IdSet
{
public:
    /// False when it was there already.
    bool insert(std::uint32_t id)
    {
        if (id / PageSize >= m_pages.size())
            m_pages.resize(id / PageSize + 1);
        std::unique_ptr<Page>& page = m_pages[id / PageSize];
        if (!page)
            page = std::make_unique<Page>();
        std::uint64_t& word = (*page)[id % PageSize / 64];
        const std::uint64_t before = word;
        word |= bit(id);
        return word != before;
    }
    bool contains(std::uint32_t id) const
    {
        const Page* page = id / PageSize < m_pages.size() ? m_pages[id / PageSize].get() : nullptr;
        return page && ((*page)[id % PageSize / 64] & bit(id)) != 0;
    }

private:
    static constexpr std::uint32_t PageSize = 4096; ///< in ids
    using Page = std::array<std::uint64_t, PageSize / 64>;

    static std::uint64_t bit(std::uint32_t id) { return std::uint64_t(1) << id % 64; }

    std::vector<std::unique_ptr<Page>> m_pages; ///< null where no id is
};

} // namespace osg
