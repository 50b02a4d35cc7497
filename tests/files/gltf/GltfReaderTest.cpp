#include "files/gltf/GltfReader.h"

#include "tests/files/gltf/GltfSquare.h"

#include <gmock/gmock.h>

#include <array>

namespace
{

using files::ReadOptions;
using osg::Color3f;
using osg::Color4f;
using osg::Vec2f;
using osg::Vec3f;
using testing::ElementsAre;
using testing::IsEmpty;

/// One node with one primitive.
QByteArray oneNode(const QByteArray& primitive)
{
    return R"("nodes": [{"name": "square", "mesh": 0}], "meshes": [{"name": "quad", "primitives": [)" + primitive +
           "]}]";
}

TEST_F(GltfReaderTest, OneTransformTurnsMetresAndYUpIntoMillimetresAndZUp)
{
    ASSERT_TRUE(readDocument(oneNode(R"({"attributes": {"POSITION": 0}, "indices": 4})") +
                             R"(, "scenes": [{"name": "Szene 场景", "nodes": [0]}])"));
    ASSERT_EQ(root()->getNChildren(), 1u);
    EXPECT_EQ(nameOf(scene()), "Szene 场景");
    // (x, y, z) metres are (1000 x, -1000 z, 1000 y) millimetres.
    EXPECT_THAT(matrixOf(scene()), ElementsAre(1000, 0, 0, 0, 0, 0, 1000, 0, 0, -1000, 0, 0, 0, 0, 0, 1));
    EXPECT_EQ(outline(root()), "Szene 场景(square)");
}

TEST_F(GltfReaderTest, AttributesAndIndicesArriveAsTheyAre)
{
    const auto result = readDocument(
        oneNode(R"({"attributes": {"POSITION": 0, "NORMAL": 1, "TEXCOORD_0": 2, "COLOR_0": 3}, "indices": 4})"));
    EXPECT_THAT(texts(result.warnings), IsEmpty());
    const osg::Mesh& square = mesh(scene()->getChild(0));
    EXPECT_THAT(list(square.positions),
                ElementsAre(Vec3f{0, 0, 0.5f}, Vec3f{1, 0, 0.5f}, Vec3f{1, 1, 0.5f}, Vec3f{0, 1, 0.5f}));
    EXPECT_THAT(list(square.normals),
                ElementsAre(Vec3f{0, 0, 1}, Vec3f{0, 0.6f, 0.8f}, Vec3f{1, 0, 0}, Vec3f{0, -1, 0}));
    EXPECT_THAT(list(square.triangles), ElementsAre(0u, 1u, 2u, 0u, 2u, 3u));
    EXPECT_TRUE(square.lines.empty());
    EXPECT_TRUE(square.points.empty());
    EXPECT_EQ(nameOf(geometry(scene()->getChild(0))), "quad");
}

TEST_F(GltfReaderTest, TextureCoordinatesCountFromTheLowerLeftCorner)
{
    ASSERT_TRUE(readDocument(oneNode(R"({"attributes": {"POSITION": 0, "TEXCOORD_0": 2}})")));
    EXPECT_THAT(list(mesh(scene()->getChild(0)).texCoords),
                ElementsAre(Vec2f{0, 1}, Vec2f{1, 0.75f}, Vec2f{1, 0}, Vec2f{0.5f, 0.25f}));
}

TEST_F(GltfReaderTest, LinearVertexColoursBecomeDisplayColours)
{
    ASSERT_TRUE(readDocument(oneNode(R"({"attributes": {"POSITION": 0, "COLOR_0": 3}})")));
    const osg::Buffer<Color4f> colors = mesh(scene()->getChild(0)).colors;
    ASSERT_EQ(colors.size(), 4u);
    EXPECT_NEAR(colors[0].red, 0.501773, 1e-5);
    EXPECT_NEAR(colors[0].green, 0.736647, 1e-5);
    EXPECT_NEAR(colors[0].blue, 1, 1e-5);
    EXPECT_NEAR(colors[0].alpha, 0.2, 1e-6);
    EXPECT_EQ(colors[1], (Color4f{0, 0, 0, 1}));
    EXPECT_EQ(colors[3].alpha, 0);
}

TEST_F(GltfReaderTest, ArraysOfTheFileAreUsedWhereTheyAre)
{
    ASSERT_TRUE(readDocument(R"("nodes": [{"mesh": 0}, {"mesh": 1}],
        "meshes": [{"primitives": [{"attributes": {"POSITION": 0, "NORMAL": 1}}]},
                   {"primitives": [{"attributes": {"POSITION": 0}}]}])"));
    const osg::Mesh& first = mesh(scene()->getChild(0));
    EXPECT_EQ(first.positions.data(), mesh(scene()->getChild(1)).positions.data());
    EXPECT_EQ(first.normals.data(), first.positions.data() + 4);
}

TEST_F(GltfReaderTest, ArraysAreCopiedOutOfABufferThatIsMostlyOtherData)
{
    GltfBytes padded = squareBytes();
    for (int i = 0; i < 400; ++i)
        padded.bytes({7});
    ASSERT_TRUE(read(write(QStringLiteral("pictures.gltf"),
                           document(oneNode(R"({"attributes": {"POSITION": 0, "NORMAL": 1}})"), padded.embedded()))));
    const osg::Mesh& square = mesh(scene()->getChild(0));
    EXPECT_NE(square.normals.data(), square.positions.data() + 4);
    EXPECT_EQ(square.positions[2], (Vec3f{1, 1, 0.5f}));
}

TEST_F(GltfReaderTest, SparseAccessorsChangeSingleElements)
{
    ASSERT_TRUE(readDocument(oneNode(R"({"attributes": {"POSITION": 6, "NORMAL": 8}})")));
    const osg::Mesh& square = mesh(scene()->getChild(0));
    EXPECT_THAT(list(square.positions),
                ElementsAre(Vec3f{0, 0, 0.5f}, Vec3f{1, 0, 0.5f}, Vec3f{9, 8, 7}, Vec3f{0, 1, 0.5f}));
    EXPECT_THAT(list(square.normals), ElementsAre(Vec3f{}, Vec3f{}, Vec3f{9, 8, 7}, Vec3f{}));
}

TEST_F(GltfReaderTest, InterleavedAndShortNumbersAreRead)
{
    GltfBytes bytes; // position as three normalised shorts and one of padding, then two normalised bytes and padding
    for (const std::int16_t x : {std::int16_t(32767), std::int16_t(-32768), std::int16_t(16384)})
        bytes.add<std::int16_t>({x, 0, 0, 0}).bytes({255, 51, 0, 0});
    const QByteArray json = R"({"asset": {"version": "2.0"}, "extensionsRequired": ["KHR_mesh_quantization"],
        "buffers": [)" + bytes.embedded() +
                            R"(],
        "bufferViews": [{"buffer": 0, "byteLength": 36, "byteStride": 12}],
        "accessors": [{"bufferView": 0, "componentType": 5122, "normalized": true, "count": 3, "type": "VEC3"},
            {"bufferView": 0, "byteOffset": 8, "componentType": 5121, "normalized": true, "count": 3, "type": "VEC2"}],
        "nodes": [{"mesh": 0}],
        "meshes": [{"primitives": [{"attributes": {"POSITION": 0, "TEXCOORD_0": 1}}]}]})";
    ASSERT_TRUE(read(write(QStringLiteral("short.gltf"), json)));
    const osg::Mesh& shape = mesh(scene()->getChild(0));
    EXPECT_THAT(list(shape.positions), ElementsAre(Vec3f{1, 0, 0}, Vec3f{-1, 0, 0}, Vec3f{16384.0f / 32767, 0, 0}));
    EXPECT_FLOAT_EQ(shape.texCoords[1].x, 1);
    EXPECT_FLOAT_EQ(shape.texCoords[1].y, 0.8f);
}

