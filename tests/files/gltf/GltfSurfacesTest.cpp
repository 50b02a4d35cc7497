#include "scene/MaterialLook.h"
#include "tests/files/gltf/GltfSquare.h"
#include "tests/support/SurfaceSamples.h"

namespace
{

using namespace surfacesamples;
using Slot = osg::TextureSlot;
using Wrap = osg::TextureSampler::Wrap;
using Filter = osg::TextureSampler::Filter;

class GltfSurfacesTest : public GltfReaderTest
{
protected:
    /// The members of a document with one square of the material `material`.
    static QByteArray square(const QByteArray& material, const QByteArray& others = textures())
    {
        return R"("materials": [)" + material + R"(],
            "meshes": [{"primitives": [{"attributes": {"POSITION": 0, "TEXCOORD_0": 2, "TEXCOORD_1": 2},
                                        "indices": 4, "material": 0}]}],
            "nodes": [{"mesh": 0}], "scenes": [{"nodes": [0]}])" +
               (others.isEmpty() ? "" : ",") + others;
    }

    /// The texture 0 with the red picture, 1 with the blue one, 2 with the sampler.
    static QByteArray textures()
    {
        return R"("images": [{"uri": ")" + address(redPng()) + R"(", "name": "rot"}, {"uri": ")" + address(bluePng()) +
               R"("}],
            "samplers": [{"wrapS": 33071, "wrapT": 33648, "magFilter": 9728, "minFilter": 9987}],
            "textures": [{"source": 0}, {"source": 1}, {"source": 0, "sampler": 0}])";
    }

    static QByteArray address(const QByteArray& bytes) { return "data:image/png;base64," + bytes.toBase64(); }

    osg::PhysicalSurface surfaceOfDocument(const QByteArray& members)
    {
        warnings.clear();
        const files::ReadResult result = readDocument(members);
        EXPECT_TRUE(result);
        if (!result)
            return {};
        warnings = texts(result.warnings);
        return osg::surfaceOf(materialBelow(root()));
    }
    osg::PhysicalSurface surfaceOf(const QByteArray& material) { return surfaceOfDocument(square(material)); }

    osg::MaterialPtr materialBelow(const osg::NodePtr& node) const
    {
        if (const auto core = geometry(node))
            return core->getMaterial();
        for (unsigned i = 0; i < node->getNChildren(); ++i)
            if (const osg::MaterialPtr material = materialBelow(node->getChild(i)))
                return material;
        return {};
    }

    /// `change` made to what a material without anything is.
    template <class Change>
    static osg::PhysicalSurface standard(const Change& change)
    {
        osg::PhysicalSurface surface;
        surface.metalness = 1;
        surface.doubleSided = false;
        change(surface);
        return surface;
    }

    QStringList warnings;
};

TEST_F(GltfSurfacesTest, AMaterialWithoutAnythingIsARoughMetalSeenFromOneSide)
{
    EXPECT_TRUE(surfaceOf("{}") == standard([](osg::PhysicalSurface&) {}));
}

