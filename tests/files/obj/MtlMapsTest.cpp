#include "scene/MaterialLook.h"
#include "tests/files/Pictures.h"
#include "tests/files/ReaderTest.h"

#include <gmock/gmock.h>

namespace
{

using osg::AlphaMode;
using osg::Color3f;
using osg::PhysicalSurface;
using osg::TextureSlot;
using osg::Vec2f;
using testing::ElementsAre;
using testing::IsEmpty;
using Wrap = osg::TextureSampler::Wrap;

constexpr const char* square = "mtllib m.mtl\nv 0 0 0\nv 1 0 0\nv 0 1 0\nvt 0 0\nvt 1 0\nvt 0.5 0.25\n"
                               "usemtl m\nf 1/1 2/2 3/3\n";

/// Reads a triangle whose material "m" has the statements of the test, in a folder with some pictures.
class MtlMapsTest : public ReaderTest
{
protected:
    void SetUp() override
    {
        write(QStringLiteral("oak.png"), pngOf("oak"));
        write(QStringLiteral("oak copy.png"), pngOf("oak"));
        write(QStringLiteral("my oak.png"), pngOf("mine"));
        write(QStringLiteral("grain.png"), pngOf("grain"));
        write(QStringLiteral("plate_Normal.png"), pngOf("normals"));
        write(QStringLiteral("photo.jpg"), jpegOf("photo"));
    }

    PhysicalSurface surfaceWith(const QByteArray& statements)
    {
        write(QStringLiteral("m.mtl"), "newmtl m\n" + statements);
        const files::ReadResult result = read(write(QStringLiteral("m.obj"), square));
        m_warnings = texts(result.warnings);
        if (!result)
            return {};
        return osg::surfaceOf(material());
    }

    osg::SimpleMaterialPtr material() const { return ReaderTest::material(root()->getChild(0)); }
    const QStringList& warnings() const { return m_warnings; }

