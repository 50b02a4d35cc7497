#pragma once

#include "cad/xml/CADBase.h"

#include <string>
#include <vector>

namespace HB::XML::CAD
{

/// The roots of the product structure. The graph owns the instances, parts and transforms in it and keeps no list of
/// them: they are found through the document.
class CADInstanceGraph : public CADBase
{
public:
    /// An empty element below `parent`, which owns it; see CADBase.
    explicit CADInstanceGraph(CADBase* parent) : CADBase(parent) {}

    /// Reads `Instance`, `ProductInstance`, `Part`, `ProductRevisionView` and `Transform` children. Unlike all other
    /// elements a graph does not read `UserData`.
    void load(const TiXmlElement& element) override;

    /// Beside `name` and `id`, in file order: `rootRefs` adds its references, `rootInstanceRef` replaces all of them by
    /// its whole value.
    void loadAttributes(const TiXmlElement& element) override;

    /// References to instances or parts.
    std::vector<std::string> getRootRefs() const { return m_rootRefs; }

private:
    std::vector<std::string> m_rootRefs;
};

} // namespace HB::XML::CAD
