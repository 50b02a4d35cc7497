#pragma once

#include "cad/xml/CADBase.h"

#include <vector>

namespace HB::XML::CAD
{

/// Free attributes that the CAD system attached to an element.
class CADUserData : public CADBase
{
public:
    /// An empty element below `parent`, which owns it; see CADBase.
    explicit CADUserData(CADBase* parent) : CADBase(parent) {}

    /// Reads `UserValue` children.
    void load(const TiXmlElement& element) override;

    /// Has no attributes of its own.
    void loadAttributes(const TiXmlElement&) override {}

    /// The `UserValue` children in file order.
    std::vector<CADUserValue*> getUserValues() const { return m_userValues; }

private:
    std::vector<CADUserValue*> m_userValues;
};

} // namespace HB::XML::CAD
