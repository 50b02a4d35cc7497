#pragma once

#include "cad/xml/CADBase.h"

#include <cstdint>
#include <string>
#include <vector>

namespace HB::XML::CAD
{

/// Where the geometry of a part lies: an external file under a local transform. No file is opened and no location is
/// decoded here.
class CADRepresentation : public CADBase
{
public:
    /// The last three are words of compound representations (CADCompoundRef) only.
    enum class Type : std::uint32_t {
        Default = 0,
        Simplified = 1,
        Flat = 2,
        User = 3,
        Construction = 4,
        Weld = 5,
        Midsurface = 6
    };

    /// An empty element below `parent`, which owns it; see CADBase.
    explicit CADRepresentation(CADBase* parent) : CADBase(parent) {}

    /// Reads `Transform` children, the last of which replaces the attribute `transformRef`, `CompoundRep` children, to
    /// any depth, and `Material` children, which are found through the document only.
    void load(const TiXmlElement& element) override;

    /// Beside `name` and `id`: `type`, `format`, `location`, `transformRef`.
    void loadAttributes(const TiXmlElement& element) override;

    /// Default without the attribute, or for a word that is unknown.
    Type getType() const { return m_type; }
    /// The reference to the transform of the geometry; empty without one.
    const std::string& getTransformRef() const { return m_transformRef; }

    /// As read, with its percent escapes.
    const std::string& getLocation() const { return m_location; }

    /// As read.
    const std::string& getFormat() const { return m_format; }

    /// Bare ids of the `CompoundRep` children in file order.
    const std::vector<std::string>& getCompoundRefs() const { return m_compoundRefs; }

protected:
    /// For subclasses that know further words.
    void setType(Type type) { m_type = type; }

private:
    Type m_type = Type::Default;
    std::string m_transformRef;
    std::string m_location;
    std::string m_format;
    std::vector<std::string> m_compoundRefs;
};

} // namespace HB::XML::CAD
