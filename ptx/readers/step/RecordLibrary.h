#pragma once

#include "ptx/model/Job.h"

#include <StepSelect_WorkLibrary.hxx>

#include <memory>
#include <string>
#include <vector>

class StepData_StepModel;

namespace ptx::step
{

namespace part21
{
struct Records;
class EntityIndex;
} // namespace part21

/// Reads the text of STEP files for OCCT, whose session asks its library for it. OCCT makes the entities from our
/// records as it does from its own. A text that is not quite as it should be goes to OCCT's parser, which accepts some
/// of these; when that one complains too, what can be read counts, and the log names the rest.
class RecordLibrary : public StepSelect_WorkLibrary
{
    DEFINE_STANDARD_RTTI_INLINE(RecordLibrary, StepSelect_WorkLibrary)

public:
    /// Progress and log of `job`, which outlives this object. Reading takes the present stage to its end. One that
    /// does not tell leaves nothing in the log: for a file that is read another time.
    explicit RecordLibrary(const model::Job& job, bool doesTell = true) : m_job(job), m_doesTell(doesTell) {}

    /// 0 when it was read, 1 when nothing of it can be, -1 when the file cannot be opened.
    Standard_Integer ReadFile(Standard_CString name, Handle(Interface_InterfaceModel) & model,
                              const Handle(Interface_Protocol) & protocol) const override;

private:
    Standard_Integer readDamaged(Standard_CString name, const part21::Records& records,
                                 const part21::EntityIndex& index, const std::vector<std::string>& complaints,
                                 Handle(Interface_InterfaceModel) & model,
                                 const Handle(Interface_Protocol) & protocol) const;
    Standard_Integer readByParser(Standard_CString name, Handle(Interface_InterfaceModel) & model,
                                  const Handle(Interface_Protocol) & protocol) const;
    void load(const part21::Records& records, const part21::EntityIndex& index,
              Handle(Interface_InterfaceModel) & model, const Handle(Interface_Protocol) & protocol) const;

    void tell(const std::vector<std::string>& complaints) const;

    const model::Job& m_job;
    bool m_doesTell;
};

} // namespace ptx::step
