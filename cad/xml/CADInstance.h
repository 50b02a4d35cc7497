#pragma once

#include "cad/xml/CADBase.h"

#include <string>
#include <vector>

namespace HB::XML::CAD
{

/// One placement of a part in its parent, with an optional transform and material (`Instance`, `ProductInstance`).
class CADInstance : public CADBase
{
public:
    /// An empty element below `parent`, which owns it; see CADBase.
    explicit CADInstance(CADBase* parent) : CADBase(parent) {}

    /// Reads `Transform` children, the last of which replaces the attribute `transformRef`. An instance without id gets
    /// one, behind its `UserData` and before its `Transform` children, which see it.
    void load(const TiXmlElement& element) override;

    /// Beside `name` and `id`: `partRef`, `materialRef`, `transformRef`, `representationRefs`.
    void loadAttributes(const TiXmlElement& element) override;

    ///@{
    /// References to a transform, a material and a part, as they were read; empty without one.
    const std::string& getTransformRef() const { return m_transformRef; }
    const std::string& getMaterialRef() const { return m_materialRef; }
    const std::string& getPartRef() const { return m_partRef; }
    ///@}
    ///@{
    /// Whether the reference of this name is not empty.
    bool hasTransformRef() const { return !m_transformRef.empty(); }
    bool hasMaterialRef() const { return !m_materialRef.empty(); }
    ///@}

private:
    friend struct ModelTestAccess;

    std::string m_transformRef;
    std::string m_materialRef;
    std::string m_partRef;
    std::vector<std::string> m_representationRefs;
};

} // namespace HB::XML::CAD
