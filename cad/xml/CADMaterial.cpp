#include "cad/xml/CADMaterial.h"

#include "cad/xml/CADElementWalk.h"
#include "cad/xml/CADFault.h"
#include "cad/xml/CADNumbers.h"

#include <new>

namespace HB::XML::CAD
{

namespace
{

float firstNumber(const std::string& text)
{
    std::vector<float> numbers;
    parseFloatList(text, numbers);
    return numbers.front();
}

} // namespace

void CADMaterial::load(const TiXmlElement& element)
{
    CADBase::load(element);
}

void CADMaterial::loadAttributes(const TiXmlElement& element)
{
    CADBase::loadAttributes(element);
    for (const auto [name, value] : AttributesOf(element)) {
        try {
            loadAttribute(name, value);
        } catch (const std::bad_alloc&) {
            noteFault({CADFault::Cause::Material, {element.Row(), element.Column()}, {}, std::string(name)});
            throw;
        }
    }
}

void CADMaterial::loadAttribute(std::string_view name, const char* value)
{
    if (name == "name")
        m_materialName = value;
    else if (name == "ambient")
        parseFloatList(value, m_ambient);
    else if (name == "diffuse")
        parseFloatList(value, m_diffuse);
    else if (name == "specular")
        parseFloatList(value, m_specular);
    else if (name == "emissive")
        parseFloatList(value, m_emissive);
    else if (name == "alpha")
        m_alpha = firstNumber(value);
    else if (name == "shininess")
        m_shininess = firstNumber(value);
}

} // namespace HB::XML::CAD
