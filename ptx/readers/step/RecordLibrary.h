#pragma once

#include "ptx/model/Job.h"
#include "ptx/readers/step/annotations/Drawing.h"
#include "ptx/readers/step/facets/Parts.h"

#include <StepSelect_WorkLibrary.hxx>

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

class StepData_StepModel;

namespace ptx::step
{

namespace p21
{
struct Records;
class EntityIndex;
} // namespace p21

/// Reads the text of STEP files for OCCT, whose session asks its library for it. OCCT makes the entities from our
/// records as it does from its own. A text that is not quite as it should be goes to OCCT's parser, which accepts some
/// of these; when that one complains too, the reading with more entities counts, and the rest are losses.
class RecordLibrary : public StepSelect_WorkLibrary
{
    DEFINE_STANDARD_RTTI_INLINE(RecordLibrary, StepSelect_WorkLibrary)

public:
    /// Progress and log of `job`, which outlives this object. Reading takes the present stage to its end.
    explicit RecordLibrary(const model::Job& job) : m_job(job) {}

    /// What the last file lacks because its text cannot be read there, each with its reason; the first ones when these
    /// are many. Empty for a text that was read in whole.
    const std::vector<std::string>& losses() const { return m_losses; }

    /// What the annotations of the last file draw, once. Nothing when the settings do not want it.
    annotations::Drawing takeAnnotations() { return std::move(m_annotations); }
    /// The tessellated parts of the last file, once.
    facets::Parts takeFacets() { return std::move(m_facets); }
    /// The products, by the numbers of their definitions, that annotations or tessellated parts belong to, while these
    /// have not been taken.
    std::set<std::uint32_t> productsBeside() const;

    /// 0 when it was read, 1 when nothing of it can be, -1 when the file cannot be opened.
    Standard_Integer ReadFile(Standard_CString name, Handle(Interface_InterfaceModel) & model,
                              const Handle(Interface_Protocol) & protocol) const override;

private:
    Standard_Integer readDamaged(Standard_CString name, std::string_view text, const p21::Records& records,
                                 const p21::EntityIndex& index, const std::vector<std::string>& complaints,
                                 Handle(Interface_InterfaceModel) & model,
                                 const Handle(Interface_Protocol) & protocol) const;
    Standard_Integer readByParser(Standard_CString name, std::string_view text,
                                  Handle(Interface_InterfaceModel) & model,
                                  const Handle(Interface_Protocol) & protocol) const;
    void load(const p21::Records& records, const p21::EntityIndex& index, Handle(Interface_InterfaceModel) & model,
              const Handle(Interface_Protocol) & protocol) const;

    const model::Job& m_job;
    // OCCT takes a reading for one that changes nothing.
    mutable std::vector<std::string> m_losses;
    mutable annotations::Drawing m_annotations;
    mutable facets::Parts m_facets;
};

} // namespace ptx::step
