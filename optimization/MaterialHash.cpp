#include "optimization/MaterialHash.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/SwitchMaterial.h"
#include "host/znOpenSGUberMaterial/UberMaterial.h"

#include <bit>

namespace optimization
{

namespace
{

class ValueHash
{
public:
    void add(std::uint64_t value)
    {
        m_value = (m_value ^ value) * 0x9e3779b97f4a7c15u;
        m_value ^= m_value >> 32;
    }
    /// Zeros of either sign are equal, so they count alike.
    void add(float value) { add(std::uint64_t(std::bit_cast<std::uint32_t>(value + 0.0f))); }
    void add(const osg::Color3f& color)
    {
        for (const float value : {color.red, color.green, color.blue})
            add(value);
    }
    std::uint64_t value() const { return m_value; }

private:
    std::uint64_t m_value = 1;
};

void addLook(ValueHash& hash, const osg::SurfaceLook& look)
{
    for (const osg::Color3f& color : {look.ambient, look.diffuse, look.emission, look.specular})
        hash.add(color);
    hash.add(look.shininess);
    hash.add(look.transparency);
}

/// What a material says of itself, whatever it holds.
void addOwn(ValueHash& hash, const osg::MaterialPtr& material)
{
    hash.add(std::uint64_t(material ? material->getType().getId() : 0));
    if (const auto simple = osg::fcCast<osg::SimpleMaterial>(material))
        addLook(hash, {simple->getAmbient(), simple->getDiffuse(), simple->getEmission(), simple->getSpecular(),
                       simple->getShininess(), simple->getTransparency()});
    else if (const auto uber = osg::fcCast<osg::UberMaterial>(material))
        addLook(hash, uber->getLook());
}

} // namespace

/// Only one level down: materials may hold each other in rings.
std::uint64_t hashOf(const osg::MaterialPtr& material)
{
    ValueHash hash;
    addOwn(hash, material);
    if (const auto choices = osg::fcCast<osg::SwitchMaterial>(material)) {
        hash.add(std::uint64_t(choices->getChoice()));
        for (const osg::MaterialPtr& choice : choices->getMaterials())
            addOwn(hash, choice);
    }
    return hash.value();
}

} // namespace optimization
