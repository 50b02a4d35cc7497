#pragma once

#include "cad/xml/CADBase.h"

#include <string>

namespace HB::XML::CAD
{

/// One entry of a list: a text.
class CADUserListItem : public CADBase
{
public:
    /// An empty element below `parent`, which owns it; see CADBase.
    explicit CADUserListItem(CADBase* parent) : CADBase(parent) {}

    /// Keeps the last text node: text that a comment or an element divides does not run on.
    void load(const TiXmlElement& element) override;

    /// Has no attributes of its own.
    void loadAttributes(const TiXmlElement&) override {}

private:
    friend struct ModelTestAccess;

    std::string m_text;
};

} // namespace HB::XML::CAD
