#pragma once

#include "ptx/readers/step/part21/Records.h"

#include <Interface_ReaderLib.hxx>
#include <Standard_Handle.hxx>
#include <TColStd_SequenceOfAsciiString.hxx>

class StepData_Protocol;

namespace ptx::step
{

/// The long lists of numbers in entities for which OCCT has no class: tessellated faces above all. It keeps the
/// parameters of such entities as they are written, in chains that it walks from the start for each of them.
class NeedlessLists
{
public:
    explicit NeedlessLists(const Handle(StepData_Protocol) & protocol);

    /// Which records of `piece` are such lists; empty when none is.
    std::vector<bool> of(const part21::Piece& piece) const;

private:
    bool isUnknown(const TColStd_SequenceOfAsciiString& types) const;

    mutable Interface_ReaderLib m_library; ///< its look-up is an iteration that it keeps itself
};

} // namespace ptx::step
