#pragma once

#include "cad/xml/CADBase.h"

#include <cstdint>
#include <string>

namespace HB::XML::CAD
{

/// One free attribute. Its title is its name.
class CADUserValue : public CADBase
{
public:
    /// What the attribute `type` says of the value.
    enum class Type : std::uint32_t {
        Int = 0,
        Ints = 1,
        Real = 2,
        Reals = 3,
        Boolean = 4,
        Booleans = 5,
        String = 6,
        Reference = 7,
        Enum = 8,
        List = 9,
        DateTime = 10
    };

    /// An empty element below `parent`, which owns it; see CADBase.
    explicit CADUserValue(CADBase* parent) : CADBase(parent) {}

    /// Reads `UserList` children, of which the last one is kept.
    void load(const TiXmlElement& element) override;

    /// `title`, over what `name` gave, `value`, `format`, `type`.
    void loadAttributes(const TiXmlElement& element) override;

    /// String without the attribute, or for a word that is unknown.
    Type getType() const { return m_type; }

    /// As read, whatever the type: it is never parsed.
    const std::string& getValue() const { return m_value; }

private:
    friend struct ModelTestAccess;

    Type m_type = Type::String;
    std::string m_value;
    std::string m_format;
    std::string m_userListRef;
};

} // namespace HB::XML::CAD
