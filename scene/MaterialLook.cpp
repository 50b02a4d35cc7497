#include "scene/MaterialLook.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "scene/EditScope.h"

#include <algorithm>
#include <cmath>

namespace osg
{

namespace
{

constexpr float largestShininess = 1e6f;
/// Of a roughness that went through the exponent of a highlight and back.
constexpr float roughnessStep = 2e-6f;

PhysicalSurfaceAttachmentPtr attachmentOf(const MaterialPtr& material)
{
    return fcCast<PhysicalSurfaceAttachment>(
        material->findAttachment(PhysicalSurfaceAttachmentBase::_type.getGroupId(), 0));
}

bool isImplied(PhysicalSurface surface, const SurfaceLook& look)
{
    const PhysicalSurface implied = impliedSurface(look);
    if (std::abs(surface.roughness - implied.roughness) <= roughnessStep)
        surface.roughness = implied.roughness;
    if (surface.alphaMode == AlphaMode::Blend)
        surface.opacity = implied.opacity;
    return surface == implied;
}

} // namespace

std::optional<SurfaceLook> lookOf(const MaterialPtr& material)
{
    if (const auto simple = fcCast<SimpleMaterial>(material))
        return SurfaceLook{simple->getAmbient(),  simple->getDiffuse(),   simple->getEmission(),
                           simple->getSpecular(), simple->getShininess(), simple->getTransparency()};
    if (const auto uber = fcCast<UberMaterial>(material))
        return uber->getLook();
    return std::nullopt;
}

float roughnessOfShininess(float shininess)
{
    if (!(shininess > 0))
        return 1;
    return static_cast<float>(std::round(std::pow(2 / (double(shininess) + 2), 0.25) * 1e6) / 1e6);
}

float shininessOfRoughness(float roughness)
{
    const float square = roughness * roughness;
    return std::clamp(2 / (square * square) - 2, 0.0f, largestShininess);
}

PhysicalSurface impliedSurface(const SurfaceLook& look)
{
    PhysicalSurface surface;
    surface.roughness = roughnessOfShininess(look.shininess);
    surface.opacity = std::isfinite(look.transparency) ? 1 - std::clamp(look.transparency, 0.0f, 1.0f) : 1;
    surface.alphaMode = surface.opacity < 1 ? AlphaMode::Blend : AlphaMode::Opaque;
    return surface;
}

PhysicalSurface surfaceOf(const MaterialPtr& material)
{
    const SurfaceLook look = lookOf(material).value_or(SurfaceLook());
    const PhysicalSurfaceAttachmentPtr attachment = material ? attachmentOf(material) : PhysicalSurfaceAttachmentPtr();
    if (!attachment)
        return impliedSurface(look);
    PhysicalSurface surface = attachment->getSurface();
    if (surface.alphaMode == AlphaMode::Blend)
        surface.opacity = impliedSurface(look).opacity;
    return surface;
}

void setSurface(const MaterialPtr& material, const PhysicalSurface& surface)
{
    if (!material)
        return;
    const PhysicalSurfaceAttachmentPtr old = attachmentOf(material);
    const bool needsOne = !isImplied(surface, lookOf(material).value_or(SurfaceLook()));
    if (!old && !needsOne)
        return;
    const EditScope scope(material, AttachmentContainer::AttachmentsFieldMask);
    if (old)
        material->subAttachment(old, 0);
    if (!needsOne)
        return;
    const PhysicalSurfaceAttachmentPtr attachment = PhysicalSurfaceAttachmentBase::create();
    edit(attachment, PhysicalSurfaceAttachmentBase::SurfaceFieldMask, [&] { attachment->setSurface(surface); });
    material->addAttachment(attachment);
}

} // namespace osg
