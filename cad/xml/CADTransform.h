#pragma once

#include "cad/xml/CADBase.h"

#include <cstdint>
#include <vector>

class TiXmlText;

namespace HB::XML::CAD
{

/// A matrix, or a part of one, as the numbers that stand in the document: not scaled, not transposed, not counted.
class CADTransform : public CADBase
{
public:
    /// What the numbers are: a 3 by 3 matrix (Rotate, General3), a translation in metres (Translate), a uniform scale
    /// (Scale), a 4 by 4 matrix with its translation in metres at the 13th to 15th number (General).
    enum class Type : std::uint32_t { Rotate = 0, Translate = 1, Scale = 2, General3 = 3, General = 4 };

    /// An empty element below `parent`, which owns it; see CADBase.
    explicit CADTransform(CADBase* parent) : CADBase(parent) {}

    /// Appends the numbers of every text node, so that text which a comment or an element divides runs on into one
    /// list.
    /// @throws std::invalid_argument, std::out_of_range see parseTransformValues
    void load(const TiXmlElement& element) override;

    /// Beside `name` and `id`: `type`.
    void loadAttributes(const TiXmlElement& element) override;

    /// General without the attribute, or for a word that is unknown.
    Type getType() const { return m_type; }
    /// The numbers in the order of the document, however many there are.
    std::vector<float> getTransformValues() const { return m_values; }

private:
    void loadValues(const TiXmlText& text);

    Type m_type = Type::General;
    std::vector<float> m_values;
};

} // namespace HB::XML::CAD
