#pragma once

#include "host/OSGSystem/Attachment.h"
#include "host/OSGSystem/EncodedImage.h"
#include "host/OSGSystem/Math.h"

#include <array>
#include <map>

namespace osg
{

/// How a picture goes on beyond its borders, and how it is read between its pixels.
struct TextureSampler {
    /// Beyond a border.
    enum class Wrap : std::uint8_t {
        Repeat,   ///< from the beginning
        Clamp,    ///< with the pixel of the border
        Mirrored, ///< backwards
    };
    /// Between pixels; the values of a minified picture begin with how its levels are read.
    enum class Filter : std::uint8_t {
        Any,                  ///< as whoever draws likes
        Nearest,              ///< the nearest pixel
        Linear,               ///< the pixels around, by their distance
        NearestMipmapNearest, ///< the nearest pixel of the nearest level
        LinearMipmapNearest,  ///< the pixels around, of the nearest level
        NearestMipmapLinear,  ///< the nearest pixels of two levels
        LinearMipmapLinear,   ///< the pixels around, of two levels
    };
    Wrap wrapU = Wrap::Repeat;    ///< along u
    Wrap wrapV = Wrap::Repeat;    ///< along v
    Filter magnify = Filter::Any; ///< where a pixel is larger than a dot of the screen: Any, Nearest or Linear
    Filter minify = Filter::Any;  ///< where it is smaller
    /// Equal in all.
    friend bool operator==(const TextureSampler&, const TextureSampler&) = default;
};

/// A picture upon a surface. Where it stands is told as glTF's KHR_texture_transform tells it, for coordinates whose v
/// runs down from the upper border: (u, v) is scaled, turned counter-clockwise around the upper left corner, and moved.
struct Texture {
    EncodedImagePtr image;  ///< never null in a surface
    TextureSampler sampler; ///< how it is read
    std::uint8_t set = 0;   ///< which coordinates of the mesh it follows: 0 or 1
    Vec2f offset;           ///< in pictures
    Vec2f scale = {1, 1};   ///< how often the picture stands where it would stand once
    float rotation = 0;     ///< in radians
    float strength = 1;     ///< of normals and of occlusion; the others are multiplied by the factors of the surface
    /// Equal in all; images by their bytes.
    friend bool operator==(const Texture&, const Texture&) = default;
};

/// What a texture says, and of which channels: as in glTF.
enum class TextureSlot : std::uint8_t {
    BaseColor,          ///< display colours and alpha, times diffuse colour and opacity
    MetallicRoughness,  ///< roughness in green, metalness in blue
    Normal,             ///< in tangent space, y up
    Occlusion,          ///< in red
    Emission,           ///< display colours, times the emission
    Transmission,       ///< in red
    Clearcoat,          ///< in red
    ClearcoatRoughness, ///< in green
    ClearcoatNormal,    ///< in tangent space
    SheenColor,         ///< display colours
    SheenRoughness,     ///< in alpha
    Specular,           ///< in alpha
    SpecularColor,      ///< display colours
};
/// How many there are.
inline constexpr std::size_t textureSlots = 13;

/// What counts as covered where a surface is not whole.
enum class AlphaMode : std::uint8_t {
    Opaque, ///< everything
    Mask,   ///< what reaches the cutoff
    Blend,  ///< as much as alpha says
};

/// What the metallic-roughness model of glTF 2.0 and its extensions know of a surface beyond the colours of a material:
/// the material's diffuse colour is the base colour and its emission is the emission. All factors multiply what the
/// texture of their slot says.
struct PhysicalSurface {
    float metalness = 0;                       ///< 0 to 1
    float roughness = 1;                       ///< 0 to 1
    float opacity = 1;                         ///< alpha of the base colour, 0 to 1
    AlphaMode alphaMode = AlphaMode::Opaque;   ///< what alpha is for
    float alphaCutoff = 0.5f;                  ///< with the mode Mask
    bool doubleSided = true;                   ///< whether back faces are seen
    bool unlit = false;                        ///< whether the base colour shows as it is, without light
    float emissionStrength = 1;                ///< 0 and more
    float transmission = 0;                    ///< 0 to 1: how much light goes through what is not reflected
    float refraction = 1.5f;                   ///< index of refraction, 1 and more; 0 for what reflects all
    float clearcoat = 0;                       ///< 0 to 1
    float clearcoatRoughness = 0;              ///< 0 to 1
    Color3f sheenColor;                        ///< linear, not display colours
    float sheenRoughness = 0;                  ///< 0 to 1
    float specular = 1;                        ///< 0 to 1: how strongly what is no metal reflects
    Color3f specularColor = {1, 1, 1};         ///< linear, may exceed 1
    std::map<TextureSlot, Texture> textures{}; ///< those that there are
    /// Exact, number by number; textures with all that they have.
    friend bool operator==(const PhysicalSurface&, const PhysicalSurface&) = default;
};

class PhysicalSurfaceAttachment;
/// Pointer to a `PhysicalSurfaceAttachment`.
using PhysicalSurfaceAttachmentPtr = FCPtr<AttachmentPtr, PhysicalSurfaceAttachment>;

/// Fields of `PhysicalSurfaceAttachment`.
class ZN_HOST_EXPORT PhysicalSurfaceAttachmentBase : public Attachment
{
public:
    ///@{
    /// The class's pointer and type record, see FieldContainer.
    using Ptr = PhysicalSurfaceAttachmentPtr;
    static FieldContainerType _type;
    ///@}
    /// The bit of an edit bracket around `setSurface`.
    static constexpr FieldMask SurfaceFieldMask = 1u << 0;

    /// With a surface as it is at first.
    static PhysicalSurfaceAttachmentPtr create();
    const FieldContainerType& getType() const override { return _type; }

    ///@{
    /// All of the surface at once; it is stored as it is.
    const PhysicalSurface& getSurface() const { return m_surface; }
    void setSurface(PhysicalSurface surface);
    ///@}

protected:
    bool equalFields(const FieldContainer& other) const override;
    FieldContainerPtr copy() const override;

private:
    PhysicalSurface m_surface;
};

/// Beside the colours of a material: its physically based surface. A material without one is as its shininess and its
/// transparency say.
class ZN_HOST_EXPORT PhysicalSurfaceAttachment : public PhysicalSurfaceAttachmentBase
{
};

} // namespace osg
