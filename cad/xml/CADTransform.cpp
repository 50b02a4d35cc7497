#include "cad/xml/CADTransform.h"

#include "cad/xml/CADElementWalk.h"
#include "cad/xml/CADFault.h"
#include "cad/xml/CADNumbers.h"

#include <stdexcept>

namespace HB::XML::CAD
{

namespace
{
constexpr Keywords<CADTransform::Type, 5> typeWords{{"rotate", "translate", "scale", "general3", "general"}};
}

void CADTransform::load(const TiXmlElement& element)
{
    CADBase::load(element);
    for (const TiXmlText& text : TextNodesOf(element))
        loadValues(text);
}

void CADTransform::loadValues(const TiXmlText& text)
{
    try {
        parseTransformValues(text.Value(), m_values);
    } catch (const std::logic_error&) {
        noteFault({CADFault::Cause::Transform, {text.Row(), text.Column()}, {}, {}, m_values.size() + 1});
        throw;
    }
}

void CADTransform::loadAttributes(const TiXmlElement& element)
{
    CADBase::loadAttributes(element);
    for (const auto [name, value] : AttributesOf(element)) {
        if (name == "type")
            typeWords.read(value, m_type);
    }
}

} // namespace HB::XML::CAD
