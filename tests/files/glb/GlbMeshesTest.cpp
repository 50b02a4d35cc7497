#include "files/glb/GlbMeshes.h"

#include "tests/files/glb/GlbTest.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace
{

using nlohmann::json;
using osg::Color4f;
using osg::Vec2f;
using osg::Vec3f;
using testing::ElementsAre;
using testing::FloatNear;
using testing::Pointwise;

class GlbMeshesTest : public GlbTest
{
protected:
    GlbFile writtenMesh(const osg::Mesh& mesh, const osg::MaterialPtr& material = {})
    {
        add(files::makeNode("Part", geometry("Shape", mesh, material)));
        return written();
    }
};

TEST_F(GlbMeshesTest, PositionsStayInMillimetresAndHaveBounds)
{
    const GlbFile file = writtenMesh(triangle());
    EXPECT_EQ(file.json["meshes"][0]["name"], "Shape");
    const json& accessor = file.json["accessors"][file.primitive(0)["attributes"]["POSITION"].get<std::size_t>()];
    EXPECT_EQ(accessor["componentType"], 5126);
    EXPECT_EQ(accessor["type"], "VEC3");
    EXPECT_EQ(accessor["count"], 3);
    EXPECT_EQ(accessor["min"], json::parse("[1.0, 2.0, 3.0]"));
    EXPECT_EQ(accessor["max"], json::parse("[5.0, 8.0, 3.5]"));
    EXPECT_THAT(file.array<float>(file.primitive(0)["attributes"]["POSITION"]),
                ElementsAre(1, 2, 3, 5, 2, 3, 1, 8, 3.5f));
}

TEST_F(GlbMeshesTest, IndicesAreShortWhereTheyCanBe)
{
    const GlbFile file = writtenMesh(triangle());
    const json& accessor = file.json["accessors"][file.primitive(0)["indices"].get<std::size_t>()];
    EXPECT_EQ(accessor["componentType"], 5123);
    EXPECT_EQ(accessor["type"], "SCALAR");
    EXPECT_EQ(accessor["count"], 3);
    EXPECT_THAT(file.array<std::uint16_t>(file.primitive(0)["indices"]), ElementsAre(0, 1, 2));
}

TEST_F(GlbMeshesTest, IndicesIntoManyVerticesAreLong)
{
    for (const std::size_t count : {65535u, 65536u}) {
        osg::Mesh mesh;
        mesh.positions = std::vector<Vec3f>(count, Vec3f{1, 2, 3});
        const auto last = static_cast<std::uint32_t>(count - 1);
        mesh.triangles = std::vector<std::uint32_t>{last, 0, 1};
        add(files::makeNode("", geometry("", mesh)));
    }
    const GlbFile file = written();
    EXPECT_EQ(file.json["accessors"][file.primitive(0)["indices"].get<std::size_t>()]["componentType"], 5123);
    EXPECT_THAT(file.array<std::uint16_t>(file.primitive(0)["indices"]), ElementsAre(65534, 0, 1));
    EXPECT_EQ(file.json["accessors"][file.primitive(1)["indices"].get<std::size_t>()]["componentType"], 5125);
    EXPECT_THAT(file.array<std::uint32_t>(file.primitive(1)["indices"]), ElementsAre(65535u, 0u, 1u));
}

TEST_F(GlbMeshesTest, ArraysLongerThanABlockArriveWhole)
{
    std::vector<Vec3f> positions;
    for (int i = 0; i < 50'000; ++i)
        positions.push_back({float(i), float(-i), 0.5f * float(i)});
    osg::Mesh mesh;
    mesh.positions = positions;
    mesh.triangles = std::vector<std::uint32_t>{0, 1, 49'999};
    const GlbFile file = writtenMesh(mesh);
    const std::vector<float> numbers = file.array<float>(0);
    ASSERT_EQ(numbers.size(), 150'000u);
    for (std::size_t i = 0; i < positions.size(); ++i)
        ASSERT_EQ((Vec3f{numbers[i * 3], numbers[i * 3 + 1], numbers[i * 3 + 2]}), positions[i]) << i;
}

TEST_F(GlbMeshesTest, NormalsBecomeUnitVectors)
{
    osg::Mesh mesh = triangle();
    mesh.normals = std::vector<Vec3f>{{0, 3, 4}, {0, 0, 0}, {std::nanf(""), 0, 1}};
    const GlbFile file = writtenMesh(mesh);
    EXPECT_THAT(file.array<float>(file.primitive(0)["attributes"]["NORMAL"]),
                ElementsAre(0, 0.6f, 0.8f, 0, 0, 1, 0, 0, 1));
}

TEST_F(GlbMeshesTest, TextureCoordinatesCountFromTheUpperLeftCorner)
{
    osg::Mesh mesh = triangle();
    mesh.texCoords = std::vector<Vec2f>{{0.25f, 0}, {1, 0.75f}, {2, -1}};
    const GlbFile file = writtenMesh(mesh);
    EXPECT_THAT(file.array<float>(file.primitive(0)["attributes"]["TEXCOORD_0"]),
                ElementsAre(0.25f, 1, 1, 0.25f, 2, 2));
}

TEST_F(GlbMeshesTest, VertexColoursBecomeLinear)
{
    osg::Mesh mesh = triangle();
    mesh.colors = std::vector<Color4f>{{0.5f, 0.25f, 0.125f, 0.75f}, {0.8f, 0, 1, 1}, {2, -1, 0.02f, 3}};
    const GlbFile file = writtenMesh(mesh);
    const std::vector<float> wanted = {0.214041f, 0.050876f, 0.014350f, 0.75f, 0.603827f, 0, 1, 1, 1, 0, 0.001548f, 1};
    EXPECT_THAT(file.array<float>(file.primitive(0)["attributes"]["COLOR_0"]), Pointwise(FloatNear(1e-5f), wanted));
}

TEST_F(GlbMeshesTest, LinesAndPointsArePrimitivesOfTheirOwnModes)
{
    osg::Mesh mesh = triangle();
    mesh.lines = std::vector<std::uint32_t>{0, 2};
    mesh.points = std::vector<std::uint32_t>{1};
    const GlbFile file = writtenMesh(mesh);
    ASSERT_EQ(file.json["meshes"][0]["primitives"].size(), 3u);
    EXPECT_EQ(file.primitive(0, 0)["mode"], 4);
    EXPECT_EQ(file.primitive(0, 1)["mode"], 1);
    EXPECT_THAT(file.array<std::uint16_t>(file.primitive(0, 1)["indices"]), ElementsAre(0, 2));
    EXPECT_EQ(file.primitive(0, 2)["mode"], 0);
    EXPECT_THAT(file.array<std::uint16_t>(file.primitive(0, 2)["indices"]), ElementsAre(1));
    EXPECT_EQ(file.primitive(0, 0)["attributes"], file.primitive(0, 2)["attributes"]);
}

TEST_F(GlbMeshesTest, ASharedCoreIsOneMesh)
{
    const osg::GeometryPtr shared = geometry("Shape", triangle());
    add(files::makeNode("a", shared));
    add(files::makeNode("b", shared));
    add(files::makeNode("c", geometry("Other", triangle())));
    const GlbFile file = written();
    EXPECT_EQ(file.json["meshes"].size(), 2u);
    EXPECT_EQ(file.json["nodes"][1]["mesh"], 0);
    EXPECT_EQ(file.json["nodes"][2]["mesh"], 0);
    EXPECT_EQ(file.json["nodes"][3]["mesh"], 1);
}

TEST_F(GlbMeshesTest, ArraysThatGeometriesShareAreWrittenOnce)
{
    osg::Mesh first = triangle();
    osg::Mesh second = first;
    second.triangles = std::vector<std::uint32_t>{2, 1, 0};
    add(files::makeNode("a", geometry("", first)));
    add(files::makeNode("b", geometry("", second)));
    const GlbFile file = written();
    EXPECT_EQ(file.json["meshes"].size(), 2u);
    EXPECT_EQ(file.primitive(0)["attributes"], file.primitive(1)["attributes"]);
    EXPECT_EQ(file.json["accessors"].size(), 3u);
    EXPECT_EQ(file.json["buffers"], json::parse(R"([{"byteLength": 52}])")); // 36 + 6 and 2 of padding + 6 and 2
}

TEST_F(GlbMeshesTest, ViewsHaveTargetsAndBeginAtMultiplesOfFour)
{
    const GlbFile file = writtenMesh(triangle());
    ASSERT_EQ(file.json["bufferViews"].size(), 2u);
    EXPECT_EQ(file.json["bufferViews"][0],
              json::parse(R"({"buffer": 0, "byteOffset": 0, "byteLength": 36, "target": 34962})"));
    EXPECT_EQ(file.json["bufferViews"][1],
              json::parse(R"({"buffer": 0, "byteOffset": 36, "byteLength": 6, "target": 34963})"));
}

TEST_F(GlbMeshesTest, AGeometryWithoutElementsIsANodeWithoutMesh)
{
    osg::Mesh mesh = triangle();
    mesh.triangles = {};
    const GlbFile file = writtenMesh(mesh);
    EXPECT_EQ(file.json["nodes"][1], json::parse(R"({"name": "Part"})"));
    EXPECT_FALSE(file.json.contains("meshes"));
    EXPECT_FALSE(file.json.contains("buffers"));
    EXPECT_EQ(file.binaryChunk(), file.size());
}

TEST_F(GlbMeshesTest, ElementsWithoutFinitePositionsAreLeftOut)
{
    osg::Mesh mesh;
    mesh.positions =
        std::vector<Vec3f>{{1, 2, 3}, {5, 2, 3}, {1, 8, 3}, {std::numeric_limits<float>::infinity(), 0, 0}};
    mesh.triangles = std::vector<std::uint32_t>{0, 1, 3, 2, 1, 0};
    const GlbFile file = writtenMesh(mesh);
    EXPECT_THAT(file.array<std::uint16_t>(file.primitive(0)["indices"]), ElementsAre(2, 1, 0));
    EXPECT_THAT(warnings(), ElementsAre(QStringLiteral("1 elements of a mesh without finite positions were left out")));
}

class GlbMaterialsTest : public GlbMeshesTest
{
protected:
    json materialOf(const files::MaterialLook& look)
    {
        return writtenMesh(triangle(), files::makeMaterial("Stahl 钢", look)).json["materials"][0];
    }

    static void expectNumbers(const json& list, const std::vector<float>& wanted)
    {
        EXPECT_THAT(list.get<std::vector<float>>(), Pointwise(FloatNear(1e-5f), wanted));
    }
};

TEST_F(GlbMaterialsTest, DisplayColoursBecomeLinearFactors)
{
    files::MaterialLook look;
    look.diffuse = {0.5f, 0.25f, 0.125f};
    look.emission = {0.8f, 0.2f, 0.1f};
    look.shininess = 30;
    const json material = materialOf(look);
    EXPECT_EQ(material["name"], "Stahl 钢");
    expectNumbers(material["pbrMetallicRoughness"]["baseColorFactor"], {0.214041f, 0.050876f, 0.014350f, 1});
    expectNumbers(material["emissiveFactor"], {0.603827f, 0.033105f, 0.010023f});
    EXPECT_EQ(material["pbrMetallicRoughness"]["metallicFactor"], 0);
    EXPECT_FLOAT_EQ(material["pbrMetallicRoughness"]["roughnessFactor"].get<float>(), 0.5f); // (2 / 32)^(1/4)
    EXPECT_EQ(material["doubleSided"], true);
    EXPECT_FALSE(material.contains("alphaMode"));
}

TEST_F(GlbMaterialsTest, TransparencyBecomesAlphaAndItsMode)
{
    files::MaterialLook look;
    look.transparency = 0.25f;
    const json material = materialOf(look);
    EXPECT_EQ(material["alphaMode"], "BLEND");
    EXPECT_FLOAT_EQ(material["pbrMetallicRoughness"]["baseColorFactor"][3].get<float>(), 0.75f);
}

TEST_F(GlbMaterialsTest, ValuesOutOfRangeAreBroughtIntoIt)
{
    files::MaterialLook look;
    look.diffuse = {7, -1, std::nanf("")};
    look.transparency = -3;
    look.shininess = -5;
    const json material = materialOf(look);
    expectNumbers(material["pbrMetallicRoughness"]["baseColorFactor"], {1, 0, 0, 1});
    EXPECT_EQ(material["pbrMetallicRoughness"]["roughnessFactor"], 1);
    EXPECT_FALSE(material.contains("alphaMode"));
}

TEST_F(GlbMaterialsTest, AMaterialIsWrittenOnceAndNoneIsLightGrey)
{
    const osg::SimpleMaterialPtr shared = files::makeMaterial("shared", {});
    add(files::makeNode("a", geometry("", triangle(), shared)));
    add(files::makeNode("b", geometry("", triangle(), shared)));
    add(files::makeNode("c", geometry("", triangle())));
    const GlbFile file = written();
    ASSERT_EQ(file.json["materials"].size(), 2u);
    EXPECT_EQ(file.primitive(0)["material"], file.primitive(1)["material"]);
    const json& none = file.json["materials"][file.primitive(2)["material"].get<std::size_t>()];
    expectNumbers(none["pbrMetallicRoughness"]["baseColorFactor"], {0.603827f, 0.603827f, 0.603827f, 1});
    EXPECT_EQ(none["pbrMetallicRoughness"]["metallicFactor"], 0);
}

} // namespace
