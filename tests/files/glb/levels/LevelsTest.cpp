#include "files/glb/levels/Levels.h"

#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/SwitchMaterial.h"
#include "scene/MatrixMath.h"
#include "scene/VariantTable.h"
#include "tests/files/glb/GlbTest.h"
#include "tests/files/glb/SeenTree.h"
#include "tests/files/glb/levels/LevelShapes.h"
#include "tests/support/BuiltInReading.h"

#include <cmath>

namespace
{

using Json = nlohmann::json;

/// Writes trees with levels, and reads them again.
class LevelsTest : public GlbTest
{
protected:
    osg::NodePtr at(const std::string& name, float x, const osg::GeometryPtr& geometry, float scale = 1)
    {
        osg::Matrix place = osg::translationMatrix({x, 0, 0});
        for (const int axis : {0, 5, 10})
            place.values[static_cast<std::size_t>(axis)] = scale;
        const osg::NodePtr node = add(files::makeTransform(name, place));
        osg::addChild(node, files::makeNode(name + " body", geometry));
        return node;
    }

    static std::uint64_t trianglesOf(const GlbFile& file, std::size_t mesh)
    {
        std::uint64_t corners = 0;
        for (const Json& primitive : file.json["meshes"][mesh]["primitives"])
            if (primitive.value("mode", 4) == 4)
                corners += file.json["accessors"][primitive["indices"].get<std::size_t>()]["count"].get<unsigned>();
        return corners / 3;
    }