    static QByteArray bytesAt(const PhysicalSurface& surface, TextureSlot slot)
    {
        const auto texture = surface.textures.find(slot);
        return texture == surface.textures.end() ? "(no texture)" : bytesOf(texture->second.image);
    }

private:
    QStringList m_warnings;
};

TEST_F(MtlMapsTest, AMapOfTheDiffuseColourIsTheBaseColour)
{
    const PhysicalSurface surface = surfaceWith("Kd 0.5 0.25 1\nmap_Kd oak.png\n");
    EXPECT_THAT(warnings(), IsEmpty());
    ASSERT_EQ(surface.textures.size(), 1u);
    const osg::Texture& texture = surface.textures.at(TextureSlot::BaseColor);
    EXPECT_EQ(bytesOf(texture.image), pngOf("oak"));
    EXPECT_EQ(texture.image->name(), "oak.png");
    EXPECT_EQ(texture.image->mimeType(), "image/png");
    EXPECT_EQ(texture.sampler, osg::TextureSampler());
    EXPECT_EQ(material()->getDiffuse(), (Color3f{0.5f, 0.25f, 1}));
    EXPECT_EQ(surface.alphaMode, AlphaMode::Opaque);
    EXPECT_THAT(list(mesh(root()->getChild(0)).texCoords), ElementsAre(Vec2f{0, 0}, Vec2f{1, 0}, Vec2f{0.5f, 0.25f}));
}

TEST_F(MtlMapsTest, BesideAMapAMissingOrBlackFactorIsWhite)
{
    surfaceWith("map_Kd oak.png\nmap_Ke grain.png\n");
    EXPECT_EQ(material()->getDiffuse(), (Color3f{1, 1, 1}));
    EXPECT_EQ(material()->getEmission(), (Color3f{1, 1, 1}));
    surfaceWith("Kd 0 0 0\nKe 0 0 0\nmap_Kd oak.png\nmap_Ke grain.png\n");
    EXPECT_EQ(material()->getDiffuse(), (Color3f{1, 1, 1}));
    EXPECT_EQ(material()->getEmission(), (Color3f{1, 1, 1}));
    surfaceWith("Kd 0 0 0\n");
    EXPECT_EQ(material()->getDiffuse(), (Color3f{0, 0, 0}));
}

TEST_F(MtlMapsTest, AMaterialWithoutMapsHasNoSurfaceOfItsOwn)
{
    surfaceWith("Kd 0 0 1\nNs 20\nd 0.5\nNi 1.45\nillum 2\n");
    EXPECT_FALSE(material()->findAttachment(osg::PhysicalSurfaceAttachmentBase::_type.getGroupId(), 0));
}

TEST_F(MtlMapsTest, AMissingPictureLeavesTheColourAndIsTold)
{
    const PhysicalSurface surface = surfaceWith("Kd 0 0.5 0\n\nmap_Kd gone.png\n");
    EXPECT_THAT(surface.textures, IsEmpty());
    EXPECT_EQ(material()->getDiffuse(), (Color3f{0, 0.5f, 0}));
    ASSERT_EQ(warnings().size(), 1);
    EXPECT_TRUE(warnings()[0].startsWith(QLatin1String("the picture ")) &&
                warnings()[0].contains(QLatin1String("gone.png was left out: ")) &&
                warnings()[0].endsWith(QLatin1String(" @ line 4")))
        << warnings()[0].toStdString();
}

TEST_F(MtlMapsTest, OnlyPicturesOfMaterialsInUseAreTaken)
{
    surfaceWith("Kd 1 0 0\nnewmtl unused\nmap_Kd gone.png\nmap_Ks gone.png\n");
    EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(MtlMapsTest, NamesMayHaveBlanksAndFoldersOfOtherSystems)
{
    EXPECT_EQ(bytesAt(surfaceWith("map_Kd my oak.png  \n"), TextureSlot::BaseColor), pngOf("mine"));
    EXPECT_EQ(bytesAt(surfaceWith("map_Kd -s 1 1 1 my oak.png\n"), TextureSlot::BaseColor), pngOf("mine"));
    EXPECT_EQ(bytesAt(surfaceWith("map_Kd C:\\maps\\my oak.png\n"), TextureSlot::BaseColor), pngOf("mine"));
    EXPECT_EQ(bytesAt(surfaceWith("map_Kd .\\oak.png\n"), TextureSlot::BaseColor), pngOf("oak"));
    EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(MtlMapsTest, EachOptionTakesItsOwnValues)
{
    const QByteArrayList options = {"-blendu off",  "-blendv on", "-boost 1.5", "-texres 512",
                                    "-type sphere", "-cc off",    "-mm 0 1",    "-imfchan r",
                                    "-bm 2",        "-t 0 0 0",   "-t 0",       "-s 1",
                                    "-s 1 1",       "-s 1 1 1",   "-o 0",       "-o 0 0",
                                    "-o 0 0 0",     "-clamp off", "-clamp on",  "-blendu off -cc off -s 1 1"};
    for (const QByteArray& option : options) {
        EXPECT_EQ(bytesAt(surfaceWith("map_Kd " + option + " my oak.png\n"), TextureSlot::BaseColor), pngOf("mine"))
            << option.constData();
        EXPECT_THAT(warnings(), IsEmpty()) << option.constData();
    }
}

TEST_F(MtlMapsTest, OptionsWithoutTheirValuesAndMapsWithoutAFileAreTold)
{
    for (const char* const rest : {"-s oak.png", "-o oak.png", "-bm oak.png", "-mm 1 oak.png", "-s 1 1 1", "-clamp",
                                   "-imfchan oak.png", "-texres", ""}) {
        EXPECT_THAT(surfaceWith(QByteArray("map_Kd ") + rest + "\n").textures, IsEmpty()) << rest;
        EXPECT_THAT(warnings(),
                    ElementsAre(QStringLiteral("'map_Kd' has no file name, or an option without its value @ line 2")))
            << rest;
    }
}

TEST_F(MtlMapsTest, OptionsThatChangeThePictureAreTold)
{
    EXPECT_EQ(surfaceWith("map_Kd -mm 0.2 0.8 -cc on oak.png\nmap_Ke -t 1 1 1 oak.png\n").textures.size(), 2u);
    EXPECT_THAT(warnings(), ElementsAre(QStringLiteral("2 textures have options that were left out: -cc, -mm, -t @ ")));
}

/// The statement's v runs up, as that of the mesh.
TEST_F(MtlMapsTest, ScaleAndOffsetArePutForCoordinatesWhoseVRunsDown)
{
    const PhysicalSurface surface = surfaceWith("map_Kd -s 2 3 1 -o 0.25 0.125 0 -clamp on oak.png\n");
    const osg::Texture& texture = surface.textures.at(TextureSlot::BaseColor);
    EXPECT_EQ(texture.scale, (Vec2f{2, 3}));
    EXPECT_EQ(texture.rotation, 0);
    EXPECT_EQ(texture.sampler.wrapU, Wrap::Clamp);
    EXPECT_EQ(texture.sampler.wrapV, Wrap::Clamp);
    for (const Vec2f& at : {Vec2f{0, 0}, Vec2f{1, 0}, Vec2f{0.5f, 0.75f}}) {
        const Vec2f found = lookedUp(texture, at);
        EXPECT_NEAR(found.x, 2 * at.x + 0.25f, 1e-6);
        EXPECT_NEAR(found.y, 3 * at.y + 0.125f, 1e-6);
    }
}

TEST_F(MtlMapsTest, ADissolveMapThatIsTheBaseColoursPictureIsItsAlpha)
{
    EXPECT_EQ(surfaceWith("map_Kd oak.png\nmap_d oak.png\n").alphaMode, AlphaMode::Blend);
    EXPECT_THAT(warnings(), IsEmpty());
    EXPECT_EQ(surfaceWith("map_Kd oak.png\nmap_d -imfchan m oak.png\n").alphaMode, AlphaMode::Blend);
    const PhysicalSurface half = surfaceWith("d 0.5\nmap_Kd oak.png\nmap_d oak.png\n");
    EXPECT_EQ(half.alphaMode, AlphaMode::Blend);
    EXPECT_EQ(half.opacity, 0.5f);
}

TEST_F(MtlMapsTest, AnyOtherDissolveMapIsLeftOut)
{
    for (const char* const maps :
         {"map_Kd oak.png\nmap_d grain.png\n", "map_d oak.png\n", "map_Kd oak.png\nmap_d -imfchan l oak.png\n",
          "map_Kd photo.jpg\nmap_d photo.jpg\n", "map_Kd oak.png\nmap_d -s 2 2 oak.png\n"}) {
        EXPECT_EQ(surfaceWith(maps).alphaMode, AlphaMode::Opaque) << maps;
        EXPECT_THAT(warnings(), ElementsAre(QStringLiteral("1 textures were left out, of the statements map_d @ ")))
            << maps;
    }
}

TEST_F(MtlMapsTest, MapsWithoutASlotAreCountedOnce)
{
    surfaceWith("map_Ks oak.png\nmap_Ns oak.png\nmap_Ka grain.png\nmap_Kd oak.png\ndisp oak.png\nrefl -type sphere "
                "oak.png\ndecal oak.png\nmap_aat on\n");
    EXPECT_THAT(warnings(), ElementsAre(QStringLiteral("6 textures were left out, of the statements decal, disp, "
                                                       "map_Ka, map_Ks, map_Ns, refl @ ")));
    surfaceWith("map_Ka oak.png\nmap_Kd oak.png\n");
    EXPECT_THAT(warnings(), IsEmpty()) << "the light around falls on the base colour";
}

TEST_F(MtlMapsTest, NormalsAreAMapOfTheirOwn)
{
    const PhysicalSurface surface = surfaceWith("norm -bm 0.5 grain.png\n");
    EXPECT_EQ(bytesAt(surface, TextureSlot::Normal), pngOf("grain"));
    EXPECT_EQ(surface.textures.at(TextureSlot::Normal).strength, 0.5f);
    EXPECT_EQ(material()->getDiffuse(), osg::SurfaceLook().diffuse);
}

TEST_F(MtlMapsTest, BumpsAreHeightsUnlessTheyAreCalledNormals)
{
    for (const char* const keyword : {"map_Bump", "map_bump", "bump"}) {
        EXPECT_EQ(bytesAt(surfaceWith(QByteArray(keyword) + " -bm 2 plate_Normal.png\n"), TextureSlot::Normal),
                  pngOf("normals"));
        EXPECT_THAT(warnings(), IsEmpty());
        EXPECT_THAT(surfaceWith(QByteArray(keyword) + " grain.png\n").textures, IsEmpty());
        EXPECT_THAT(
            warnings(),
            ElementsAre(
                QStringLiteral("1 textures were left out, of the statements %1 @ ").arg(QString::fromLatin1(keyword))));
    }
    EXPECT_EQ(bytesAt(surfaceWith("bump plate_Normal.png\nnorm oak.png\n"), TextureSlot::Normal), pngOf("oak"));
    EXPECT_THAT(warnings(), ElementsAre(QStringLiteral("1 textures were left out, of the statements bump @ ")));
}

TEST_F(MtlMapsTest, RoughnessMetalnessCoatAndSheenAreNumbers)
{
    const PhysicalSurface surface = surfaceWith("Pr 0.25\nPm 0.75\nPc 0.5\nPcr 0.125\nPs 0.1 0.2 0.3\n");
    EXPECT_EQ(surface.roughness, 0.25f);
    EXPECT_EQ(surface.metalness, 0.75f);
    EXPECT_EQ(surface.clearcoat, 0.5f);
    EXPECT_EQ(surface.clearcoatRoughness, 0.125f);
    EXPECT_EQ(surface.sheenColor, (Color3f{0.1f, 0.2f, 0.3f}));
    EXPECT_EQ(surface.sheenRoughness, 0.25f);
    EXPECT_FLOAT_EQ(material()->getShininess(), osg::shininessOfRoughness(0.25f));
    surfaceWith("Ns 30\nPr 0.25\n");
    EXPECT_EQ(material()->getShininess(), 30);
    EXPECT_EQ(surfaceWith("Pr 7\nPm -1\n").roughness, 1);
}

TEST_F(MtlMapsTest, APictureOfRoughnessAndMetalnessServesBoth)
{
    const PhysicalSurface surface = surfaceWith("map_Pr grain.png\nmap_Pm grain.png\n");
    EXPECT_EQ(bytesAt(surface, TextureSlot::MetallicRoughness), pngOf("grain"));
    EXPECT_EQ(surface.roughness, 1);
    EXPECT_EQ(surface.metalness, 1);
    const PhysicalSurface factors =
        surfaceWith("Pr 0.5\nPm 0.25\nmap_Pr -imfchan g grain.png\nmap_Pm -imfchan b grain.png\n");
    EXPECT_EQ(bytesAt(factors, TextureSlot::MetallicRoughness), pngOf("grain"));
    EXPECT_EQ(factors.roughness, 0.5f);
    EXPECT_EQ(factors.metalness, 0.25f);
    EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(MtlMapsTest, APictureOfRoughnessAloneServesWhereThereIsNoMetal)
{
    const PhysicalSurface surface = surfaceWith("Pm 0\nmap_Pr grain.png\n");
    EXPECT_EQ(bytesAt(surface, TextureSlot::MetallicRoughness), pngOf("grain"));
    EXPECT_EQ(surface.roughness, 1);
    EXPECT_EQ(surface.metalness, 0);
    EXPECT_THAT(warnings(), IsEmpty());
}

TEST_F(MtlMapsTest, PicturesOfRoughnessAndMetalnessThatDoNotMakeOneAreLeftOut)
{
    for (const char* const maps : {"Pm 1\nmap_Pr grain.png\n", "map_Pm grain.png\n", "map_Pr -imfchan r grain.png\n"}) {
        EXPECT_EQ(surfaceWith(maps).textures.size(), 0u) << maps;
        EXPECT_EQ(warnings().size(), 1) << maps;
    }
    for (const char* const maps :
         {"map_Pr grain.png\nmap_Pm oak.png\n", "map_Pr grain.png\nmap_Pm -imfchan r grain.png\n"}) {
        EXPECT_EQ(surfaceWith(maps).textures.size(), 0u) << maps;
        EXPECT_THAT(warnings(),
                    ElementsAre(QStringLiteral("2 textures were left out, of the statements map_Pm, map_Pr @ ")));
    }
}

TEST_F(MtlMapsTest, CoatAndSheenHaveMaps)
{
    const PhysicalSurface surface = surfaceWith("map_Pc oak.png\nmap_Pcr grain.png\nPcr 0.5\nmap_Ps oak copy.png\n");
    EXPECT_EQ(bytesAt(surface, TextureSlot::Clearcoat), pngOf("oak"));
    EXPECT_EQ(bytesAt(surface, TextureSlot::ClearcoatRoughness), pngOf("grain"));
    EXPECT_EQ(surface.clearcoat, 1);
    EXPECT_EQ(surface.clearcoatRoughness, 0.5f);
    EXPECT_EQ(surface.sheenColor, (Color3f{1, 1, 1}));
    EXPECT_EQ(surface.textures.at(TextureSlot::SheenColor).image, surface.textures.at(TextureSlot::Clearcoat).image)
        << "equal bytes are one image";
    EXPECT_EQ(surfaceWith("map_Pc -imfchan b oak.png\n").clearcoat, 0);
    EXPECT_THAT(warnings(), ElementsAre(QStringLiteral("1 textures were left out, of the statements map_Pc @ ")));
}

} // namespace
