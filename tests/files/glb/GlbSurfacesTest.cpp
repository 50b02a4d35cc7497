#include "files/SceneReader.h"
#include "files/glb/GlbWriter.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/MaterialLook.h"
#include "tests/files/glb/GlbTest.h"
#include "tests/support/BuiltInReading.h"
#include "tests/support/SurfaceSamples.h"

#include <QBuffer>
#include <QImage>

#include <set>

namespace
{

using namespace surfacesamples;
using Slot = osg::TextureSlot;

/// What each node named like a sample shows.
using Shown = std::map<std::string, osg::MaterialPtr>;

class GlbSurfacesTest : public GlbTest
{
protected:
    void TearDown() override
    {
        m_read = osg::NodePtr();
        GlbTest::TearDown();
    }

    static osg::MaterialPtr materialOf(const std::string& name, const osg::PhysicalSurface& surface)
    {
        files::MaterialLook look;
        look.diffuse = {0.5f, 0.25f, 1};
        look.emission = {0.5f, 0.5f, 0.5f};
        look.shininess = osg::shininessOfRoughness(surface.roughness);
        look.transparency = surface.alphaMode == osg::AlphaMode::Blend ? 1 - surface.opacity : 0;
        look.surface = surface;
        return files::makeMaterial(name, look);
    }

    /// A square with both sets of texture coordinates.
    static osg::Mesh square()
    {
        osg::Mesh mesh = triangle();
        mesh.normals = std::vector<osg::Vec3f>{{0, 0, 1}, {0, 0, 1}, {0, 0, 1}};
        mesh.texCoords = std::vector<osg::Vec2f>{{0, 0}, {1, 0}, {0, 1}};
        mesh.texCoords1 = std::vector<osg::Vec2f>{{0, 0}, {0.5f, 0}, {0, 0.25f}};
        return mesh;
    }

    void addSquare(const std::string& name, const osg::PhysicalSurface& surface)
    {
        add(osg::makeNodeFor(geometry(name, square(), materialOf(name, surface))));
    }

    /// The materials of a file by their names, read by our own reader.
    Shown readBack(const QString& name)
    {
        const files::ReadResult read = ::readScene(pathOf(name), {});
        EXPECT_TRUE(read);
        Shown shown;
        if (!read)
            return shown;
        m_read = read.value();
        collect(m_read.get(), shown);
        return shown;
    }
    Shown readBack() { return readBack(QString::fromUtf8("Größe 大小.glb")); }

