#include "tests/files/glb/GlbTest.h"
#include "tests/support/BuiltInReading.h"

#include <gmock/gmock.h>

namespace
{

using nlohmann::json;

class GlbEdgesTest : public GlbTest
{
protected:
    GlbEdgesTest() { options.edges = true; }

    /// Two squares that meet at a right angle, a face each, the second of two triangles with vertices of their own.
    static osg::Mesh angle()
    {
        osg::Mesh mesh;
        mesh.positions = std::vector<osg::Vec3f>{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0},
                                                 {0, 0, 0}, {1, 0, 0}, {1, 0, 1}, {0, 0, 1}};
        mesh.triangles = std::vector<std::uint32_t>{0, 1, 2, 0, 2, 3, 5, 4, 6, 6, 4, 7};
        mesh.faces = std::vector<osg::FaceRange>{{0, 2}, {2, 2}};
        return mesh;
    }
};

TEST_F(GlbEdgesTest, LinesOverTheSameVerticesTellTheirFaces)
{
    add(files::makeNode("part", geometry("part", angle())));
    const GlbFile file = written();
    ASSERT_EQ(file.json["meshes"][0]["primitives"].size(), 2u);
    const json& triangles = file.primitive(0, 0);
    const json& lines = file.primitive(0, 1);
    EXPECT_EQ(lines["mode"], 1);
    EXPECT_EQ(lines["attributes"], triangles["attributes"]);
    EXPECT_EQ(triangles["extras"]["faces"], json({2, 2}));
    EXPECT_EQ(lines["extras"]["edges"], json::parse("[[1, 0, 1], [3, 0, -1], [3, 1, -1]]"));
    const std::vector<std::uint16_t> indices = file.array<std::uint16_t>(lines["indices"].get<std::size_t>());
    ASSERT_EQ(indices.size(), 14u);
    EXPECT_EQ(std::set<int>({indices[0] % 4, indices[1] % 4}), std::set<int>({0, 1})) << "where the squares meet";
    const json& material = file.json["materials"][lines["material"].get<std::size_t>()];
    EXPECT_EQ(material["name"], "edges");
    EXPECT_TRUE(material["extensions"].contains("KHR_materials_unlit"));
}

TEST_F(GlbEdgesTest, WithoutFacesTheTrianglesTellNone)
{
    osg::Mesh mesh = angle();
    mesh.faces = {};
    add(files::makeNode("part", geometry("part", mesh)));
    const GlbFile file = written();
    EXPECT_FALSE(file.primitive(0, 0).contains("extras"));
    for (const json& edge : file.primitive(0, 1)["extras"]["edges"])
        EXPECT_EQ(edge[1], -1);
}

TEST_F(GlbEdgesTest, OnlyTheSettingMakesThem)
{
    options.edges = false;
    add(files::makeNode("part", geometry("part", angle())));
    const GlbFile file = written();
    EXPECT_EQ(file.json["meshes"][0]["primitives"].size(), 1u);
    EXPECT_FALSE(file.primitive(0, 0).contains("extras"));
}

TEST_F(GlbEdgesTest, TheyComeBackAsLinesAndOutlivePacking)
{
    for (const bool packs : {false, true}) {
        options.packing.quantize = options.packing.weld = options.packing.reorder = options.packing.compress = packs;
        root = files::makeGroup("Root");
        add(files::makeNode("part", geometry("part", angle())));
        const GlbFile file = written();
        EXPECT_EQ(file.primitive(0, 1)["extras"]["edges"].size(), 3u);
        EXPECT_EQ(file.primitive(0, 0).contains("extras"), !packs) << "its triangles are in another order";
        const files::ReadResult read = readScene(pathOf(QString::fromUtf8("Größe 大小.glb")));
        ASSERT_TRUE(read);
        const osg::RefPtr<osg::NodePtr> tree(read.value());
        std::size_t lines = 0;
        std::vector<osg::NodePtr> nodes{tree.get()};
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            if (const auto core = osg::fcCast<osg::Geometry>(nodes[i]->getCore()))
                lines += osg::GeometryAccess::mesh(*core).lines.size() / 2;
            for (unsigned child = 0; child < nodes[i]->getNChildren(); ++child)
                nodes.push_back(nodes[i]->getChild(child));
        }
        EXPECT_EQ(lines, 7u);
    }
}

} // namespace
