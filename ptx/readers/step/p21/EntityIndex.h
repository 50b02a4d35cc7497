#pragma once

#include "ptx/readers/step/p21/Records.h"

#include <unordered_map>

namespace ptx::step::p21
{

/// Where the entities of a text are, by their numbers.
class EntityIndex
{
public:
    explicit EntityIndex(const Records& records);

    /// The record of the entity `number`, counted from 1 over all pieces; 0 when there is none. The first one, when
    /// several have the number.
    std::uint32_t recordOf(std::uint32_t number) const;
    /// The records of entities whose numbers others had before them, in the order of the text.
    const std::vector<std::uint32_t>& repeated() const { return m_repeated; }

private:
    void add(std::uint32_t number, std::uint32_t record);

    std::vector<std::uint32_t> m_dense; ///< by number; empty when the numbers are few and far between
    std::unordered_map<std::uint32_t, std::uint32_t> m_sparse;
    std::vector<std::uint32_t> m_repeated;
};

} // namespace ptx::step::p21