struct Mode {
    const char* name;
    int number;
    std::vector<std::uint32_t> points, lines, triangles;
};

class GltfModeTest : public GltfReaderTest, public testing::WithParamInterface<Mode>
{
};

TEST_P(GltfModeTest, BecomesSingleElements)
{
    ASSERT_TRUE(readDocument(oneNode(R"({"attributes": {"POSITION": 0}, "indices": 5, "mode": )" +
                                     QByteArray::number(GetParam().number) + "}")));
    const osg::Mesh& shape = mesh(scene()->getChild(0));
    EXPECT_EQ(list(shape.points), GetParam().points);
    EXPECT_EQ(list(shape.lines), GetParam().lines);
    EXPECT_EQ(list(shape.triangles), GetParam().triangles);
}

// The indices are 0 1 3 2.
INSTANTIATE_TEST_SUITE_P(
    Modes, GltfModeTest,
    testing::Values(Mode{"Points", 0, {0, 1, 3, 2}, {}, {}}, Mode{"Lines", 1, {}, {0, 1, 3, 2}, {}},
                    Mode{"Loop", 2, {}, {0, 1, 1, 3, 3, 2, 2, 0}, {}}, Mode{"LineStrip", 3, {}, {0, 1, 1, 3, 3, 2}, {}},
                    Mode{"TrianglesWithARest", 4, {}, {}, {0, 1, 3}}, Mode{"Strip", 5, {}, {}, {0, 1, 3, 1, 2, 3}},
                    Mode{"Fan", 6, {}, {}, {1, 3, 0, 3, 2, 0}}),
    [](const auto& test) { return test.param.name; });

