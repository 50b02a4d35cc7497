#pragma once

#include "ptx/readers/step/p21/EntityIndex.h"
#include "ptx/readers/step/p21/Records.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ptx::step::p21
{

/// The parameters of an entity or a list, from one of them on. What is not there, or is of another kind than is asked
/// for, is nothing. The records have to outlive it.
class Fields
{
public:
    Fields() = default;
    Fields(const Piece& piece, std::size_t record, std::size_t first = 0);

    explicit operator bool() const { return m_piece != nullptr; }
    std::string_view type() const;
    std::size_t size() const { return m_size; }
    /// The number of the entity that parameter `i` names; 0 for none.
    std::uint32_t reference(std::size_t i) const;
    Fields list(std::size_t i) const;
    std::optional<double> real(std::size_t i) const;
    /// 0 for none: the numbers of points begin with 1.
    std::size_t index(std::size_t i) const;
    /// Whether it is .T.
    bool flag(std::size_t i) const;
    /// With its points.
    std::string_view enumeration(std::size_t i) const;
    /// With its quotes.
    std::string_view text(std::size_t i) const;

private:
    const Parameter* at(std::size_t i, Kind kind) const;

    const Piece* m_piece = nullptr;
    std::size_t m_record = 0;
    std::size_t m_first = 0; ///< in the parameters of the piece
    std::size_t m_size = 0;
};

/// Entities of a text by their numbers.
class Entities
{
public:
    /// Both outlive this object.
    Entities(const Records& records, const EntityIndex& index);

    /// A simple entity, or the first member of a complex one.
    Fields at(std::uint32_t number) const;
    /// What the type `type` itself says of entity `number`: the member of that name when it is complex, otherwise its
    /// parameters behind the `inherited` ones, whatever its type is.
    Fields own(std::uint32_t number, std::string_view type, std::size_t inherited) const;
    /// Whether entity `number` has a type, alone or among others.
    bool isA(std::uint32_t number, std::string_view type) const;
    /// The name of a representation or of one of its items, with its quotes.
    std::string_view nameOf(std::uint32_t number) const;
    /// Entity `number` and its further types, when it is complex.
    std::vector<Fields> members(std::uint32_t number) const;
    /// The first entity that `wanted` holds of, on the way from `number` along references, nearest first. 0 when there
    /// is none within a few dozen entities.
    std::uint32_t firstReached(std::uint32_t number, const std::function<bool(std::uint32_t)>& wanted) const;

private:
    struct Place {
        const Piece* piece = nullptr;
        std::size_t record = 0;
    };

    Place placeOf(std::uint32_t number) const;

    const Records& m_records;
    const EntityIndex& m_index;
    std::vector<std::size_t> m_bases; ///< records before each piece
    /// The further members of complex entities, by the number of the entity.
    std::unordered_map<std::uint32_t, std::vector<Fields>> m_members;
};

} // namespace ptx::step::p21
