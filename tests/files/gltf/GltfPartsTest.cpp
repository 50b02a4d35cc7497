#include "files/gltf/GltfParts.h"

#include "host/OSGSystem/SimpleMaterial.h"
#include "scene/MatrixMath.h"
#include "tests/files/glb/GlbTest.h"
#include "tests/files/glb/levels/LevelShapes.h"
#include "tests/support/BuiltInReading.h"

#include <algorithm>
#include <map>

namespace
{

using files::gltf::GltfPart;
using files::gltf::GltfPartPlaces;
using files::gltf::meshOfPart;

using Indices = std::vector<std::uint32_t>;

TEST(GltfParts, PartsHaveTheVerticesThatTheyNeed)
{
    osg::Mesh whole;
    whole.positions = std::vector<osg::Vec3f>{{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {4, 0, 0}};
    whole.normals = std::vector<osg::Vec3f>{{0, 0, 1}, {0, 0, 2}, {0, 0, 3}, {0, 0, 4}, {0, 0, 5}};
    whole.texCoords1 = std::vector<osg::Vec2f>{{0, 1}, {1, 1}, {2, 1}, {3, 1}, {4, 1}};
    whole.triangles = Indices{0, 1, 2, 4, 3, 2, 4, 2, 3};
    const osg::Mesh part = meshOfPart(whole, 3, 6);
    EXPECT_EQ(Indices(part.triangles.begin(), part.triangles.end()), (Indices{0, 1, 2, 0, 2, 1}));
    ASSERT_EQ(part.positions.size(), 3u);
    EXPECT_EQ(part.positions[0], (osg::Vec3f{4, 0, 0}));
    EXPECT_EQ(part.normals[1], (osg::Vec3f{0, 0, 4}));
    EXPECT_EQ(part.texCoords1[2], (osg::Vec2f{2, 1}));
    EXPECT_TRUE(part.colors.empty());
    osg::Mesh lines = whole;
    lines.triangles = {};
    lines.lines = Indices{0, 1, 3, 4};
    EXPECT_EQ(meshOfPart(lines, 2, 2).lines.size(), 2u);
}

/// Writes trees with their parts gathered, and reads them again.
class GltfGatheredTest : public GlbTest
{
protected:
    /// A part by the names above it: where its first vertex is, its triangles, its material and its colours.
    struct Part {
        osg::Vec3f first;
        std::size_t triangles = 0;
        std::string material;
        std::string product;
        bool hasColors = false; ///< of vertices
    };

    static void look(const osg::NodePtr& node, osg::Matrix above, const std::string& path,
                     std::multimap<std::string, Part>& parts)
    {
        const char* name = osg::getName(node);
        if (const auto transform = osg::fcCast<osg::Transform>(node->getCore()))
            above = above * transform->getMatrix();
        if (const auto core = osg::fcCast<osg::Geometry>(node->getCore())) {
            const osg::Mesh& mesh = osg::GeometryAccess::mesh(*core);
            const char* material = core->getMaterial() ? osg::getName(core->getMaterial()) : nullptr;
            const auto facts = osg::attributeAttachment(node->getParent(), osg::AttributeOwner::Product);
            parts.emplace(path,
                          Part{osg::transformPoint(above, mesh.positions[0]), mesh.triangles.size() / 3,
                               material ? material : "", facts ? facts->text("Product") : "", !mesh.colors.empty()});
            return;
        }
        for (unsigned i = 0; i < node->getNChildren(); ++i)
            look(node->getChild(i), above, path + '/' + (name ? name : ""), parts);
    }

    std::multimap<std::string, Part> readAgain()
    {
        const GlbFile file = written();
        json = file.json;
        std::multimap<std::string, Part> parts;
        const files::ReadResult read = ::readScene(pathOf(QString::fromUtf8("Größe 大小.glb")), {});
        EXPECT_TRUE(read) << (read ? "" : read.error().toString().toStdString());
        if (read) {
            const osg::RefPtr<osg::NodePtr> kept(read.value());
            look(read.value(), {}, "", parts);
        }
        return parts;
    }

    /// A part of `name` below `above` with a body.
    void addPart(const osg::NodePtr& above, const std::string& name, const osg::Vec3f& place,
                 const osg::GeometryPtr& body)
    {
        const osg::NodePtr part = files::makeTransform(name, osg::translationMatrix(place));
        osg::setAttributes(part, osg::AttributeOwner::Product,
                           osg::AttributeAttachment::create({{"Product", name + " product"}}));
        osg::addChild(part, files::makeNode("", body));
        osg::addChild(above, part);
    }

    static osg::SimpleMaterialPtr material(const std::string& name, float red)
    {
        files::MaterialLook look;
        look.diffuse = {red, 0.5f, 0.25f};
        return files::makeMaterial(name, look);
    }

    /// Two brackets with a bolt each, and a plate.
    void makeTree()
    {
        options.fold = true;
        const osg::GeometryPtr bolt = geometry("bolt", triangle(), material("steel", 0.1f));
        for (const float x : {-50.0f, 50.0f}) {
            const osg::NodePtr bracket =
                add(files::makeTransform(x < 0 ? "left" : "right", osg::translationMatrix({x, 0, 0})));
            addPart(bracket, "bolt", {0, 0, 7}, bolt);
        }
        addPart(root.get(), "plate", {0, 100, 0}, geometry("plate", triangle(), material("brass", 0.9f)));
    }

    nlohmann::json json;
};

void expectNear(const osg::Vec3f& a, const osg::Vec3f& b, float difference)
{
    EXPECT_NEAR(a.x, b.x, difference);
    EXPECT_NEAR(a.y, b.y, difference);
    EXPECT_NEAR(a.z, b.z, difference);
}

TEST_F(GltfGatheredTest, InstancesAndMergedPartsAreReadAsTheyWere)
{
    makeTree();
    const auto before = readAgain();
    ASSERT_EQ(before.size(), 3u);
    for (const bool isPacked : {false, true})
        for (const auto& [instances, below] : {std::pair(true, 0u), std::pair(false, 100u)}) {
            options.gathering = {instances, below};
            if (isPacked)
                options.packing = {true, 0.05, 8, true, true, true};
            const auto after = readAgain();
            ASSERT_EQ(after.size(), before.size());
            auto was = before.begin();
            for (const auto& [path, part] : after) {
                EXPECT_EQ(path, was->first);
                expectNear(part.first, was->second.first, 0.06f);
                EXPECT_EQ(part.triangles, 1u);
                EXPECT_EQ(part.material, was->second.material);
                EXPECT_EQ(part.product, was->second.product);
                EXPECT_FALSE(part.hasColors);
                ++was;
            }
        }
}

TEST_F(GltfGatheredTest, FilesHaveOneCallForEachGroup)
{
    makeTree();
    options.gathering = {false, 100};
    readAgain();
    std::size_t primitives = 0;
    for (const nlohmann::json& node : json["nodes"])
        if (node.contains("mesh"))
            primitives += json["meshes"][node["mesh"].get<std::size_t>()]["primitives"].size();
    EXPECT_EQ(primitives, 1u);
    options.gathering = {true, 0};
    readAgain();
    EXPECT_EQ(json["extensionsRequired"], nlohmann::json::parse(R"(["EXT_mesh_gpu_instancing"])"));
}

TEST_F(GltfGatheredTest, PartsBelowNodesOfOneNameFindTheirs)
{
    options.fold = true;
    options.gathering = {true, 0};
    const osg::GeometryPtr bolt = geometry("bolt", triangle());
    for (const float x : {-50.0f, 50.0f}) {
        const osg::NodePtr bracket = add(files::makeTransform("bracket", osg::translationMatrix({x, 0, 0})));
        for (const float y : {0.0f, 9.0f})
            addPart(bracket, y > 0 ? "high" : "low", {0, y, 7}, bolt);
    }
    const GlbFile file = written();
    const files::ReadResult read = ::readScene(pathOf(QString::fromUtf8("Größe 大小.glb")), {});
    ASSERT_TRUE(read);
    const osg::RefPtr<osg::NodePtr> kept(read.value());
    osg::NodePtr top = read.value();
    while (top->getNChildren() == 1)
        top = top->getChild(0);
    ASSERT_EQ(top->getNChildren(), 2u);
    for (unsigned i = 0; i < 2; ++i) {
        const osg::NodePtr bracket = top->getChild(i);
        EXPECT_STREQ(osg::getName(bracket), "bracket");
        ASSERT_EQ(bracket->getNChildren(), 2u);
        const auto place = osg::fcCast<osg::Transform>(bracket->getChild(0)->getCore());
        ASSERT_TRUE(place);
        EXPECT_NEAR(place->getMatrix()[12], 0, 1e-4);
        EXPECT_NEAR(place->getMatrix()[14], 7, 1e-4);
    }
}

TEST_F(GltfGatheredTest, LevelsHaveTheirPartsToo)
{
    options.fold = true;
    options.levels.shares = {0.5};
    const osg::GeometryPtr plate = geometry("plate", levelshapes::plane(10, 100), material("steel", 0.1f));
    addPart(root.get(), "left", {0, 0, 0}, plate);
    addPart(root.get(), "right", {500, 0, 0}, plate);
    addPart(root.get(), "small", {0, 500, 0}, geometry("small", levelshapes::plane(8, 100), material("brass", 0.9f)));
    for (const auto& [instances, below] : {std::pair(true, 0u), std::pair(false, 10000u)}) {
        options.gathering = {instances, below};
        readAgain();
        files::ReadOptions coarse;
        coarse.level = 1;
        const files::ReadResult read = ::readScene(pathOf(QString::fromUtf8("Größe 大小.glb")), coarse);
        ASSERT_TRUE(read);
        const osg::RefPtr<osg::NodePtr> kept(read.value());
        std::multimap<std::string, Part> parts;
        look(read.value(), {}, "", parts);
        ASSERT_EQ(parts.size(), 3u);
        for (const auto& [path, part] : parts) {
            const bool isSmall = path.find("small") != std::string::npos;
            EXPECT_LE(part.triangles, isSmall ? 64u : 100u) << path;
            EXPECT_GT(part.triangles, 0u) << path;
            EXPECT_EQ(part.material, isSmall ? "brass" : "steel");
        }
    }
}

/// Changes a written file and reads it.
class GltfGatheredDamageTest : public GltfGatheredTest
{
protected:
    std::multimap<std::string, Part> readChanged(const char* from, const char* to)
    {
        const GlbFile file = written();
        QByteArray bytes = file.bytes();
        EXPECT_TRUE(bytes.contains(from)) << from;
        EXPECT_EQ(qstrlen(from), qstrlen(to));
        bytes.replace(from, to);
        const QString path = pathOf(QStringLiteral("changed.glb"));
        QFile changed(path);
        EXPECT_TRUE(changed.open(QIODevice::WriteOnly) && changed.write(bytes) == bytes.size());
        changed.close();
        std::multimap<std::string, Part> parts;
        const files::ReadResult read = ::readScene(path, {});
        EXPECT_TRUE(read) << (read ? "" : read.error().toString().toStdString());
        if (read) {
            const osg::RefPtr<osg::NodePtr> kept(read.value());
            look(read.value(), {}, "", parts);
        }
        return parts;
    }
};

TEST_F(GltfGatheredDamageTest, RangesThatDoNotFitLeaveTheMeshWhole)
{
    makeTree();
    options.gathering = {false, 100};
    for (const auto& [from, to] :
         {std::pair("[[0,1,", "[[0,2,"), std::pair("[[0,1,", "[[9,1,"), std::pair("[[0,1,", "[[0,0,")}) {
        const auto parts = readChanged(from, to);
        ASSERT_EQ(parts.size(), 1u) << to;
        EXPECT_EQ(parts.begin()->second.triangles, 3u);
    }
}

TEST_F(GltfGatheredDamageTest, UnknownMaterialsLeaveTheColours)
{
    makeTree();
    options.gathering = {false, 100};
    const auto parts = readChanged(R"({"material":"brass"})", R"({"material":"silly"})");
    EXPECT_EQ(parts.size(), 3u);
    for (const auto& [path, part] : parts)
        EXPECT_EQ(part.hasColors, part.material.empty()) << path;
    EXPECT_EQ(std::count_if(parts.begin(), parts.end(), [](const auto& part) { return part.second.hasColors; }), 1);
}

TEST_F(GltfGatheredDamageTest, PathsThatNobodyHasBecomeGroups)
{
    makeTree();
    options.gathering = {true, 0};
    const auto parts = readChanged(R"("path":["left"])", R"("path":["lost"])");
    ASSERT_EQ(parts.size(), 3u);
    EXPECT_TRUE(std::any_of(parts.begin(), parts.end(), [](const auto& part) {
        return part.first.ends_with("/lost/bolt") && std::abs(part.second.first.x + 49) < 0.01f;
    }));
}

} // namespace
