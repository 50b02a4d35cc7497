#include "cad/xml/CADMaterial.h"

#include "cad/xml/CADElementWalk.h"
#include "cad/xml/CADNumbers.h"

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
    for (const TiXmlAttribute& attribute : AttributesOf(element)) {
        const auto& name = attribute.NameTStr();
        if (name == "name")
            m_materialName = attribute.Value();
        else if (name == "ambient")
            parseFloatList(attribute.Value(), m_ambient);
        else if (name == "diffuse")
            parseFloatList(attribute.Value(), m_diffuse);
        else if (name == "specular")
            parseFloatList(attribute.Value(), m_specular);
        else if (name == "emissive")
            parseFloatList(attribute.Value(), m_emissive);
        else if (name == "alpha")
            m_alpha = firstNumber(attribute.Value());
        else if (name == "shininess")
            m_shininess = firstNumber(attribute.Value());
    }
}

} // namespace HB::XML::CAD
