#pragma once

#include "cad/xml/CADBase.h"

#include <vector>

namespace HB::XML::CAD
{

/// The list of a user value.
class CADUserList : public CADBase
{
public:
    /// An empty element below `parent`, which owns it; see CADBase.
    explicit CADUserList(CADBase* parent) : CADBase(parent) {}

    /// Reads `Item` children, in file order.
    void load(const TiXmlElement& element) override;

    /// Has no attributes of its own.
    void loadAttributes(const TiXmlElement&) override {}

private:
    friend struct ModelTestAccess;

    std::vector<CADUserListItem*> m_items;
};

} // namespace HB::XML::CAD
