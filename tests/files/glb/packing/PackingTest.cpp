#include "files/glb/packing/Packing.h"

#include "files/glb/packing/VertexStreams.h"
#include "tests/files/glb/GlbTest.h"
#include "tests/files/glb/SeenTree.h"
#include "tests/support/BuiltInReading.h"

#include "host/OSGSystem/Geometry.h"
#include "scene/MatrixMath.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <random>
#include <string>
#include <vector>

namespace
{

/// Writes trees packed, and reads them again.
class PackingTest : public GlbTest
{
protected:
    PackingTest() { options.packing = {true, 0.05, 8, true, true, true}; }

    /// A wavy plate of `size` millimetres with (side + 1)^2 vertices and normals.
    static osg::Mesh plate(unsigned side, float size, float away = 0)
    {
        std::vector<osg::Vec3f> positions;
        std::vector<osg::Vec3f> normals;
        std::vector<std::uint32_t> triangles;
        for (unsigned row = 0; row <= side; ++row)
            for (unsigned column = 0; column <= side; ++column) {
                const float x = float(column) / float(side), y = float(row) / float(side);
                positions.push_back({x * size + away, y * size, std::sin(x * 6) * std::sin(y * 5) * size / 9});
                normals.push_back({std::cos(x * 6) * 0.3f, std::cos(y * 5) * 0.3f, 0.9f});
            }
        for (std::uint32_t row = 0; row < side; ++row)
            for (std::uint32_t column = 0; column < side; ++column) {
                const std::uint32_t a = row * (side + 1) + column, b = a + side + 1;
                triangles.insert(triangles.end(), {a, a + 1, b + 1, a, b + 1, b});
            }
        osg::Mesh mesh;
        mesh.positions = positions;
        mesh.normals = normals;
        mesh.triangles = triangles;
        return mesh;
    }

    SeenTree readAgain() const
    {
        SeenTree seen;
        const files::ReadResult read = ::readScene(pathOf(QString::fromUtf8("Größe 大小.glb")), {});
        EXPECT_TRUE(read) << (read ? "" : read.error().toString().toStdString());
        if (read) {
            const osg::RefPtr<osg::NodePtr> kept(read.value());
            seen.look(read.value());
        }
        return seen;
    }