TEST_F(GltfSurfacesTest, EachFactorIsRead)
{
    const auto expect = [this](const char* material, auto&& change) {
        EXPECT_TRUE(surfaceOf(material) == standard(change)) << material;
        EXPECT_EQ(warnings, QStringList());
    };
    using S = osg::PhysicalSurface;
    expect(R"({"pbrMetallicRoughness": {"metallicFactor": 0.5}})", [](S& s) { s.metalness = 0.5f; });
    expect(R"({"pbrMetallicRoughness": {"roughnessFactor": 0.25}})", [](S& s) { s.roughness = 0.25f; });
    expect(R"({"pbrMetallicRoughness": {"baseColorFactor": [1, 1, 1, 0.5]}})", [](S& s) { s.opacity = 0.5f; });
    expect(R"({"doubleSided": true})", [](S& s) { s.doubleSided = true; });
    expect(R"({"alphaMode": "BLEND", "pbrMetallicRoughness": {"baseColorFactor": [1, 1, 1, 0.5]}})",
           [](S& s) { s.alphaMode = osg::AlphaMode::Blend, s.opacity = 0.5f; });
    expect(R"({"alphaMode": "MASK", "alphaCutoff": 0.25})",
           [](S& s) { s.alphaMode = osg::AlphaMode::Mask, s.alphaCutoff = 0.25f; });
    expect(R"({"extensions": {"KHR_materials_unlit": {}}})", [](S& s) { s.unlit = true; });
    expect(R"({"extensions": {"KHR_materials_emissive_strength": {"emissiveStrength": 4}}})",
           [](S& s) { s.emissionStrength = 4; });
    expect(R"({"extensions": {"KHR_materials_ior": {"ior": 1.25}}})", [](S& s) { s.refraction = 1.25f; });
    expect(R"({"extensions": {"KHR_materials_transmission": {"transmissionFactor": 0.5}}})",
           [](S& s) { s.transmission = 0.5f; });
    expect(R"({"extensions": {"KHR_materials_clearcoat": {"clearcoatFactor": 0.5, "clearcoatRoughnessFactor": 0.25}}})",
           [](S& s) { s.clearcoat = 0.5f, s.clearcoatRoughness = 0.25f; });
    expect(
        R"({"extensions": {"KHR_materials_sheen": {"sheenColorFactor": [0.5, 0.25, 1], "sheenRoughnessFactor": 0.5}}})",
        [](S& s) {
            s.sheenColor = {0.5f, 0.25f, 1}, s.sheenRoughness = 0.5f;
        });
    expect(
        R"({"extensions": {"KHR_materials_specular": {"specularFactor": 0.5, "specularColorFactor": [2, 0.25, 1]}}})",
        [](S& s) {
            s.specular = 0.5f, s.specularColor = {2, 0.25f, 1};
        });
}

TEST_F(GltfSurfacesTest, EachSlotIsRead)
{
    const std::pair<Slot, const char*> slots[] = {
        {Slot::BaseColor, R"({"pbrMetallicRoughness": {"baseColorTexture": {"index": 1}}})"},
        {Slot::MetallicRoughness, R"({"pbrMetallicRoughness": {"metallicRoughnessTexture": {"index": 1}}})"},
        {Slot::Normal, R"({"normalTexture": {"index": 1, "scale": 0.5}})"},
        {Slot::Occlusion, R"({"occlusionTexture": {"index": 1, "strength": 0.5}})"},
        {Slot::Emission, R"({"emissiveTexture": {"index": 1}})"},
        {Slot::Transmission,
         R"({"extensions": {"KHR_materials_transmission": {"transmissionTexture": {"index": 1}}}})"},
        {Slot::Clearcoat, R"({"extensions": {"KHR_materials_clearcoat": {"clearcoatTexture": {"index": 1}}}})"},
        {Slot::ClearcoatRoughness,
         R"({"extensions": {"KHR_materials_clearcoat": {"clearcoatRoughnessTexture": {"index": 1}}}})"},
        {Slot::ClearcoatNormal,
         R"({"extensions": {"KHR_materials_clearcoat": {"clearcoatNormalTexture": {"index": 1, "scale": 0.5}}}})"},
        {Slot::SheenColor, R"({"extensions": {"KHR_materials_sheen": {"sheenColorTexture": {"index": 1}}}})"},
        {Slot::SheenRoughness, R"({"extensions": {"KHR_materials_sheen": {"sheenRoughnessTexture": {"index": 1}}}})"},
        {Slot::Specular, R"({"extensions": {"KHR_materials_specular": {"specularTexture": {"index": 1}}}})"},
        {Slot::SpecularColor, R"({"extensions": {"KHR_materials_specular": {"specularColorTexture": {"index": 1}}}})"},
    };
    static_assert(std::size(slots) == osg::textureSlots);
    for (const auto& [slot, material] : slots) {
        osg::Texture texture{imageOf(bluePng()), {}, 0, {}, {1, 1}, 0, 1};
        if (slot == Slot::Normal || slot == Slot::Occlusion || slot == Slot::ClearcoatNormal)
            texture.strength = 0.5f;
        EXPECT_TRUE(surfaceOf(material) ==
                    standard([&, slot = slot](osg::PhysicalSurface& surface) { surface.textures[slot] = texture; }))
            << material;
    }
}