TEST_F(GltfReaderTest, WithoutIndicesVerticesAreTakenInOrder)
{
    ASSERT_TRUE(readDocument(oneNode(R"({"attributes": {"POSITION": 0}, "mode": 1})")));
    EXPECT_THAT(list(mesh(scene()->getChild(0)).lines), ElementsAre(0u, 1u, 2u, 3u));
}

TEST_F(GltfReaderTest, NodesKeepNamesTransformsAndOrder)
{
    ASSERT_TRUE(readDocument(R"("nodes": [
        {"name": "arm", "translation": [1, 2, 3], "rotation": [0, 0, 0.70710678, 0.70710678], "scale": [2, 3, 4],
         "children": [2, 1]},
        {"name": "sheared", "mesh": 0, "matrix": [1, 0, 0, 0, 0.5, 2, 0, 0, 0, 0, 1, 0, 7, 8, 9, 1]},
        {"name": "leaf", "mesh": 0}, {"name": "second"}],
        "meshes": [{"name": "quad", "primitives": [{"attributes": {"POSITION": 0}}]}])"));
    EXPECT_EQ(outline(scene()), "arm(leaf sheared(quad)) second");
    const std::array<float, 16> arm = matrixOf(node({"(none)", "arm"}));
    const std::array<float, 16> wanted = {0, 2, 0, 0, -3, 0, 0, 0, 0, 0, 4, 0, 1, 2, 3, 1};
    for (std::size_t i = 0; i < wanted.size(); ++i)
        EXPECT_NEAR(arm[i], wanted[i], 1e-6) << i;
    EXPECT_THAT(matrixOf(node({"(none)", "arm", "sheared"})),
                ElementsAre(1, 0, 0, 0, 0.5f, 2, 0, 0, 0, 0, 1, 0, 7, 8, 9, 1));
}

