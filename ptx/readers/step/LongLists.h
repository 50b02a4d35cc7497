#pragma once

#include "ptx/readers/step/p21/Records.h"

#include <Interface_ReaderLib.hxx>
#include <Standard_Handle.hxx>
#include <TColStd_SequenceOfAsciiString.hxx>

class StepData_Protocol;

namespace ptx::step
{

/// The long lists in entities for which OCCT has no class: tessellated faces above all. It keeps the parameters of such
/// entities as they are written, in chains that it walks from the start for each of them.
class LongLists
{
public:
    /// What becomes of a list.
    enum class Fate : std::uint8_t {
        Kept,
        Emptied, ///< nothing reads its numbers
        Split    ///< it names entities, which have to stay in use
    };

    explicit LongLists(const Handle(StepData_Protocol) & protocol);

    /// The fates of the records of `piece`; empty when all are kept.
    std::vector<Fate> of(const p21::Piece& piece) const;

private:
    bool isUnknown(const TColStd_SequenceOfAsciiString& types) const;

    mutable Interface_ReaderLib m_library; ///< its look-up is an iteration that it keeps itself
};

} // namespace ptx::step
