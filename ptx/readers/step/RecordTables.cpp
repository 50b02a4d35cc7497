#include "ptx/readers/step/RecordTables.h"

#include <Interface_Check.hxx>
#include <StepData_Protocol.hxx>
#include <StepData_StepReaderData.hxx>

#include <algorithm>

namespace ptx::step
{

using p21::Kind;
using p21::Parameter;
using p21::Piece;
using p21::Record;
using p21::Role;

namespace
{

constexpr char ListType[] = "/* (SUB) */";
constexpr char ListIdent[] = "$1";
constexpr char NoIdent[] = "#0";
constexpr char Reference[] = "#";

Interface_ParamType typeOf(Kind kind)
{
    switch (kind) {
    case Kind::Integer:
        return Interface_ParamInteger;
    case Kind::Real:
        return Interface_ParamReal;
    case Kind::Text:
        return Interface_ParamText;
    case Kind::Enumeration:
        return Interface_ParamEnum;
    case Kind::Binary:
        return Interface_ParamHexa;
    case Kind::Omitted:
        return Interface_ParamVoid;
    case Kind::Derived:
        return Interface_ParamMisc;
    case Kind::Reference:
        return Interface_ParamIdent;
    case Kind::List:
        break;
    }
    return Interface_ParamSub;
}

std::string nameText(std::uint32_t number)
{
    std::string text = "#";
    return text += std::to_string(number);
}

// The square of it is small, and so is that of the number of parts of the longest lists.
constexpr std::size_t PartLength = 512;

std::size_t partCount(const Record& record)
{
    return (record.parameterCount + PartLength - 1) / PartLength;
}

std::size_t headerCount(const p21::Records& records)
{
    return records.pieces.empty() ? 0 : records.pieces.front().records.size();
}

std::size_t partCount(const p21::Records& records, const std::vector<std::vector<LongLists::Fate>>& fates)
{
    std::size_t count = 0;
    for (std::size_t piece = 0; piece < fates.size(); ++piece)
        for (std::size_t i = 0; i < fates[piece].size(); ++i)
            count += fates[piece][i] == LongLists::Fate::Split ? partCount(records.pieces[piece].records[i]) : 0;
    return count;
}

} // namespace

RecordTables::RecordTables(const p21::Records& records, const p21::EntityIndex& index,
                           const Handle(StepData_Protocol) & protocol, Resource_FormatType codePage)
    : m_index(index), m_count(static_cast<int>(records.recordCount()))
{
    const LongLists lists(protocol);
    std::vector<std::vector<LongLists::Fate>> fates;
    for (const Piece& piece : records.pieces)
        fates.push_back(lists.of(piece));
    const std::size_t parts = partCount(records, fates);
    // The number of parameters is the size of a page: with too few, OCCT would walk from page to page.
    m_data = new StepData_StepReaderData(static_cast<int>(headerCount(records)), m_count + static_cast<int>(parts),
                                         static_cast<int>(records.parameterCount() + parts) + 1, codePage);
    for (std::size_t i = 0; i < fates.size(); ++i)
        addPiece(records.pieces[i], fates[i]);
    for (const Part& part : m_parts)
        addPart(part);
}

void RecordTables::addPiece(const Piece& piece, const std::vector<LongLists::Fate>& fates)
{
    std::vector<const char*> types = {ListType};
    for (std::size_t i = 1; i < piece.types.size(); ++i)
        types.push_back(m_texts.add(piece.types[i]));
    m_base = m_record;
    for (std::size_t i = 0; i < piece.records.size(); ++i) {
        const Record& record = piece.records[i];
        ++m_record;
        addRecord(piece, record, types[record.type], fates.empty() ? LongLists::Fate::Kept : fates[i]);
    }
}

void RecordTables::addRecord(const Piece& piece, const Record& record, const char* type, LongLists::Fate fate)
{
    m_data->SetRecord(m_record, identOf(piece, record), type, static_cast<int>(record.parameterCount));
    if (fate == LongLists::Fate::Kept)
        addParameters(piece, record.firstParameter, record.parameterCount);
    else if (fate == LongLists::Fate::Split)
        addParts(piece, record);
    m_data->InitParams(m_record);
}

void RecordTables::addParameters(const Piece& piece, std::size_t first, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i)
        addParameter(piece, piece.parameters[first + i], static_cast<int>(i) + 1);
}

void RecordTables::addParts(const Piece& piece, const Record& record)
{
    for (std::size_t first = 0; first < record.parameterCount; first += PartLength) {
        m_parts.push_back({&piece, m_base, record.firstParameter + first,
                           std::min<std::size_t>(PartLength, record.parameterCount - first)});
        m_data->AddParam(m_record, ListIdent, Interface_ParamSub, m_count + static_cast<int>(m_parts.size()));
    }
}

void RecordTables::addPart(const Part& part)
{
    ++m_record;
    m_base = part.base;
    m_data->SetRecord(m_record, ListIdent, ListType, static_cast<int>(part.count));
    addParameters(*part.piece, part.firstParameter, part.count);
    m_data->InitParams(m_record);
}

// A list is found by the record that names it, and an entity that is left out by none.
const char* RecordTables::identOf(const Piece& piece, const Record& record)
{
    switch (record.role) {
    case Role::List:
        return ListIdent;
    case Role::Entity:
        m_isLeftOut = m_index.recordOf(record.number) != static_cast<std::uint32_t>(m_record);
        return m_isLeftOut ? ListIdent : nameOf(piece, record);
    case Role::Member:
        return m_isLeftOut ? ListIdent : NoIdent;
    case Role::Header:
        break;
    }
    return NoIdent;
}

// OCCT reads the number at the start of it, so that the text itself will do, but for an entity with a scope.
const char* RecordTables::nameOf(const Piece& piece, const Record& record)
{
    const char* const text = piece.text.data() + record.offset;
    return *text == '#' ? text : m_texts.add(nameText(record.number));
}

void RecordTables::addParameter(const Piece& piece, const Parameter& parameter, int position)
{
    switch (parameter.kind) {
    case Kind::List:
        return m_data->AddParam(m_record, ListIdent, Interface_ParamSub,
                                m_base + static_cast<int>(parameter.value) + 1);
    case Kind::Reference:
        return addReference(parameter.value, position);
    case Kind::Omitted:
        return m_data->AddParam(m_record, "$", Interface_ParamVoid);
    case Kind::Derived:
        return m_data->AddParam(m_record, "*", Interface_ParamMisc);
    default:
        return m_data->AddParam(m_record, m_texts.add(piece.textOf(parameter)), typeOf(parameter.kind));
    }
}

void RecordTables::addReference(std::uint32_t number, int position)
{
    if (const std::uint32_t record = m_index.recordOf(number); record > 0)
        return m_data->AddParam(m_record, Reference, Interface_ParamIdent, static_cast<int>(record));
    // A number behind all records leads nowhere, for OCCT too.
    const std::string name = nameText(number);
    m_data->AddParam(m_record, m_texts.add(name), Interface_ParamIdent, m_data->NbRecords() + 1);
    const std::string text = "Unresolved Reference, Ent.Id.#" + std::to_string(m_data->RecordIdent(m_record)) +
                             " Param.n0 " + std::to_string(position) + " (Id." + name + ")";
    m_data->GlobalCheck()->AddFail(text.c_str(), "Unresolved Reference");
}

} // namespace ptx::step