TEST_F(GltfReaderTest, AMeshOfSeveralNodesIsOneSharedCore)
{
    ASSERT_TRUE(readDocument(R"("nodes": [{"mesh": 0}, {"mesh": 0, "translation": [5, 0, 0]}, {"mesh": 1}],
        "meshes": [{"primitives": [{"attributes": {"POSITION": 0}}]},
                   {"primitives": [{"attributes": {"POSITION": 0}}]}])"));
    const osg::GeometryPtr first = geometry(scene()->getChild(0));
    EXPECT_TRUE(geometry(scene()->getChild(1)->getChild(0)) == first);
    EXPECT_EQ(first->getRefCount(), 2u);
    EXPECT_FALSE(geometry(scene()->getChild(2)) == first);
}

TEST_F(GltfReaderTest, AMeshOfSeveralPrimitivesBecomesANodeWithChildren)
{
    ASSERT_TRUE(readDocument(oneNode(R"({"attributes": {"POSITION": 0}, "indices": 4},
        {"attributes": {"POSITION": 0}, "indices": 7})")));
    EXPECT_EQ(outline(scene()), "square(quad quad)");
    EXPECT_THAT(list(mesh(scene()->getChild(0)->getChild(1)).triangles), ElementsAre(3u, 2u, 1u));
}

TEST_F(GltfReaderTest, OnlyTheDefaultSceneIsRead)
{
    const auto result = readDocument(R"("scene": 1, "scenes": [{"nodes": [0]}, {"name": "chosen", "nodes": [1]}],
        "nodes": [{"name": "a", "mesh": 0}, {"name": "b", "mesh": 0}],
        "meshes": [{"primitives": [{"attributes": {"POSITION": 0}}]}])");
    EXPECT_EQ(outline(root()), "chosen(b)");
    EXPECT_THAT(texts(result.warnings),
                ElementsAre(QStringLiteral("only the default one of 2 scenes was imported @ ")));
}

/// The material of the one geometry of a document with this material.
class GltfMaterialTest : public GltfReaderTest
{
protected:
    osg::SimpleMaterialPtr materialOf(const QByteArray& json)
    {
        EXPECT_TRUE(readDocument(oneNode(R"({"attributes": {"POSITION": 0}, "material": 0})") + R"(, "materials": [)" +
                                 json + "]"));
        return material(scene()->getChild(0));
    }

    static void expectColor(const Color3f& color, double red, double green, double blue)
    {
        EXPECT_NEAR(color.red, red, 1e-5);
        EXPECT_NEAR(color.green, green, 1e-5);
        EXPECT_NEAR(color.blue, blue, 1e-5);
    }
};

TEST_F(GltfMaterialTest, LinearFactorsBecomeDisplayColours)
{
    const auto look = materialOf(R"({"name": "Stahl 钢", "emissiveFactor": [0.2, 0.1, 0.8],
        "pbrMetallicRoughness": {"baseColorFactor": [0.5, 0.25, 0.04, 0.3], "metallicFactor": 0,
                                 "roughnessFactor": 0.5}})");
    EXPECT_EQ(nameOf(look), "Stahl 钢");
    expectColor(look->getDiffuse(), 0.735357, 0.537099, 0.220916);
    expectColor(look->getEmission(), 0.484529, 0.349190, 0.906332);
    expectColor(look->getSpecular(), 0.220916, 0.220916, 0.220916);
    EXPECT_NEAR(look->getShininess(), 30, 1e-4); // 2 / 0.5^4 - 2
    EXPECT_EQ(look->getTransparency(), 0);       // the mode is OPAQUE
}

TEST_F(GltfMaterialTest, MetalReflectsItsBaseColour)
{
    const auto look = materialOf(R"({"pbrMetallicRoughness": {"baseColorFactor": [0.5, 0.25, 0.04, 1]}})");
    expectColor(look->getDiffuse(), 0.735357, 0.537099, 0.220916);
    expectColor(look->getSpecular(), 0.735357, 0.537099, 0.220916);
    EXPECT_EQ(look->getShininess(), 0); // the roughness is 1
}

TEST_F(GltfMaterialTest, AlphaCountsAsTheModeSays)
{
    const QByteArray base = R"("pbrMetallicRoughness": {"baseColorFactor": [1, 1, 1, 0.25], "roughnessFactor": 0})";
    EXPECT_EQ(materialOf(R"({"alphaMode": "BLEND", )" + base + "}")->getTransparency(), 0.75f);
    EXPECT_EQ(materialOf(R"({"alphaMode": "MASK", )" + base + "}")->getTransparency(), 1);
    EXPECT_EQ(materialOf(R"({"alphaMode": "MASK", "alphaCutoff": 0.25, )" + base + "}")->getTransparency(), 0);
    EXPECT_EQ(materialOf("{" + base + "}")->getShininess(), 1e6f);
}

TEST_F(GltfMaterialTest, TheOlderExtensionOfSpecularColoursIsRead)
{
    const auto look = materialOf(R"({"extensions": {"KHR_materials_pbrSpecularGlossiness": {
        "diffuseFactor": [0.5, 0.25, 0.04, 1], "specularFactor": [0.2, 0.1, 0.8], "glossinessFactor": 0.5}}})");
    expectColor(look->getDiffuse(), 0.735357, 0.537099, 0.220916);
    expectColor(look->getSpecular(), 0.484529, 0.349190, 0.906332);
    EXPECT_NEAR(look->getShininess(), 30, 1e-4);
}

