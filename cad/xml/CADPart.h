#pragma once

#include "cad/xml/CADBase.h"

#include <cstdint>
#include <string>
#include <vector>

namespace HB::XML::CAD
{

/// A node of the product structure, with its instances and representations (`Part`, `ProductRevisionView`). A part
/// without id keeps the empty one.
class CADPart : public CADBase
{
public:
    /// What the attribute `type` says.
    enum class Type : std::uint32_t { Assembly = 0, Minimal = 1, Wire = 2, Solid = 3, Sheet = 4, General = 5 };

    /// An empty element below `parent`, which owns it; see CADBase.
    explicit CADPart(CADBase* parent) : CADBase(parent) {}

    /// Reads `Representation` children, whose ids go behind those of the attribute, `Material` children, the last of
    /// which replaces the attribute, and `Occurrence` children, which go to the product definition over this part.
    void load(const TiXmlElement& element) override;

    /// `type`, `materialRef`, `partRefs`, `instanceRefs`, `representationRefs`.
    void loadAttributes(const TiXmlElement& element) override;

    /// Assembly without the attribute, or for a word that is unknown.
    Type getType() const { return m_type; }
    ///@{
    /// References in the order of the document.
    std::vector<std::string> getRepresentationRefs() const { return m_representationRefs; }
    std::vector<std::string> getInstanceRefs() const { return m_instanceRefs; }
    ///@}

private:
    friend struct ModelTestAccess;

    Type m_type = Type::Assembly;
    std::vector<std::string> m_representationRefs;
    std::vector<std::string> m_instanceRefs;
    std::vector<std::string> m_partRefs;
    std::string m_materialRef;
};

} // namespace HB::XML::CAD
