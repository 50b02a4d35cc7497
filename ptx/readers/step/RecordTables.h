#pragma once

#include "ptx/readers/step/LongLists.h"
#include "ptx/readers/step/TextStore.h"
#include "ptx/readers/step/p21/EntityIndex.h"

#include <Resource_FormatType.hxx>
#include <Standard_Handle.hxx>

class StepData_Protocol;
class StepData_StepReaderData;

namespace ptx::step
{

/// The records of a text in the tables that OCCT's own parser fills, with the same content and references resolved.
/// An entity whose number another had before it is left out.
class RecordTables
{
public:
    /// `index` is that of `records`. Of the entities for which `protocol` has no class, long lists of numbers stay
    /// empty and those that name entities become lists of lists: OCCT takes a time that grows with the square of their
    /// length.
    RecordTables(const p21::Records& records, const p21::EntityIndex& index, const Handle(StepData_Protocol) & protocol,
                 Resource_FormatType codePage);

    /// Valid as long as this object, which holds the texts.
    const Handle(StepData_StepReaderData) & data() const { return m_data; }

private:
    /// A part of a list that is split; it stands behind all records.
    struct Part {
        const p21::Piece* piece;
        int base; ///< records before those of the piece
        std::size_t firstParameter;
        std::size_t count;
    };

    void addPiece(const p21::Piece& piece, const std::vector<LongLists::Fate>& fates);
    void addRecord(const p21::Piece& piece, const p21::Record& record, const char* type, LongLists::Fate fate);
    void addParameters(const p21::Piece& piece, std::size_t first, std::size_t count);
    void addParts(const p21::Piece& piece, const p21::Record& record);
    void addPart(const Part& part);
    void addParameter(const p21::Piece& piece, const p21::Parameter& parameter, int position);
    void addReference(std::uint32_t number, int position);
    const char* identOf(const p21::Piece& piece, const p21::Record& record);

    const char* nameOf(const p21::Piece& piece, const p21::Record& record);

    const p21::EntityIndex& m_index;
    Handle(StepData_StepReaderData) m_data;
    TextStore m_texts;
    std::vector<Part> m_parts;
    int m_count = 0;          ///< of the records of the text
    int m_base = 0;           ///< records of the pieces before
    int m_record = 0;         ///< the present one, counted from 1
    bool m_isLeftOut = false; ///< the present entity
};

} // namespace ptx::step
