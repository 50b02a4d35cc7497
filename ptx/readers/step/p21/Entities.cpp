#include "ptx/readers/step/p21/Entities.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace ptx::step::p21
{

namespace
{

void addReferences(const Fields& fields, std::vector<std::uint32_t>& found, std::size_t most)
{
    for (std::size_t i = 0; i < fields.size() && found.size() < most; ++i) {
        if (const std::uint32_t number = fields.reference(i); number != 0)
            found.push_back(number);
        else if (const Fields list = fields.list(i))
            addReferences(list, found, most);
    }
}

} // namespace

Fields::Fields(const Piece& piece, std::size_t record, std::size_t first) : m_piece(&piece), m_record(record)
{
    const Record& own = piece.records[record];
    first = std::min<std::size_t>(first, own.parameterCount);
    m_first = own.firstParameter + first;
    m_size = own.parameterCount - first;
}

std::string_view Fields::type() const
{
    return m_piece ? m_piece->typeOf(m_piece->records[m_record]) : std::string_view();
}

const Parameter* Fields::at(std::size_t i, Kind kind) const
{
    if (i >= m_size)
        return nullptr;
    const Parameter& parameter = m_piece->parameters[m_first + i];
    return parameter.kind == kind ? &parameter : nullptr;
}

std::uint32_t Fields::reference(std::size_t i) const
{
    const Parameter* parameter = at(i, Kind::Reference);
    return parameter ? parameter->value : 0;
}

Fields Fields::list(std::size_t i) const
{
    const Parameter* parameter = at(i, Kind::List);
    return parameter ? Fields(*m_piece, parameter->value) : Fields();
}

std::optional<double> Fields::real(std::size_t i) const
{
    const Parameter* parameter = at(i, Kind::Real);
    if (!parameter)
        parameter = at(i, Kind::Integer);
    if (!parameter)
        return std::nullopt;
    std::string_view text = m_piece->textOf(*parameter);
    if (text.starts_with('+'))
        text.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end == text.data() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::size_t Fields::index(std::size_t i) const
{
    const Parameter* parameter = at(i, Kind::Integer);
    if (!parameter)
        return 0;
    const std::string_view text = m_piece->textOf(*parameter);
    std::size_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() ? value : 0;
}

bool Fields::flag(std::size_t i) const
{
    return enumeration(i) == ".T.";
}

std::string_view Fields::enumeration(std::size_t i) const
{
    const Parameter* parameter = at(i, Kind::Enumeration);
    return parameter ? m_piece->textOf(*parameter) : std::string_view();
}

std::string_view Fields::text(std::size_t i) const
{
    const Parameter* parameter = at(i, Kind::Text);
    return parameter ? m_piece->textOf(*parameter) : std::string_view();
}

Entities::Entities(const Records& records, const EntityIndex& index) : m_records(records), m_index(index)
{
    std::size_t base = 0;
    for (const Piece& piece : records.pieces) {
        m_bases.push_back(base);
        base += piece.records.size();
        std::uint32_t owner = 0;
        for (std::size_t i = 0; i < piece.records.size(); ++i) {
            if (piece.records[i].role == Role::Entity)
                owner = piece.records[i].number;
            else if (piece.records[i].role == Role::Member)
                m_members[owner].emplace_back(piece, i);
        }
    }
}

Entities::Place Entities::placeOf(std::uint32_t number) const
{
    const std::uint32_t record = m_index.recordOf(number);
    if (record == 0)
        return {};
    const auto base = std::prev(std::upper_bound(m_bases.begin(), m_bases.end(), std::size_t{record} - 1));
    return {&m_records.pieces[static_cast<std::size_t>(base - m_bases.begin())], record - 1 - *base};
}

Fields Entities::at(std::uint32_t number) const
{
    const Place place = placeOf(number);
    return place.piece ? Fields(*place.piece, place.record) : Fields();
}

Fields Entities::own(std::uint32_t number, std::string_view type, std::size_t inherited) const
{
    const Place place = placeOf(number);
    if (!place.piece)
        return {};
    const auto members = m_members.find(number);
    if (members == m_members.end())
        return {*place.piece, place.record, inherited};
    if (const Fields first(*place.piece, place.record); first.type() == type)
        return first;
    for (const Fields& member : members->second)
        if (member.type() == type)
            return member;
    return {};
}

bool Entities::isA(std::uint32_t number, std::string_view type) const
{
    if (at(number).type() == type)
        return true;
    const auto members = m_members.find(number);
    return members != m_members.end() && std::any_of(members->second.begin(), members->second.end(),
                                                     [&](const Fields& member) { return member.type() == type; });
}

std::string_view Entities::nameOf(std::uint32_t number) const
{
    if (!m_members.contains(number))
        return at(number).text(0);
    return own(number, "REPRESENTATION_ITEM", 0).text(0);
}

std::vector<Fields> Entities::members(std::uint32_t number) const
{
    std::vector<Fields> all;
    if (const Fields first = at(number))
        all.push_back(first);
    if (const auto others = m_members.find(number); others != m_members.end())
        all.insert(all.end(), others->second.begin(), others->second.end());
    return all;
}

std::uint32_t Entities::firstReached(std::uint32_t number, const std::function<bool(std::uint32_t)>& wanted) const
{
    constexpr std::size_t Most = 64;
    std::vector<std::uint32_t> open = {number};
    for (std::size_t i = 0; i < open.size(); ++i) {
        if (wanted(open[i]))
            return open[i];
        for (const Fields& member : members(open[i]))
            addReferences(member, open, Most);
    }
    return 0;
}

} // namespace ptx::step::p21
