#include "ptx/readers/step/LongLists.h"

#include <StepData_Protocol.hxx>
#include <StepData_ReadWriteModule.hxx>
#include <TCollection_AsciiString.hxx>

#include <algorithm>
#include <string>
#include <unordered_map>

namespace ptx::step
{

using p21::Kind;
using p21::Parameter;
using p21::Piece;
using p21::Record;
using p21::Role;

namespace
{

// Below, the squares are small.
constexpr std::uint32_t ShortList = 1000;

bool isLongList(const Record& record)
{
    return record.role == Role::List && record.parameterCount > ShortList;
}

/// Which records name an entity, in their lists too. Lists come before what holds them.
std::vector<bool> withReferences(const Piece& piece)
{
    std::vector<bool> found(piece.records.size());
    for (std::size_t i = 0; i < piece.records.size(); ++i) {
        const auto first = piece.parameters.begin() + piece.records[i].firstParameter;
        found[i] = std::any_of(first, first + piece.records[i].parameterCount, [&](const Parameter& parameter) {
            return parameter.kind == Kind::Reference || (parameter.kind == Kind::List && found[parameter.value]);
        });
    }
    return found;
}

/// The entity that each record belongs to: lists come before, members and their lists behind it.
std::vector<std::size_t> owners(const Piece& piece)
{
    std::vector<std::size_t> found;
    std::size_t owner = 0;
    for (std::size_t i = 0; i < piece.records.size(); ++i) {
        if (piece.records[i].role == Role::List)
            continue;
        if (piece.records[i].role != Role::Member)
            owner = i;
        found.resize(i + 1, owner);
    }
    return found;
}

TColStd_SequenceOfAsciiString typesOf(const Piece& piece, const std::vector<std::size_t>& owner, std::size_t entity)
{
    TColStd_SequenceOfAsciiString types;
    for (std::size_t i = entity; i < owner.size() && owner[i] == entity; ++i)
        if (piece.records[i].role != Role::List)
            types.Append(std::string(piece.typeOf(piece.records[i])).c_str());
    return types;
}

} // namespace

LongLists::LongLists(const Handle(StepData_Protocol) & protocol) : m_library(protocol) {}

std::vector<LongLists::Fate> LongLists::of(const Piece& piece) const
{
    if (std::none_of(piece.records.begin(), piece.records.end(), isLongList))
        return {};
    const std::vector<bool> references = withReferences(piece);
    const std::vector<std::size_t> owner = owners(piece);
    std::unordered_map<std::size_t, bool> unknown;
    std::vector<Fate> fates(piece.records.size(), Fate::Kept);
    for (std::size_t i = 0; i < piece.records.size(); ++i) {
        if (!isLongList(piece.records[i]))
            continue;
        const auto [entry, isNew] = unknown.try_emplace(owner[i]);
        if (isNew)
            entry->second = isUnknown(typesOf(piece, owner, owner[i]));
        if (entry->second)
            fates[i] = references[i] ? Fate::Split : Fate::Emptied;
    }
    return fates;
}

bool LongLists::isUnknown(const TColStd_SequenceOfAsciiString& types) const
{
    for (m_library.Start(); m_library.More(); m_library.Next()) {
        const auto module = Handle(StepData_ReadWriteModule)::DownCast(m_library.Module());
        if (!module.IsNull() && (types.Length() == 1 ? module->CaseStep(types.First()) : module->CaseStep(types)) > 0)
            return false;
    }
    return true;
}

} // namespace ptx::step