    /// The number of the node that draws the mesh, and has levels.
    static std::size_t leveledNode(const GlbFile& file, std::size_t mesh = 0)
    {
        for (std::size_t i = 0; i < file.json["nodes"].size(); ++i) {
            const Json& node = file.json["nodes"][i];
            if (node.contains(Json::json_pointer("/extensions/MSFT_lod")) &&
                (node.value("mesh", ~0u) == mesh || (node.contains("children") && drawn(file, i) == mesh)))
                return i;
        }
        ADD_FAILURE() << "no node has levels";
        return 0;
    }
    /// The mesh of the node, or of the one below it.
    static std::size_t drawn(const GlbFile& file, std::size_t node)
    {
        const Json& told = file.json["nodes"][node];
        return told.contains("mesh") ? told["mesh"].get<std::size_t>()
                                     : drawn(file, told["children"][0].get<std::size_t>());
    }
    static std::vector<std::size_t> meshesOf(const GlbFile& file, std::size_t mesh = 0)
    {
        const std::size_t node = leveledNode(file, mesh);
        std::vector<std::size_t> meshes = {drawn(file, node)};
        for (const Json& id : file.json["nodes"][node]["extensions"]["MSFT_lod"]["ids"])
            meshes.push_back(drawn(file, id.get<std::size_t>()));
        return meshes;
    }
    SeenTree readAgain(int level, const QString& name = QString::fromUtf8("Größe 大小.glb")) const
    {
        files::ReadOptions reading;
        reading.level = level;
        const files::ReadResult read = ::readScene(pathOf(name), reading);
        EXPECT_TRUE(read) << (read ? "" : read.error().toString().toStdString());
        EXPECT_TRUE(read.warnings.empty());
        SeenTree seen;
        if (read) {
            const osg::RefPtr<osg::NodePtr> kept(read.value());
            seen.look(read.value());
        }
        return seen;
    }
};

TEST_F(LevelsTest, LevelsHaveTrianglesOfTheirOwnOverTheSameVertices)
{
    at("ball", 100, geometry("ball", levelshapes::ball(30, 20)));
    options.levels.shares = {0.5, 0.1};
    const GlbFile file = written();
    EXPECT_EQ(file.json["extensionsUsed"], Json::parse(R"(["MSFT_lod"])"));
    EXPECT_FALSE(file.json.contains("extensionsRequired"));
    const std::vector<std::size_t> meshes = meshesOf(file);
    ASSERT_EQ(meshes.size(), 3u);
    EXPECT_EQ(trianglesOf(file, meshes[0]), 3480u);
    for (const std::size_t level : {1, 2}) {
        EXPECT_EQ(file.primitive(meshes[level])["attributes"], file.primitive(meshes[0])["attributes"]);
        EXPECT_NE(file.primitive(meshes[level])["indices"], file.primitive(meshes[level - 1])["indices"]);
        EXPECT_EQ(trianglesOf(file, meshes[level]), result->levels[level].triangles);
    }
    ASSERT_EQ(result->levels.size(), 3u);
    EXPECT_EQ(result->trianglesBefore, 3480u);
    EXPECT_EQ(result->levels[0].triangles, 3480u);
    EXPECT_EQ(result->levels[0].error, 0);
    EXPECT_NEAR(double(result->levels[1].triangles), 1740, 40);
    EXPECT_NEAR(double(result->levels[2].triangles), 348, 40);
    EXPECT_GT(result->levels[2].error, result->levels[1].error);
    EXPECT_EQ(result->levelsLeftOut, 0u);
    EXPECT_EQ(result->meshes, 3u);
}

TEST_F(LevelsTest, LevelsAreInNoListOfChildrenAndNoScene)
{
    at("ball", 100, geometry("ball", levelshapes::ball(20, 20)));
    options.levels.shares = {0.5, 0.1};
    const GlbFile file = written();
    const Json& ids = file.json["nodes"][leveledNode(file)]["extensions"]["MSFT_lod"]["ids"];
    ASSERT_EQ(ids.size(), 2u);
    for (const Json& id : ids) {
        for (const Json& node : file.json["nodes"])
            for (const Json& child : node.value("children", Json::array()))
                EXPECT_NE(child, id);
        EXPECT_EQ(file.json["scenes"][0]["nodes"], Json::parse("[0]"));
    }
}

/// A pixel of a screen of 1920 x 1080 is as large as the error when the mesh is as many pixels long as the error is in
/// its longest side.
TEST_F(LevelsTest, ScreenCoverageFollowsFromErrorAndSize)
{
    at("ball", 100, geometry("ball", levelshapes::ball(30, 20)), 3);
    options.levels.shares = {0.5, 0.1};
    const GlbFile file = written();
    const auto coverage =
        file.json["nodes"][leveledNode(file)]["extras"]["MSFT_screencoverage"].get<std::vector<double>>();
    ASSERT_EQ(coverage.size(), 3u);
    for (const std::size_t level : {0, 1}) {
        const double side = 120 / result->levels[level + 1].error;
        EXPECT_NEAR(coverage[level], std::min(1.0, side * side / (1920 * 1080)), 1e-6);
    }
    EXPECT_GT(coverage[0], coverage[1]);
    EXPECT_EQ(coverage[2], 0);
}

TEST_F(LevelsTest, ErrorsAreThoseOfTheLargestPlace)
{
    const osg::GeometryPtr shared = geometry("ball", levelshapes::ball(20, 20));
    at("small", 100, shared);
    options.levels.shares = {0.25};
    (void)written();
    const double once = result->levels[1].error;
    at("large", 300, shared, 5);
    const GlbFile file = written();
    EXPECT_NEAR(result->levels[1].error, once * 5, once * 1e-4);
    EXPECT_EQ(result->levels[1].triangles * 4 / 10, result->trianglesBefore / 10);
    EXPECT_EQ(meshesOf(file).size(), 2u);
}

TEST_F(LevelsTest, MeshesBecomeSimplerWithinTheError)
{
    const osg::GeometryPtr shared = geometry("ball", levelshapes::ball(60, 20));
    at("small", 100, shared);
    options.levels.simplify = 0.2;
    GlbFile file = written();
    const std::uint64_t once = result->levels[0].triangles;
    ASSERT_EQ(result->levels.size(), 1u);
    EXPECT_EQ(result->trianglesBefore, 14160u);
    EXPECT_LT(once, 14160u / 4);
    EXPECT_LE(result->levels[0].error, 0.2);
    EXPECT_GT(result->levels[0].error, 0.02);
    EXPECT_EQ(trianglesOf(file, 0), once);
    EXPECT_FALSE(file.json.contains("extensionsUsed"));
    // Vertices that nothing needs any more are gone: half as many as triangles are left, and two.
    EXPECT_EQ(file.json["accessors"][file.primitive(0)["attributes"]["POSITION"].get<std::size_t>()]["count"],
              once / 2 + 2);
    at("large", 300, shared, 10);
    file = written();
    EXPECT_LE(result->levels[0].error, 0.2);
    EXPECT_GT(result->levels[0].triangles, once * 2);
}

/// Two meshes over the same arrays, which share what is made of them.
TEST_F(LevelsTest, AShapeOfSeveralMaterialsIsWithinTheErrorWhereItIsLargest)
{
    const osg::Mesh ball = levelshapes::ball(40, 20);
    const auto colored = [&](const char* name) { return geometry(name, ball, files::makeMaterial(name, {})); };
    at("large", 300, colored("red"), 10);
    at("small", 100, colored("green"), 0.1f);
    options.levels.simplify = 0.5;
    const GlbFile file = written();
    ASSERT_EQ(file.json["meshes"].size(), 2u);
    ASSERT_EQ(file.primitive(0)["indices"], file.primitive(1)["indices"]);
    EXPECT_LE(result->levels[0].error, 0.5);
}

TEST_F(LevelsTest, LevelsOfSimplifiedMeshesAreMeasuredAgainstWhatWasThere)
{
    at("ball", 100, geometry("ball", levelshapes::ball(40, 20)));
    options.levels = {0.1, {0.5, 0.2}, false};
    const GlbFile file = written();
    EXPECT_EQ(trianglesOf(file, meshesOf(file)[0]), result->levels[0].triangles);
    EXPECT_NEAR(double(result->levels[1].triangles), double(result->levels[0].triangles) / 2, 60);
    EXPECT_LE(result->levels[0].error, 0.1);
    EXPECT_GT(result->levels[1].error, result->levels[0].error);
}

TEST_F(LevelsTest, LevelsThatSaveLittleAreLeftOut)
{
    at("ball", 100, geometry("ball", levelshapes::ball(30, 20)));
    at("square", 200, geometry("square", levelshapes::plane(1, 20)));
    options.levels.shares = {0.95, 0.5, 0.48};
    const GlbFile file = written();
    // Of the ball the first and the last one, of the square all.
    EXPECT_EQ(result->levelsLeftOut, 5u);
    EXPECT_EQ(meshesOf(file).size(), 2u);
    EXPECT_EQ(result->levels[1].triangles, 3482u);
    EXPECT_EQ(result->levels[3].triangles, result->levels[2].triangles);
    std::size_t leveled = 0;
    for (const Json& node : file.json["nodes"])
        leveled += node.contains("extensions") ? 1 : 0;
    EXPECT_EQ(leveled, 1u);
}

TEST_F(LevelsTest, QuantizedLevelsLieOnOneGridAndShareVertices)
{
    at("ball", 10, geometry("ball", levelshapes::ball(30, 20)), 2);
    at("plate", 500, geometry("plate", levelshapes::plane(30, 200)));
    options.packing = {true, 0.05, 8, true, true, true};
    (void)written();
    const double error = result->error;
    options.levels.shares = {0.5, 0.1};
    const GlbFile file = written();
    EXPECT_DOUBLE_EQ(result->error, error);
    const std::vector<std::size_t> meshes = meshesOf(file);
    ASSERT_EQ(meshes.size(), 3u);
    for (const std::size_t level : {1, 2})
        EXPECT_EQ(file.primitive(meshes[level])["attributes"], file.primitive(meshes[0])["attributes"]);
    for (const int level : {0, 1, 2}) {
        const SeenTree seen = readAgain(level);
        EXPECT_EQ(seen.triangles, result->levels[static_cast<std::size_t>(level)].triangles);
        EXPECT_NEAR(seen.most.x, 700, 0.051);
        EXPECT_NEAR(seen.least.x, -30, level == 0 ? 0.06 : 4.1);
        EXPECT_NEAR(seen.most.y, 200, 0.051);
    }
}

TEST_F(LevelsTest, EachLevelIsReadAgainInItsPlace)
{
    const osg::NodePtr node = at("ball", 100, geometry("ball", levelshapes::ball(30, 20)));
    osg::addChild(node, files::makeNode("below", geometry("below", levelshapes::plane(4, 5))));
    at("other", 200, geometry("square", levelshapes::plane(1, 20)));
    options.levels.shares = {0.5, 0.1};
    (void)written();
    for (const int level : {0, 1, 2, 9}) {
        const SeenTree seen = readAgain(level);
        EXPECT_EQ(seen.triangles, result->levels[std::min<std::size_t>(2, static_cast<std::size_t>(level))].triangles);
        EXPECT_NEAR(seen.most.x, 220, 1e-3);
        EXPECT_NEAR(seen.least.x, 80, 3);
        for (const char* name : {"ball", "other", "ball body"})
            EXPECT_TRUE(seen.names.contains(QString::fromLatin1(name))) << name;
    }
}

TEST_F(LevelsTest, FilesOfLevelsStandBeside)
{
    at("ball", 100, geometry("ball", levelshapes::ball(30, 20)));
    at("square", 200, geometry("square", levelshapes::plane(1, 20)));
    options.levels = {0, {0.5, 0.1}, true};
    const GlbFile file = written();
    EXPECT_FALSE(file.json.contains("extensionsUsed"));
    const QStringList names = {QString::fromUtf8("Größe 大小.glb"), QString::fromUtf8("Größe 大小.lod1.glb"),
                               QString::fromUtf8("Größe 大小.lod2.glb")};
    EXPECT_EQ(filesInFolder(), names);
    for (int level = 0; level < 3; ++level) {
        const auto& told = result->levels[static_cast<std::size_t>(level)];
        EXPECT_EQ(told.path, pathOf(names[level]));
        EXPECT_EQ(readAgain(0, names[level]).triangles, told.triangles);
        if (gltfvalidator::isInstalled()) {
            EXPECT_EQ(gltfvalidator::validate(told.path), gltfvalidator::Verdict());
        }
    }
    EXPECT_LT(GlbFile(result->levels[2].path).size() * 4, file.size());
}

TEST_F(LevelsTest, AllFilesOfLevelsComeOrNone)
{
    at("ball", 100, geometry("ball", levelshapes::ball(10, 20)));
    options.levels = {0, {0.5, 0.1}, true};
    ASSERT_TRUE(QDir().mkdir(pathOf(QString::fromUtf8("Größe 大小.lod2.glb"))));
    const auto failed = files::glb::write(root.get(), pathOf(QString::fromUtf8("Größe 大小.glb")), options);
    EXPECT_FALSE(failed);
    EXPECT_EQ(filesInFolder(), QStringList(QString::fromUtf8("Größe 大小.lod2.glb")));
}

/// Two halves of one surface of different materials: where they meet is an open border of each.
TEST_F(LevelsTest, BordersBetweenMaterialsStay)
{
    osg::Mesh left = levelshapes::ball(24, 20), right = left;
    levelshapes::Triangles halves[2];
    for (std::size_t i = 0; i < left.triangles.size(); i += 3) {
        float middle = 0;
        for (std::size_t corner = 0; corner < 3; ++corner)
            middle += left.positions[left.triangles[i + corner]].x;
        for (std::size_t corner = 0; corner < 3; ++corner)
            halves[middle > 1 ? 1 : 0].push_back(left.triangles[i + corner]);
    }
    left.triangles = halves[0];
    right.triangles = halves[1];
    const auto borderOf = [](const osg::Mesh& mesh, const std::vector<std::uint32_t>& triangles) {
        std::vector<Eigen::Vector3f> positions;
        for (const osg::Vec3f& p : mesh.positions)
            positions.emplace_back(p.x, p.y, p.z);
        return levelshapes::openEdges(positions, triangles);
    };
    const auto border = borderOf(left, halves[0]);
    ASSERT_GT(border.size(), 20u);
    ASSERT_EQ(borderOf(right, halves[1]), border);
    at("ball", 100, geometry("left", left));
    at("other", 100, geometry("right", right));
    options.levels.shares = {0.2};
    const GlbFile file = written();
    for (const std::size_t mesh : {0, 1}) {
        const std::vector<std::size_t> meshes = meshesOf(file, mesh);
        ASSERT_EQ(meshes.size(), 2u);
        const Json& primitive = file.primitive(meshes[1]);
        const Json& told = file.json["accessors"][primitive["indices"].get<std::size_t>()];
        std::vector<std::uint32_t> triangles;
        const auto all = file.array<std::uint16_t>(primitive["indices"].get<std::size_t>());
        const std::size_t start = told.value("byteOffset", 0u) / 2;
        for (std::size_t i = 0; i < told["count"].get<std::size_t>(); ++i)
            triangles.push_back(all[start + i]);
        EXPECT_EQ(borderOf(left, triangles), border);
    }
}

TEST_F(LevelsTest, EdgesAreInTheFinestLevelAloneAndOtherLinesInAll)
{
    osg::Mesh drum = levelshapes::drum(40, 4, 10, 20);
    at("drum", 100, geometry("drum", drum));
    osg::Mesh ball = levelshapes::ball(20, 20);
    ball.lines = std::vector<std::uint32_t>{0, 1, 1, 2};
    at("ball", 200, geometry("ball", ball));
    options.levels.shares = {0.5};
    options.edges = true;
    const GlbFile file = written();
    const std::vector<std::size_t> drums = meshesOf(file, 0), balls = meshesOf(file, 1);
    EXPECT_EQ(file.json["meshes"][drums[0]]["primitives"].size(), 2u);
    EXPECT_EQ(file.json["meshes"][drums[1]]["primitives"].size(), 1u);
    ASSERT_EQ(file.json["meshes"][balls[1]]["primitives"].size(), 2u);
    EXPECT_EQ(file.primitive(balls[1], 1)["mode"], 1);
}

TEST_F(LevelsTest, FacesAreToldOfTrianglesThatHaveThem)
{
    osg::Mesh mesh = levelshapes::plane(20, 20);
    mesh.faces = std::vector<osg::FaceRange>{{0, 400}, {400, 400}};
    at("plate", 100, geometry("plate", mesh));
    options.edges = true;
    options.levels.shares = {0.5};
    GlbFile file = written();
    const std::vector<std::size_t> meshes = meshesOf(file);
    EXPECT_TRUE(file.primitive(meshes[0])["extras"].contains("faces"));
    EXPECT_FALSE(file.primitive(meshes[1]).contains("extras"));
    options.levels = {0.1, {}, false};
    file = written();
    EXPECT_FALSE(file.primitive(0).contains("extras"));
    EXPECT_EQ(file.primitive(0, 1)["mode"], 1);
}

/// The ball is red by day and green by night, when alone it is there.
TEST_F(LevelsTest, LevelsHaveTheVariantsOfTheMeshAndHiddenNodesKeepTheirState)
{
    const osg::SwitchMaterialPtr paint = osg::SwitchMaterialBase::create();
    osg::setName(paint, "paint");
    for (const char* name : {"red", "green"})
        paint->addMaterial(files::makeMaterial(name, {}));
    const osg::NodePtr ball = at("ball", 100, geometry("ball", levelshapes::ball(20, 20), paint));
    at("square", 0, geometry("square", levelshapes::plane(1, 20)));
    osg::VariantTable table;
    table.groups = {"light"};
    table.sets = {{"day", "light", "", {}, {{"paint", "red"}}, {{{0}, "!Disable"}}},
                  {"night", "light", "", {}, {{"paint", "green"}}, {{{0}, "!Enable"}}}};
    root.get()->addAttachment(osg::VariantAttachment::create(table));
    ball->setActive(false);
    options.levels.shares = {0.5};
    const GlbFile file = written();
    const std::vector<std::size_t> meshes = meshesOf(file);
    ASSERT_EQ(meshes.size(), 2u);
    const Json& variants = file.primitive(meshes[0])["extensions"]["KHR_materials_variants"];
    EXPECT_EQ(variants["mappings"].size(), 2u);
    EXPECT_EQ(file.primitive(meshes[1])["extensions"]["KHR_materials_variants"], variants);
    for (const Json& node : file.json["nodes"]) {
        const bool isHidden = node.contains(Json::json_pointer("/extensions/KHR_node_visibility"));
        EXPECT_FALSE(isHidden && node["extensions"].contains("MSFT_lod"));
    }
    const SeenTree shown = readAgain(1);
    EXPECT_NEAR(shown.most.x, 120, 0.5) << "small, or not in its place";
}

TEST_F(LevelsTest, WithoutTrianglesThereAreNoLevels)
{
    osg::Mesh lines = levelshapes::plane(1, 4);
    lines.lines = std::vector<std::uint32_t>{0, 1, 1, 2};
    lines.triangles = {};
    at("lines", 0, geometry("lines", lines));
    options.levels = {1, {0.5}, false};
    const GlbFile file = written();
    EXPECT_EQ(result->levelsLeftOut, 0u);
    EXPECT_EQ(result->trianglesBefore, 0u);
    EXPECT_EQ(file.json["meshes"].size(), 1u);
}

} // namespace