    osg::NodePtr at(const std::string& name, float x, const osg::GeometryPtr& geometry)
    {
        const osg::NodePtr node = add(files::makeTransform(name, osg::translationMatrix({x, 20, 30})));
        osg::addChild(node, files::makeNode(name + " body", geometry));
        return node;
    }
};

TEST_F(PackingTest, PackedFilesGiveTheSameTrianglesBoxAndNamesWithinTheError)
{
    const osg::GeometryPtr shared = geometry("plate", plate(20, 200));
    at("left", 0, shared);
    at("right", 500, shared);
    const GlbFile file = written();
    EXPECT_EQ(file.json["extensionsRequired"],
              nlohmann::json::parse(R"(["KHR_mesh_quantization", "EXT_meshopt_compression"])"));
    EXPECT_GT(result->error, 0.04);
    EXPECT_LE(result->error, 0.05);
    const SeenTree seen = readAgain();
    EXPECT_EQ(seen.triangles, 1600u);
    EXPECT_NEAR(seen.least.x, 0, 0.0501);
    EXPECT_NEAR(seen.most.x, 700, 0.0501);
    EXPECT_NEAR(seen.least.y, 20, 0.0501);
    EXPECT_NEAR(seen.most.y, 220, 0.0501);
    for (const char* name : {"left", "right"})
        EXPECT_TRUE(seen.names.contains(QString::fromLatin1(name))) << name;
}

TEST_F(PackingTest, PackedFilesAreSmallerThanAQuarter)
{
    at("left", 0, geometry("plate", plate(100, 200)));
    options.packing = {};
    const qint64 plain = written().size();
    options.packing = {true, 0.05, 8, true, true, true};
    EXPECT_LT(written().size() * 4, plain);
}

TEST_F(PackingTest, NodesKeepTheirTransformsAndMeshesHangBelow)
{
    at("left", 7, geometry("plate", plate(3, 200)));
    options.fold = true;
    const GlbFile file = written();
    const nlohmann::json& nodes = file.json["nodes"];
    ASSERT_EQ(nodes.size(), 3u);
    EXPECT_EQ(nodes[1]["name"], "left");
    EXPECT_FALSE(nodes[1].contains("mesh"));
    EXPECT_EQ(nodes[1]["matrix"][12], 7);
    EXPECT_EQ(nodes[1]["children"], nlohmann::json::parse("[2]"));
    EXPECT_EQ(nodes[2]["mesh"], 0);
    EXPECT_EQ(nodes[2]["scale"][0], nodes[2]["scale"][2]);
    EXPECT_NEAR(nodes[2]["scale"][0].get<double>(), 0.057, 1e-9);
}

TEST_F(PackingTest, NodesTakeTheGridThemselvesWhereTheirPlaceStays)
{
    options.fold = true;
    for (const float away : {0.0f, 1e5f}) {
        const osg::NodePtr node =
            add(files::makeTransform(away > 0 ? "far" : "near", osg::translationMatrix({7, 8, 9})));
        osg::addChild(node, files::makeNode("", geometry("plate", plate(3, 200, away))));
    }
    const GlbFile file = written();
    const nlohmann::json& nodes = file.json["nodes"];
    ASSERT_EQ(nodes.size(), 4u);
    EXPECT_EQ(nodes[1]["name"], "near");
    EXPECT_TRUE(nodes[1].contains("mesh"));
    EXPECT_NEAR(nodes[1]["matrix"][0].get<double>(), 0.057, 1e-9);
    EXPECT_EQ(nodes[1]["matrix"][13], 8);
    EXPECT_EQ(nodes[2]["name"], "far");
    EXPECT_EQ(nodes[2]["matrix"][0], 1);
    EXPECT_EQ(nodes[2]["children"], nlohmann::json::parse("[3]"));
    EXPECT_TRUE(nodes[3].contains("mesh"));
    const SeenTree seen = readAgain();
    EXPECT_NEAR(seen.most.x, 1e5 + 207, 0.06);
    EXPECT_NEAR(seen.least.x, 7, 0.06);
}

TEST_F(PackingTest, EnlargedMeshesHaveAFinerGrid)
{
    const osg::NodePtr node = add(files::makeTransform("large", osg::scaleMatrix({4, 4, 4})));
    osg::addChild(node, files::makeNode("body", geometry("plate", plate(3, 100))));
    written();
    EXPECT_LE(result->error, 0.05);
    EXPECT_NEAR(readAgain().most.x, 400, 0.0501);
}

TEST_F(PackingTest, SmallScenesKeepTheirForm)
{
    at("tiny", 0, geometry("plate", plate(10, 0.5f)));
    written();
    EXPECT_LT(result->error, 0.0003);
    EXPECT_NEAR(readAgain().most.x, 0.5, 0.0003);
}

TEST_F(PackingTest, MeshesFarFromTheirOriginComeBackToTheirPlace)
{
    at("far", 0, geometry("plate", plate(10, 200, 9e5f)));
    const GlbFile file = written();
    EXPECT_LE(result->error, 0.05);
    EXPECT_NEAR(readAgain().most.x, 900200, 0.2); // floats have no more digits there
}

TEST_F(PackingTest, StepsStandForThemselves)
{
    at("left", 0, geometry("plate", plate(20, 200)));
    for (int step = 0; step < 5; ++step) {
        files::glb::PackOptions packing;
        packing.quantize = step == 0;
        packing.normalBits = step == 1 ? 10 : 0;
        packing.weld = step == 2;
        packing.reorder = step == 3;
        packing.compress = step == 4;
        options.packing = packing;
        const GlbFile file = written();
        EXPECT_EQ(file.json.contains("extensionsRequired"), step != 2 && step != 3) << step;
        EXPECT_EQ(result->error > 0, step == 0) << step;
        const SeenTree seen = readAgain();
        EXPECT_EQ(seen.triangles, 800u) << step;
        EXPECT_NEAR(seen.most.x, 200, step == 0 ? 0.0501 : 1e-5) << step;
    }
}

TEST_F(PackingTest, LinesAndPointsArePackedWithTheirTriangles)
{
    osg::Mesh mesh = plate(2, 100);
    mesh.lines = std::vector<std::uint32_t>{0, 1, 1, 2};
    mesh.points = std::vector<std::uint32_t>{8};
    at("mixed", 0, geometry("plate", mesh));
    const GlbFile file = written();
    ASSERT_EQ(file.json["meshes"][0]["primitives"].size(), 3u);
    EXPECT_EQ(file.primitive(0, 0)["attributes"], file.primitive(0, 2)["attributes"]);
    EXPECT_EQ(file.json["accessors"][file.primitive(0, 1)["indices"].get<std::size_t>()]["count"], 4);
    EXPECT_EQ(readAgain().triangles, 8u);
}

TEST_F(PackingTest, EqualVerticesAreWeldedInPlainFiles)
{
    osg::Mesh mesh;
    mesh.positions =
        std::vector<osg::Vec3f>{{1, 2, 3}, {5, 2, 3}, {5, 8, 3}, {1, 2, 3}, {5, 8, 3}, {1, 8, 3}, {90, 90, 90}};
    mesh.triangles = std::vector<std::uint32_t>{0, 1, 2, 3, 4, 5};
    at("soup", 0, geometry("soup", mesh));
    options.packing = {};
    options.packing.weld = true;
    const GlbFile file = written();
    EXPECT_EQ(file.array<float>(0).size(), 12u);
    EXPECT_EQ(file.array<std::uint16_t>(1), (std::vector<std::uint16_t>{0, 1, 2, 0, 2, 3}));
    EXPECT_FALSE(file.json.contains("extensionsUsed"));
    // Of those that are left: the last one is in no triangle.
    EXPECT_EQ(file.json["accessors"][0].value("min", nlohmann::json()), nlohmann::json::parse("[1.0, 2.0, 3.0]"));
    EXPECT_EQ(file.json["accessors"][0].value("max", nlohmann::json()), nlohmann::json::parse("[5.0, 8.0, 3.0]"));
}

TEST_F(PackingTest, EmptyScenesStayAsTheyAre)
{
    const GlbFile file = written();
    EXPECT_FALSE(file.json.contains("extensionsRequired"));
    EXPECT_EQ(result->error, 0);
}

/// Processor seconds to pack the file of a plate.
double secondsFor(unsigned side)
{
    using namespace files::glb::packing;
    const std::size_t count = std::size_t(side) * side;
    PackedFile file;
    std::mt19937 random(5);
    std::uniform_real_distribution<float> noise(-0.2f, 0.2f);
    std::vector<float> positions;
    std::vector<std::uint32_t> indices;
    for (std::uint32_t row = 0; row < side; ++row)
        for (std::uint32_t column = 0; column < side; ++column) {
            positions.insert(positions.end(), {float(column), float(row), noise(random)});
            const std::uint32_t a = row * side + column, b = a + side;
            if (row + 1 < side && column + 1 < side)
                indices.insert(indices.end(), {a, a + 1, b + 1, a, b + 1, b});
        }
    const std::size_t size = positions.size() * 4;
    file.binary.resize(size * 2 + indices.size() * 4);
    std::memcpy(file.binary.data(), positions.data(), size);
    std::memcpy(file.binary.data() + size, positions.data(), size);
    std::memcpy(file.binary.data() + size * 2, indices.data(), indices.size() * 4);
    file.bufferViews = {{{"byteOffset", 0}}, {{"byteOffset", size}}, {{"byteOffset", size * 2}}};
    file.accessors = {
        {{"bufferView", 0}, {"count", count}, {"type", "VEC3"}, {"min", {0, 0, -0.2}}, {"max", {side, side, 0.2}}},
        {{"bufferView", 1}, {"count", count}, {"type", "VEC3"}},
        {{"bufferView", 2}, {"count", indices.size()}, {"componentType", 5125}}};
    file.meshes = nlohmann::json::parse(
        R"([{"primitives": [{"attributes": {"POSITION": 0, "NORMAL": 1}, "indices": 2, "mode": 4}]}])");
    file.nodes = nlohmann::json::parse(R"([{"mesh": 0}])");
    const std::clock_t start = std::clock();
    pack(file, {true, 0.05, 8, true, true, true}, 1);
    return double(std::clock() - start) / CLOCKS_PER_SEC;
}

/// Over two doublings, and by the median of runs in turns: what else the machine does may double the time of one run.
TEST(PackingTime, TwiceTheVerticesTakeTwiceTheTime)
{
    std::vector<double> ratios;
    for (int run = 0; run < 5; ++run) {
        const double once = secondsFor(300);
        ratios.push_back(secondsFor(600) / once);
    }
    std::sort(ratios.begin(), ratios.end());
    RecordProperty("ratio", std::to_string(ratios[ratios.size() / 2]));
    EXPECT_LT(ratios[ratios.size() / 2], 2.3 * 2.3);
}

} // namespace