TEST_F(GltfSurfacesTest, SamplerSetAndPlaceOfATextureAreRead)
{
    const osg::PhysicalSurface surface =
        surfaceOf(R"({"emissiveTexture": {"index": 2, "texCoord": 0, "extensions": {"KHR_texture_transform":
            {"offset": [0.25, 0.5], "scale": [2, 4], "rotation": 1.5, "texCoord": 1}}}})");
    const osg::TextureSampler sampler{Wrap::Clamp, Wrap::Mirrored, Filter::Nearest, Filter::LinearMipmapLinear};
    const osg::Texture expected{imageOf(redPng()), sampler, 1, {0.25f, 0.5f}, {2, 4}, 1.5f, 1};
    EXPECT_TRUE(surface.textures.at(Slot::Emission) == expected);
    EXPECT_EQ(surface.textures.at(Slot::Emission).image->name(), "rot");
    EXPECT_EQ(surfaceOf(R"({"emissiveTexture": {"index": 2, "texCoord": 1}})").textures.at(Slot::Emission).set, 1);
}

TEST_F(GltfSurfacesTest, BothSetsOfCoordinatesReachTheMesh)
{
    (void)surfaceOf("{}");
    osg::NodePtr node = root();
    while (!geometry(node))
        node = node->getChild(0);
    EXPECT_EQ(list(mesh(node).texCoords1), list(mesh(node).texCoords));
    EXPECT_EQ(mesh(node).texCoords1.size(), 4u);
}

TEST_F(GltfSurfacesTest, PicturesStandInTheFileInTextsAndBeside)
{
    const QByteArray material = R"({"emissiveTexture": {"index": 0}})";
    const auto read = [&](const QByteArray& image) {
        return surfaceOfDocument(square(material, R"("images": [)" + image + R"(], "textures": [{"source": 0}])"));
    };
    QDir().mkpath(pathOf(QStringLiteral("Bilder")));
    write(QString::fromUtf8("Bilder/rot ä.png"), redPng());
    EXPECT_EQ(read(R"({"uri": "Bilder/rot%20%C3%A4.png"})").textures.at(Slot::Emission).image, imageOf(redPng()));
    // The buffer of the square is no picture, but nobody looks at it here.
    const osg::EncodedImagePtr image =
        read(R"({"bufferView": 1, "mimeType": "image/png", "name": "x"})").textures.at(Slot::Emission).image;
    EXPECT_EQ(image->bytes().size(), 48u);
    EXPECT_EQ(std::memcmp(image->bytes().data(), squareBytes().all().constData() + 48, 48), 0);
    EXPECT_EQ(image->name(), "x");
}

