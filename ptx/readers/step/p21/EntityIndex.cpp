#include "ptx/readers/step/p21/EntityIndex.h"

#include <algorithm>

namespace ptx::step::p21
{

namespace
{

// A look-up in a table costs a tenth of one in a map.
constexpr std::size_t LargestGap = 16;

std::uint32_t largestNumber(const Records& records)
{
    std::uint32_t largest = 0;
    for (const Piece& piece : records.pieces)
        for (const Record& record : piece.records)
            largest = std::max(largest, record.number);
    return largest;
}

} // namespace

EntityIndex::EntityIndex(const Records& records)
{
    const std::uint32_t largest = largestNumber(records);
    if (largest / LargestGap <= records.recordCount())
        m_dense.resize(std::size_t{largest} + 1);
    std::uint32_t count = 0;
    for (const Piece& piece : records.pieces)
        for (const Record& record : piece.records) {
            ++count;
            if (record.role == Role::Entity)
                add(record.number, count);
        }
}

void EntityIndex::add(std::uint32_t number, std::uint32_t record)
{
    std::uint32_t& entry = m_dense.empty() ? m_sparse[number] : m_dense[number];
    if (entry != 0)
        m_repeated.push_back(record);
    else
        entry = record;
}

std::uint32_t EntityIndex::recordOf(std::uint32_t number) const
{
    if (!m_dense.empty())
        return number < m_dense.size() ? m_dense[number] : 0;
    const auto entry = m_sparse.find(number);
    return entry == m_sparse.end() ? 0 : entry->second;
}

} // namespace ptx::step::p21
