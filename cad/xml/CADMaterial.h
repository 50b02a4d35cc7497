#pragma once

#include "cad/xml/CADBase.h"

#include <string>
#include <string_view>
#include <vector>

namespace HB::XML::CAD
{

/// Simple lighting values. The lists are kept as long as the document writes them; a colour is one with exactly three
/// elements.
class CADMaterial : public CADBase
{
public:
    /// An empty element below `parent`, which owns it; see CADBase.
    explicit CADMaterial(CADBase* parent) : CADBase(parent) {}

    /// Reads no children but `UserData`.
    void load(const TiXmlElement& element) override;

    /// Beside `name` and `id`: `ambient`, `diffuse`, `specular` and `emissive`, each of which replaces its list, and
    /// the first numbers of `alpha` and `shininess`. `name` is taken a second time, for getMaterialName.
    /// @throws std::bad_alloc see parseFloatList
    void loadAttributes(const TiXmlElement& element) override;

    ///@{
    /// The numbers as they stand in the document, not clamped: red, green and blue when there are three.
    std::vector<float> getAmbient() const { return m_ambient; }
    std::vector<float> getDiffuse() const { return m_diffuse; }
    std::vector<float> getSpecular() const { return m_specular; }
    std::vector<float> getEmissive() const { return m_emissive; }
    ///@}
    ///@{
    /// The number as it stands in the document, not clamped; 0 for the shininess and 1, opaque, for alpha without one.
    float getShininess() const { return m_shininess; }
    float getAlpha() const { return m_alpha; }
    ///@}
    /// The attribute `name`; empty without one.
    std::string getMaterialName() const { return m_materialName; }

private:
    void loadAttribute(std::string_view name, const char* value);

    std::vector<float> m_ambient = {0.0F, 0.0F, 0.0F};
    std::vector<float> m_diffuse = {0.5F, 0.5F, 0.5F};
    std::vector<float> m_specular = m_ambient;
    std::vector<float> m_emissive = m_ambient;
    float m_shininess = 0.0F;
    float m_alpha = 1.0F;
    std::string m_materialName;
};

} // namespace HB::XML::CAD