TEST_F(GltfReaderTest, ExtensionsOfMaterialsMayBeRequired)
{
    EXPECT_EQ(errorOfDocument(oneNode(R"({"attributes": {"POSITION": 0}})") +
                              R"(, "extensionsRequired": ["KHR_materials_unlit"])"),
              QStringLiteral("none"));
}

TEST_F(GltfReaderTest, WhatIsNotReadIsToldOf)
{
    const auto result = readDocument(oneNode(R"({"attributes": {"POSITION": 0}}, {"attributes": {}})") + R"(,
        "textures": [{}, {}], "images": [{"uri": "data:image/webp;base64,AAAA"}], "animations": [{}])");
    EXPECT_TRUE(result);
    EXPECT_THAT(texts(result.warnings),
                ElementsAre(QStringLiteral("1 animations were left out @ "),
                            QStringLiteral("a primitive without positions was left out @ /meshes/0/primitives/1")));
}

TEST_F(GltfReaderTest, ABinaryFileBringsItsBytesAlong)
{
    const QByteArray buffer = R"({"byteLength": 192})";
    ASSERT_TRUE(read(write(
        QString::fromUtf8("würfel 立方.glb"),
        glbOf(document(oneNode(R"({"attributes": {"POSITION": 0}, "indices": 7})"), buffer), squareBytes().all()))));
    EXPECT_EQ(mesh(scene()->getChild(0)).positions[1], (Vec3f{1, 0, 0.5f}));
    EXPECT_THAT(list(mesh(scene()->getChild(0)).triangles), ElementsAre(3u, 2u, 1u));
}

TEST_F(GltfReaderTest, ABufferBesideTheFileIsFoundByItsEncodedName)
{
    write(QString::fromUtf8("daten/größe 1.bin"), squareBytes().all());
    const QByteArray buffer = R"({"byteLength": 192, "uri": "daten/gr%C3%B6%C3%9Fe%201.bin"})";
    ASSERT_TRUE(
        read(write(QStringLiteral("beside.gltf"), document(oneNode(R"({"attributes": {"POSITION": 0}})"), buffer))));
    EXPECT_EQ(mesh(scene()->getChild(0)).positions[3], (Vec3f{0, 1, 0.5f}));
}

TEST_F(GltfReaderTest, AChainOfThousandsOfNodesIsBuiltWithinTheLimit)
{
    QByteArray nodes = R"("nodes": [)";
    for (int i = 0; i < 5000; ++i)
        nodes += R"({"children": [)" + QByteArray::number(i + 1) + "]},";
    nodes += R"({"mesh": 0}], "meshes": [{"primitives": [{"attributes": {"POSITION": 0}}]}])";
    EXPECT_EQ(errorOfDocument(nodes), QStringLiteral("none"));
    ReadOptions options;
    options.limits.maxDepth = 100;
    EXPECT_EQ(errorOfDocument(nodes, options),
              QStringLiteral("LimitExceeded square.gltf: the tree is deeper than 100 (/nodes/98)"));
}

TEST_F(GltfReaderTest, LimitsOfTheOptionsAreKept)
{
    const QByteArray members = R"("nodes": [{"mesh": 0}, {"mesh": 0}, {"mesh": 0}],
        "meshes": [{"primitives": [{"attributes": {"POSITION": 0, "NORMAL": 1}}]}])";
    ReadOptions options;
    options.limits.maxVertices = 7;
    EXPECT_EQ(errorOfDocument(members, options),
              QStringLiteral("LimitExceeded square.gltf: more than 7 vertices (/accessors/1)"));
    options.limits = {};
    options.limits.maxNodes = 5;
    EXPECT_EQ(errorOfDocument(members, options), QStringLiteral("LimitExceeded square.gltf: more than 5 nodes"));
}

} // namespace
