#pragma once

#include "cad/xml/CADBase.h"

#include <string>
#include <vector>

namespace HB::XML::CAD
{

/// Overrides for one place in the assembly tree. The path of instances names the place; a transform and a material
/// given here apply there instead of the instance's own.
class CADOccurrence : public CADBase
{
public:
    /// An empty element below `parent`, which owns it; see CADBase.
    explicit CADOccurrence(CADBase* parent) : CADBase(parent) {}

    /// Reads `Occurrence` children, to any depth, whose ids go behind those of the attribute, and `Transform` and
    /// `Material` children, the last of which replaces the attribute.
    void load(const TiXmlElement& element) override;

    /// `materialRef`, `transformRef`, `occurrenceRefs`, `instanceRefs`.
    void loadAttributes(const TiXmlElement& element) override;

    ///@{
    /// References, as they were read; empty without one.
    std::string getTransformRef() const { return m_transformRef; }
    std::string getMaterialRef() const { return m_materialRef; }
    ///@}

    /// The occurrences in this one, in the order of the document, those of the attribute first.
    const std::vector<std::string>& getOccurrenceRefs() const { return m_occurrenceRefs; }
    /// The path: references to instances, from the root down.
    std::vector<std::string> getInstanceRefs() const { return m_instanceRefs; }

private:
    friend class CADOccurrenceIndex;
    friend struct ModelTestAccess;

    std::string m_transformRef;
    std::string m_materialRef;
    std::vector<std::string> m_occurrenceRefs;
    std::vector<std::string> m_instanceRefs;
};

} // namespace HB::XML::CAD