TEST_F(GltfSurfacesTest, APictureThatCannotBeTakenIsAWarningAndTheFactorsStay)
{
    const QByteArray material = R"({"pbrMetallicRoughness": {"metallicFactor": 0.5}, "emissiveTexture": {"index": 0}})";
    const auto warningsOf = [&](const QByteArray& others) {
        const osg::PhysicalSurface surface = surfaceOfDocument(square(material, others));
        EXPECT_TRUE(surface == standard([](osg::PhysicalSurface& s) { s.metalness = 0.5f; }));
        return warnings.join(QLatin1Char('|')).remove(QFileInfo(pathOf(QStringLiteral("x"))).path() + QLatin1Char('/'));
    };
    const auto ofImage = [&](const QByteArray& image) {
        return warningsOf(R"("images": [)" + image + R"(], "textures": [{"source": 0}])");
    };
    EXPECT_EQ(warningsOf({}), QStringLiteral("the texture 0 does not exist @ /materials/0/emissiveTexture"));
    EXPECT_EQ(warningsOf(R"("textures": [{}])"),
              QStringLiteral("a texture has no picture that is read; it was left out @ /materials/0/emissiveTexture"));
    EXPECT_EQ(warningsOf(R"("textures": [{"source": 3}])"),
              QStringLiteral("this picture does not exist; it was left out @ /images/3"));
    EXPECT_EQ(ofImage("{}"), QStringLiteral("this picture does not exist; it was left out @ /images/0"));
    EXPECT_EQ(ofImage(R"({"uri": "none.png"})"),
              QStringLiteral("the picture none.png was left out: the file does not exist @ /images/0"));
    EXPECT_EQ(
        ofImage(R"({"uri": "http://example.com/a.png"})"),
        QStringLiteral("a picture is not on this computer and was left out: http://example.com/a.png @ /images/0"));
    EXPECT_EQ(ofImage(R"({"uri": "data:image/png;base64,!"})"),
              QStringLiteral("the data of a picture are not in base 64; it was left out @ /images/0"));
    EXPECT_TRUE(ofImage(R"({"uri": "../secret.png"})").contains(QLatin1String("secret.png was left out: ")));
    const QString outside =
        QStringLiteral("the bytes of this picture lie outside the file; it was left out @ /images/0");
    EXPECT_EQ(ofImage(R"({"bufferView": 99})"), outside);
}

TEST_F(GltfSurfacesTest, PicturesThatNeedAnExtensionAreKept)
{
    const auto imageOfTexture = [&](const QByteArray& texture) {
        const osg::PhysicalSurface surface = surfaceOfDocument(square(
            R"({"emissiveTexture": {"index": 0}})", R"("images": [{"uri": ")" + address(redPng()) + R"("}, {"uri": ")" +
                                                        address(bluePng()) + R"("}], "textures": [)" + texture + "]"));
        return surface.textures.at(Slot::Emission).image;
    };
    EXPECT_EQ(imageOfTexture(R"({"extensions": {"KHR_texture_basisu": {"source": 1}}})"), imageOf(bluePng()));
    EXPECT_EQ(imageOfTexture(R"({"extensions": {"EXT_texture_webp": {"source": 1}}})"), imageOf(bluePng()));
    EXPECT_EQ(imageOfTexture(R"({"source": 0, "extensions": {"EXT_texture_webp": {"source": 1}}})"), imageOf(redPng()));
}

TEST_F(GltfSurfacesTest, ATextureOfAThirdSetIsLeftOut)
{
    EXPECT_TRUE(surfaceOf(R"({"emissiveTexture": {"index": 0, "texCoord": 2}})").textures.empty());
    EXPECT_EQ(warnings.size(), 1);
}

TEST_F(GltfSurfacesTest, WhatOtherExtensionsSayIsCounted)
{
    const QByteArray volume = R"({"extensions": {"KHR_materials_volume": {"thicknessFactor": 1}}})";
    (void)surfaceOf(volume + "," + volume + ",{}");
    EXPECT_EQ(warnings, QStringList(QStringLiteral("KHR_materials_volume of 2 materials was left out @ ")));
}

TEST_F(GltfSurfacesTest, TheOlderModelIsNoMetal)
{
    const osg::PhysicalSurface surface = surfaceOf(R"({"extensions": {"KHR_materials_pbrSpecularGlossiness":
        {"diffuseFactor": [1, 1, 1, 0.5], "glossinessFactor": 0.25, "diffuseTexture": {"index": 1},
         "specularGlossinessTexture": {"index": 0}}}})");
    EXPECT_EQ(surface.metalness, 0);
    EXPECT_EQ(surface.roughness, 0.75f);
    EXPECT_EQ(surface.opacity, 0.5f);
    ASSERT_EQ(surface.textures.size(), 1u);
    EXPECT_EQ(surface.textures.at(Slot::BaseColor).image, imageOf(bluePng()));
    EXPECT_EQ(warnings.size(), 1);
}

TEST_F(GltfSurfacesTest, ValuesOfOtherTypesAreAsIfTheyWereNotThere)
{
    EXPECT_TRUE(surfaceOf(R"({"emissiveTexture": {"index": -1}, "occlusionTexture": {"index": 0, "strength": "x"},
                              "extensions": {"KHR_materials_ior": [], "KHR_materials_sheen": {"sheenColorFactor": [1]},
                                             "KHR_materials_unlit": 3}})") == standard([](osg::PhysicalSurface& s) {
                    s.textures[Slot::Occlusion] = {imageOf(redPng()), {}, 0, {}, {1, 1}, 0, 1};
                }));
}

} // namespace
