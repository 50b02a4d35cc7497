#pragma once

#include "cad/xml/CADRepresentation.h"

namespace HB::XML::CAD
{

/// A representation that holds further representations (`CompoundRep`). It registers among the representations; a
/// run-time type cast tells it from a plain one.
class CADCompoundRef : public CADRepresentation
{
public:
    /// An empty element below `parent`, which owns it; see CADBase.
    explicit CADCompoundRef(CADBase* parent) : CADRepresentation(parent) {}

    /// As CADRepresentation, with three more words for `type`: "construction", "weld", "midsurface".
    void loadAttributes(const TiXmlElement& element) override;
};

} // namespace HB::XML::CAD