    QByteArray bytesOf(const QString& name) const
    {
        QFile file(pathOf(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    QByteArray imageBytes(const GlbFile& file, std::size_t image) const
    {
        const auto& view = file.json["bufferViews"][file.json["images"][image]["bufferView"].get<std::size_t>()];
        return file.bytes().mid(file.binaryChunk() + 8 + view["byteOffset"].get<int>(), view["byteLength"].get<int>());
    }

private:
    static void collect(const osg::NodePtr& node, Shown& shown)
    {
        if (const auto geometry = osg::fcCast<osg::Geometry>(node->getCore()))
            shown[osg::getName(geometry->getMaterial())] = geometry->getMaterial();
        for (unsigned i = 0; i < node->getNChildren(); ++i)
            collect(node->getChild(i), shown);
    }

    osg::RefPtr<osg::NodePtr> m_read;
};

TEST_F(GlbSurfacesTest, EverySingleDifferenceComesBack)
{
    std::size_t count = 0;
    std::vector<Sample> samples = all();
    for (Sample& sample : samples) {
        sample.name += " #" + std::to_string(count++);
        addSquare(sample.name, sample.surface);
    }
    (void)written();
    EXPECT_EQ(warnings(), QStringList());
    const Shown shown = readBack();
    EXPECT_EQ(shown.size(), samples.size());
    for (const Sample& sample : samples) {
        const auto found = shown.find(sample.name);
        ASSERT_NE(found, shown.end()) << sample.name;
        osg::PhysicalSurface surface = osg::surfaceOf(found->second);
        EXPECT_NEAR(surface.roughness, sample.surface.roughness, 2e-6f) << sample.name;
        surface.roughness = sample.surface.roughness;
        osg::PhysicalSurface expected = sample.surface;
        for (auto& [slot, texture] : expected.textures)
            if (slot != Slot::Normal && slot != Slot::Occlusion && slot != Slot::ClearcoatNormal)
                texture.strength = 1;
        EXPECT_TRUE(surface == expected) << sample.name;
    }
}

TEST_F(GlbSurfacesTest, WhatLacksACoverageOfItsOwnIsWrittenAsBefore)
{
    files::MaterialLook look;
    look.shininess = 8;
    add(osg::makeNodeFor(geometry("a", triangle(), files::makeMaterial("plain", look))));
    const nlohmann::json material = written().json["materials"][0];
    EXPECT_EQ(material["doubleSided"], true);
    EXPECT_FALSE(material.contains("extensions"));
    EXPECT_EQ(material["pbrMetallicRoughness"]["metallicFactor"], 0);
    EXPECT_NEAR(material["pbrMetallicRoughness"]["roughnessFactor"].get<float>(), std::pow(0.2, 0.25), 1e-6);
}

TEST_F(GlbSurfacesTest, TheDiffuseColourIsTheBaseColourAlsoWhenItChangesLater)
{
    osg::PhysicalSurface surface;
    surface.metalness = 1;
    const osg::MaterialPtr material = materialOf("steel", surface);
    osg::fcCast<osg::SimpleMaterial>(material)->setDiffuse({1, 0, 0});
    add(osg::makeNodeFor(geometry("a", square(), material)));
    const nlohmann::json factor = written().json["materials"][0]["pbrMetallicRoughness"]["baseColorFactor"];
    EXPECT_EQ(factor, nlohmann::json({1, 0, 0, 1}));
}

TEST_F(GlbSurfacesTest, AnImageAndASamplerAreInTheFileOnce)
{
    osg::Texture texture{imageOf(redPng(), "red"), {}, 0, {}, {1, 1}, 0, 1};
    texture.sampler.wrapU = osg::TextureSampler::Wrap::Clamp;
    osg::PhysicalSurface surface;
    surface.textures[Slot::BaseColor] = texture;
    addSquare("a", surface);
    texture.image = imageOf(QByteArray(redPng()), "the same under another name");
    surface.textures[Slot::Emission] = texture;
    texture.sampler = {};
    surface.textures[Slot::Occlusion] = texture;
    addSquare("b", surface);
    const GlbFile file = written();
    EXPECT_EQ(file.json["images"].size(), 1u);
    EXPECT_EQ(file.json["samplers"].size(), 1u);
    EXPECT_EQ(file.json["textures"].size(), 2u);
    EXPECT_EQ(file.json["images"][0]["name"], "red");
    EXPECT_EQ(file.json["images"][0]["mimeType"], "image/png");
    EXPECT_EQ(imageBytes(file, 0), redPng());
}

TEST_F(GlbSurfacesTest, PicturesOfPackedFilesStandBehindThePackedArrays)
{
    options.packing.quantize = true;
    options.packing.compress = true;
    addSquare("a", withTexture(Slot::BaseColor, {imageOf(redPng()), {}, 1, {}, {1, 1}, 0, 1}));
    addSquare("b", withTexture(Slot::Emission, {imageOf(bluePng()), {}, 0, {}, {1, 1}, 0, 1}));
    const GlbFile file = written();
    EXPECT_EQ(imageBytes(file, 0), redPng());
    EXPECT_EQ(imageBytes(file, 1), bluePng());
    const Shown shown = readBack();
    EXPECT_EQ(osg::surfaceOf(shown.at("a")).textures.at(Slot::BaseColor).image, imageOf(redPng()));
    EXPECT_EQ(osg::surfaceOf(shown.at("b")).textures.at(Slot::Emission).image, imageOf(bluePng()));
}

TEST_F(GlbSurfacesTest, PicturesMayStandBesideTheFile)
{
    options.textures = files::glb::Textures::External;
    addSquare("a", withTexture(Slot::BaseColor, {imageOf(redPng(), "Wände/../rot #1.png"), {}, 0, {}, {1, 1}, 0, 1}));
    addSquare("b", withTexture(Slot::BaseColor, {imageOf(bluePng(), {}), {}, 0, {}, {1, 1}, 0, 1}));
    const GlbFile file = written();
    const QString red = QString::fromUtf8("Größe 大小_rot__1.png");
    const QString blue = QString::fromUtf8("Größe 大小_texture.png");
    EXPECT_EQ(bytesOf(red), redPng());
    EXPECT_EQ(bytesOf(blue), bluePng());
    EXPECT_EQ(filesInFolder().size(), 3);
    EXPECT_FALSE(file.json["images"][0].contains("bufferView"));
    const Shown shown = readBack();
    EXPECT_EQ(osg::surfaceOf(shown.at("a")).textures.at(Slot::BaseColor).image, imageOf(redPng()));
}

TEST_F(GlbSurfacesTest, PicturesMayBeLeftOut)
{
    options.textures = files::glb::Textures::None;
    addSquare("a", withTexture(Slot::BaseColor, {imageOf(redPng()), {}, 0, {}, {1, 1}, 0, 1}));
    const GlbFile file = written();
    EXPECT_FALSE(file.json.contains("images"));
    EXPECT_FALSE(file.json.contains("textures"));
    EXPECT_FALSE(file.json["materials"][0]["pbrMetallicRoughness"].contains("baseColorTexture"));
}

TEST_F(GlbSurfacesTest, AMeshWithoutCoordinatesIsSeenWithoutTheTextures)
{
    const osg::MaterialPtr material =
        materialOf("oak", withTexture(Slot::BaseColor, {imageOf(redPng()), {}, 1, {}, {1, 1}, 0, 1}));
    osg::Mesh first = square();
    first.texCoords1 = {};
    add(osg::makeNodeFor(geometry("both", square(), material)));
    add(osg::makeNodeFor(geometry("first", first, material)));
    const GlbFile file = written();
    ASSERT_EQ(file.json["materials"].size(), 2u);
    EXPECT_TRUE(file.json["materials"][0]["pbrMetallicRoughness"].contains("baseColorTexture"));
    EXPECT_FALSE(file.json["materials"][1]["pbrMetallicRoughness"].contains("baseColorTexture"));
    EXPECT_EQ(file.json["materials"][1]["name"], "oak 2");
    EXPECT_EQ(warnings(), QStringList(QStringLiteral(
                              "the textures of 1 materials were left out on meshes without texture coordinates")));
}

TEST_F(GlbSurfacesTest, AMeshUnderANormalMapHasTangents)
{
    const osg::Texture texture{imageOf(redPng()), {}, 1, {}, {1, 1}, 0, 1};
    addSquare("a", withTexture(Slot::Normal, texture));
    addSquare("b", withTexture(Slot::Emission, texture));
    const GlbFile file = written();
    EXPECT_THAT(file.array<float>(file.primitive(0)["attributes"]["TANGENT"].get<std::size_t>()),
                testing::ElementsAre(1, 0, 0, 1, 1, 0, 0, 1, 1, 0, 0, 1));
    EXPECT_FALSE(file.primitive(1)["attributes"].contains("TANGENT"));
}

TEST_F(GlbSurfacesTest, ASecondSetWithoutAFirstOneIsBoth)
{
    osg::Mesh mesh = square();
    mesh.texCoords = {};
    add(osg::makeNodeFor(geometry("a", mesh)));
    const GlbFile file = written();
    const auto& attributes = file.primitive(0)["attributes"];
    ASSERT_TRUE(attributes.contains("TEXCOORD_0"));
    EXPECT_EQ(attributes["TEXCOORD_0"], attributes["TEXCOORD_1"]);
}

TEST_F(GlbSurfacesTest, APictureOfAKindThatGltfHasNotIsEncodedAnew)
{
    QImage picture(3, 2, QImage::Format_RGB32);
    picture.fill(Qt::green);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    ASSERT_TRUE(picture.save(&buffer, "BMP"));
    addSquare("a", withTexture(Slot::BaseColor, {imageOf(bytes), {}, 0, {}, {1, 1}, 0, 1}));
    const GlbFile file = written();
    EXPECT_EQ(file.json["images"][0]["mimeType"], "image/png");
    const QImage read = QImage::fromData(imageBytes(file, 0));
    EXPECT_EQ(read.size(), QSize(3, 2));
    EXPECT_EQ(read.pixelColor(2, 1), QColor(Qt::green));
}

TEST_F(GlbSurfacesTest, APictureThatNobodyCanReadIsLeftOutWithAWord)
{
    addSquare("a", withTexture(Slot::BaseColor, {imageOf("no picture", "junk"), {}, 0, {}, {1, 1}, 0, 1}));
    const GlbFile file = written();
    EXPECT_FALSE(file.json.contains("images"));
    ASSERT_EQ(warnings().size(), 1);
    EXPECT_TRUE(warnings()[0].startsWith(QLatin1String("the picture 'junk' was left out: ")));
}

TEST_F(GlbSurfacesTest, LargePicturesAreMadeSmaller)
{
    QImage picture(64, 16, QImage::Format_RGB32);
    picture.fill(Qt::red);
    for (const char* format : {"PNG", "JPG"}) {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        ASSERT_TRUE(picture.save(&buffer, format));
        addSquare(format, withTexture(Slot::BaseColor, {imageOf(bytes, format), {}, 0, {}, {1, 1}, 0, 1}));
    }
    addSquare("small", withTexture(Slot::BaseColor, {imageOf(redPng()), {}, 0, {}, {1, 1}, 0, 1}));
    options.mostTextureSide = 32;
    const GlbFile file = written();
    EXPECT_EQ(QImage::fromData(imageBytes(file, 0)).size(), QSize(32, 8));
    EXPECT_EQ(file.json["images"][0]["mimeType"], "image/png");
    EXPECT_EQ(QImage::fromData(imageBytes(file, 1)).size(), QSize(32, 8));
    EXPECT_EQ(file.json["images"][1]["mimeType"], "image/jpeg");
    EXPECT_EQ(imageBytes(file, 2), redPng());
}

TEST_F(GlbSurfacesTest, ABombIsRefusedBeforeItIsDecoded)
{
    // A PNG file whose header tells of 65,535 x 65,535 pixels.
    const QByteArray bomb = QByteArray::fromBase64("iVBORw0KGgoAAAANSUhEUgAA//8AAP//CAIAAAA5Z04HAAAADUlEQVR4nGP4"
                                                   "z8AARAAI/gH/xp559wAAAABJRU5ErkJggg==");
    addSquare("a", withTexture(Slot::BaseColor, {imageOf(bomb, "bomb"), {}, 0, {}, {1, 1}, 0, 1}));
    options.mostTextureSide = 1024;
    const GlbFile file = written();
    EXPECT_FALSE(file.json.contains("images"));
    EXPECT_EQ(warnings(),
              QStringList(QStringLiteral("the picture 'bomb' was left out: its 65535 x 65535 pixels are too many")));
}

TEST_F(GlbSurfacesTest, APictureThatNeedsAnExtensionRequiresIt)
{
    const QByteArray ktx2 = QByteArray("\xabKTX 20\xbb\r\n\x1a\n", 12) + QByteArray(68, '\0');
    addSquare("a", withTexture(Slot::BaseColor, {imageOf(ktx2, "k"), {}, 0, {}, {1, 1}, 0, 1}));
    options.mostTextureSide = 1;
    result = files::glb::write(root.get(), pathOf(QStringLiteral("k.glb")), options);
    ASSERT_TRUE(result);
    const GlbFile file(pathOf(QStringLiteral("k.glb")));
    EXPECT_EQ(file.json["extensionsRequired"], nlohmann::json({"KHR_texture_basisu"}));
    EXPECT_EQ(file.json["extensionsUsed"], nlohmann::json({"KHR_texture_basisu"}));
    EXPECT_EQ(file.json["textures"][0]["extensions"]["KHR_texture_basisu"]["source"], 0);
    EXPECT_EQ(imageBytes(file, 0), ktx2);
    EXPECT_EQ(osg::surfaceOf(readBack(QStringLiteral("k.glb")).at("a")).textures.at(Slot::BaseColor).image,
              imageOf(ktx2));
}

} // namespace
