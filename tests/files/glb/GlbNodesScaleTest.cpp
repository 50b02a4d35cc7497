// Files whose transforms have no scale look as those do that have one at the top.

#include "scene/MatrixMath.h"
#include "tests/files/glb/GlbTest.h"
#include "tests/support/BuiltInReading.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace
{

using nlohmann::json;
using Box = std::array<double, 6>; ///< least and most of each axis

osg::Matrix matrixOf(const json& node)
{
    osg::Matrix matrix;
    if (node.contains("matrix"))
        matrix.values = node["matrix"].get<std::array<float, 16>>();
    const auto three = [&](const char* name, float otherwise) {
        return node.value(name, std::array<float, 3>{otherwise, otherwise, otherwise});
    };
    if (node.contains("scale")) {
        const auto at = three("translation", 0);
        const auto size = three("scale", 1);
        const auto turn = node.value("rotation", std::array<float, 4>{0, 0, 0, 1});
        matrix = osg::composed(
            {{at[0], at[1], at[2]}, {turn[0], turn[1], turn[2], turn[3]}, {size[0], size[1], size[2]}, {}});
    }
    return matrix;
}

class GlbNodesScaleTest : public GlbTest
{
protected:
    GlbNodesScaleTest()
    {
        osg::Mesh mesh = triangle();
        mesh.normals = std::vector<osg::Vec3f>{{0.6f, 0.8f, 0}, {0, 1, 0}, {0, 0, 1}};
        const osg::GeometryPtr part = geometry("part", mesh);
        place("left", part, {{70, 80, 90}, {0.5f, 0.5f, 0.5f, 0.5f}, {1, 1, 1}, {}});
        place("right", part, {{-70, 80, 90}, {}, {1, 1, 1}, {}});
        place("inches", part, {{10, 20, 30}, {0, 0, 1, 0}, {25.4f, 25.4f, 25.4f}, {}});
        place("stretched", part, {{1, 2, 3}, {}, {1, 1, 3}, {}});
        place("mirrored", part, {{1, 2, 3}, {}, {-1, 1, 1}, {}});
    }
    void place(const char* name, const osg::GeometryPtr& part, const osg::Components& parts)
    {
        osg::addChild(add(files::makeTransform(name, osg::composed(parts))), files::makeNode("", part));
    }

    GlbFile writtenWith(bool scaleIntoVertices)
    {
        options.fold = true;
        options.scaleIntoVertices = scaleIntoVertices;
        return written();
    }

    static void grow(const GlbFile& file, const json& node, const osg::Matrix& above, Box& box)
    {
        const osg::Matrix here = above * matrixOf(node);
        if (node.contains("mesh")) {
            const json& primitive = file.primitive(node["mesh"].get<std::size_t>());
            const auto numbers = file.array<float>(primitive["attributes"]["POSITION"].get<std::size_t>());
            for (std::size_t i = 0; i < numbers.size(); i += 3)
                for (int axis = 0; axis < 3; ++axis) {
                    const double at = double(here[axis]) * numbers[i] + double(here[axis + 4]) * numbers[i + 1] +
                                      double(here[axis + 8]) * numbers[i + 2] + here[axis + 12];
                    box[axis] = std::min(box[axis], at);
                    box[axis + 3] = std::max(box[axis + 3], at);
                }
        }
        for (const json& child : node.value("children", json::array()))
            grow(file, file.json["nodes"][child.get<std::size_t>()], here, box);
    }
    static Box boxOf(const GlbFile& file, const json& node)
    {
        Box box{1e9, 1e9, 1e9, -1e9, -1e9, -1e9};
        grow(file, node, matrixOf(file.json["nodes"][0]), box);
        return box;
    }
};

TEST_F(GlbNodesScaleTest, EachPartIsWhereItWasAndAsLarge)
{
    const GlbFile scaled = writtenWith(true);
    const GlbFile plain = writtenWith(false);
    ASSERT_EQ(scaled.json["nodes"].size(), plain.json["nodes"].size());
    for (std::size_t node = 1; node < plain.json["nodes"].size(); ++node) {
        const Box expected = boxOf(plain, plain.json["nodes"][node]);
        const Box box = boxOf(scaled, scaled.json["nodes"][node]);
        for (std::size_t i = 0; i < box.size(); ++i)
            EXPECT_NEAR(box[i], expected[i], 1e-7) << plain.json["nodes"][node]["name"] << ' ' << i;
    }
}

TEST_F(GlbNodesScaleTest, OnlyStretchesAreScales)
{
    const GlbFile file = writtenWith(true);
    ASSERT_EQ(file.json["nodes"].size(), 6u);
    for (const json& node : file.json["nodes"]) {
        const osg::Matrix matrix = matrixOf(node);
        for (const int axis : {0, 4, 8}) {
            const double expected = axis == 8 && node["name"] == "stretched" ? 3 : 1;
            EXPECT_NEAR(std::hypot(matrix[axis], matrix[axis + 1], matrix[axis + 2]), expected, 1e-5) << node;
        }
    }
}

TEST_F(GlbNodesScaleTest, AMeshIsWrittenOnceForEachSize)
{
    const GlbFile file = writtenWith(true);
    ASSERT_EQ(file.json["meshes"].size(), 2u);
    EXPECT_EQ(file.json["nodes"][1]["mesh"], file.json["nodes"][2]["mesh"]);
    EXPECT_NE(file.json["nodes"][1]["mesh"], file.json["nodes"][3]["mesh"]);
    EXPECT_EQ(file.primitive(0)["attributes"]["NORMAL"], file.primitive(1)["attributes"]["NORMAL"]);
    EXPECT_EQ(file.primitive(0)["indices"], file.primitive(1)["indices"]);
    const json& bounds = file.json["accessors"][file.primitive(0)["attributes"]["POSITION"].get<std::size_t>()];
    EXPECT_FLOAT_EQ(bounds["max"][1].get<float>(), 0.008f);
}

TEST_F(GlbNodesScaleTest, NormalsStay)
{
    const GlbFile file = writtenWith(true);
    EXPECT_EQ(file.array<float>(file.primitive(0)["attributes"]["NORMAL"].get<std::size_t>()),
              (std::vector<float>{0.6f, 0.8f, 0, 0, 1, 0, 0, 0, 1}));
}

TEST_F(GlbNodesScaleTest, TheSameTreeGivesTheSameBytesAndSoDoesARound)
{
    const QByteArray bytes = writtenWith(true).bytes();
    EXPECT_EQ(writtenWith(true).bytes(), bytes);
    const files::ReadResult read = readScene(pathOf(QString::fromUtf8("Größe 大小.glb")));
    ASSERT_TRUE(read);
    const osg::RefPtr<osg::NodePtr> tree(read.value());
    const QString again = pathOf(QStringLiteral("again.glb"));
    ASSERT_TRUE(files::glb::write(tree.get(), again, options));
    EXPECT_EQ(GlbFile(again).bytes(), bytes);
}

TEST_F(GlbNodesScaleTest, AnotherUnitIsThatOfTheVertices)
{
    options.millimetresPerUnit = 10;
    const GlbFile file = writtenWith(true);
    const json& bounds = file.json["accessors"][file.primitive(0)["attributes"]["POSITION"].get<std::size_t>()];
    EXPECT_FLOAT_EQ(bounds["max"][1].get<float>(), 0.8f);
    EXPECT_FLOAT_EQ(file.json["nodes"][1]["matrix"][12].get<float>(), 7);
}

} // namespace
