#include "files/glb/GlbNodes.h"

#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "scene/MatrixMath.h"
#include "scene/Tags.h"
#include "tests/files/glb/GlbTest.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace
{

using GlbNodesTest = GlbTest;
using nlohmann::json;
using testing::ElementsAre;

std::vector<float> numbers(const json& list)
{
    return list.get<std::vector<float>>();
}

osg::Matrix matrixOf(const json& node)
{
    osg::Matrix result;
    if (node.contains("matrix")) {
        const std::vector<float> values = numbers(node["matrix"]);
        std::copy(values.begin(), values.end(), result.values.begin());
        return result;
    }
    osg::Components parts;
    if (node.contains("translation")) {
        const std::vector<float> v = numbers(node["translation"]);
        parts.translation = {v[0], v[1], v[2]};
    }
    if (node.contains("rotation")) {
        const std::vector<float> v = numbers(node["rotation"]);
        parts.rotation = {v[0], v[1], v[2], v[3]};
    }
    if (node.contains("scale")) {
        const std::vector<float> v = numbers(node["scale"]);
        parts.scale = {v[0], v[1], v[2]};
    }
    return osg::composed(parts);
}

TEST_F(GlbNodesTest, TheTopNodeTurnsMillimetresAndZUpIntoMetresAndYUp)
{
    add(files::makeNode("Part", geometry("", triangle())));
    const GlbFile file = written();
    EXPECT_EQ(file.json["scenes"], json::parse(R"([{"nodes": [0]}])"));
    EXPECT_EQ(file.json["scene"], 0);
    EXPECT_EQ(file.json["nodes"][0]["name"], "Root");
    // (x, y, z) millimetres are (x, z, -y) / 1000 metres.
    EXPECT_THAT(numbers(file.json["nodes"][0]["matrix"]),
                ElementsAre(0.001f, 0, 0, 0, 0, 0, -0.001f, 0, 0, 0.001f, 0, 0, 0, 0, 0, 1));
    EXPECT_EQ(file.json["nodes"][0]["children"], json::parse("[1]"));
    EXPECT_FALSE(file.json["asset"].contains("extras"));
    EXPECT_EQ(file.json["nodes"][1], json::parse(R"({"name": "Part", "mesh": 0})"));
    EXPECT_EQ(result->nodes, 2u);
    EXPECT_EQ(result->meshes, 1u);
}

TEST_F(GlbNodesTest, WhatIsAboveAnnotationsIsMarked)
{
    const osg::NodePtr pmi = files::makeNode("PMI", geometry("", triangle()));
    osg::setTags(pmi, {"ptx::pmi"});
    add(pmi);
    add(files::makeNode("Part", geometry("", triangle())));
    const GlbFile file = written();
    EXPECT_EQ(file.json["nodes"][1]["extras"], json::parse(R"({"annotations": true})"));
    EXPECT_FALSE(file.json["nodes"][2].contains("extras"));
}

TEST_F(GlbNodesTest, AnotherUnitAndAxisAreInTheMatrixAndTold)
{
    add(files::makeNode("Part", geometry("", triangle())));
    options.millimetresPerUnit = 25.4;
    options.upAxis = files::glb::UpAxis::Z;
    const GlbFile file = written();
    const std::vector<float> inches = {1 / 25.4f, 0, 0, 0, 0, 1 / 25.4f, 0, 0, 0, 0, 1 / 25.4f, 0, 0, 0, 0, 1};
    EXPECT_THAT(numbers(file.json["nodes"][0]["matrix"]), testing::Pointwise(testing::FloatEq(), inches));
    EXPECT_EQ(file.json["asset"]["extras"], json::parse(R"({"metresPerUnit": 0.0254, "upAxis": "Z"})"));
}

TEST_F(GlbNodesTest, AUnitAloneKeepsYUp)
{
    add(files::makeNode("Part", geometry("", triangle())));
    options.millimetresPerUnit = 10;
    const GlbFile file = written();
    EXPECT_THAT(numbers(file.json["nodes"][0]["matrix"]),
                ElementsAre(0.1f, 0, 0, 0, 0, 0, -0.1f, 0, 0, 0.1f, 0, 0, 0, 0, 0, 1));
    EXPECT_EQ(file.json["asset"]["extras"], json::parse(R"({"metresPerUnit": 0.01})"));
}

TEST_F(GlbNodesTest, MillimetresAndZUpNeedNoMatrix)
{
    add(files::makeNode("Part", geometry("", triangle())));
    options.millimetresPerUnit = 1;
    options.upAxis = files::glb::UpAxis::Z;
    EXPECT_EQ(written().json["nodes"][0], json::parse(R"({"name": "Root", "children": [1]})"));
}

TEST_F(GlbNodesTest, ATransformAtTheTopIsTakenIntoTheMatrix)
{
    osg::Matrix matrix;
    matrix[12] = 7;
    matrix[13] = 8;
    matrix[14] = 9;
    root = files::makeTransform("Moved", matrix);
    const std::vector<float> wanted = {0.001f, 0, 0, 0, 0, 0, -0.001f, 0, 0, 0.001f, 0, 0, 0.007f, 0.009f, -0.008f, 1};
    EXPECT_THAT(numbers(written().json["nodes"][0]["matrix"]), testing::Pointwise(testing::FloatEq(), wanted));
}

TEST_F(GlbNodesTest, TransformsAreExact)
{
    osg::Matrix matrix;
    matrix.values = {0, 2, 0, 0, -3, 0, 0, 0, 0, 0, 0.1f, 0, 10.1f, -20.2f, 30.3f, 1};
    osg::addChild(add(files::makeTransform("Turned", matrix)), files::makeGroup("Below"));
    add(files::makeTransform("Still", osg::Matrix()));
    const GlbFile file = written();
    EXPECT_EQ(matrixOf(file.json["nodes"][1]), matrix);
    EXPECT_EQ(file.json["nodes"][2], json::parse(R"({"name": "Still"})"));
    EXPECT_EQ(file.json["nodes"][3], json::parse(R"({"name": "Below"})"));
    EXPECT_EQ(file.json["nodes"][1]["children"], json::parse("[3]"));
}

TEST_F(GlbNodesTest, MirroredSmallAndLargeTransformsArrive)
{
    std::vector<osg::Matrix> matrices;
    for (const osg::Vec3f& scale : {osg::Vec3f{-1, 1, 1}, osg::Vec3f{-2, -2, -2}, osg::Vec3f{0.001f, 0.001f, 0.001f},
                                    osg::Vec3f{1000, 1000, 1000}, osg::Vec3f{25.4f, 254, 2.54f}}) {
        const osg::Matrix turn = osg::rotationMatrix({0.1f, 0.2f, 0.3f, 0.9f});
        matrices.push_back(osg::translationMatrix({1234.5f, 0, -3}) * turn * osg::scaleMatrix(scale));
        osg::addChild(add(files::makeTransform("Scaled", matrices.back())),
                      files::makeNode("", geometry("", triangle())));
    }
    const GlbFile file = written();
    for (std::size_t i = 0; i < matrices.size(); ++i)
        for (unsigned k = 0; k < 16; ++k)
            EXPECT_NEAR(matrixOf(file.json["nodes"][i + 1])[k], matrices[i][k], 1e-6 * (1 + std::abs(matrices[i][k])));
}

TEST_F(GlbNodesTest, AShearingTransformBecomesTwoNodes)
{
    osg::Matrix matrix;
    matrix.values = {1, 0, 0, 0, 0.5f, 2, 0, 0, 0, 0, 1, 0, 7, 8, 9, 1};
    osg::addChild(add(files::makeTransform("Sheared", matrix)), files::makeGroup("Below"));
    const GlbFile file = written();
    const json& outer = file.json["nodes"][1];
    EXPECT_EQ(outer["name"], "Sheared");
    EXPECT_FALSE(outer.contains("matrix"));
    const json& inner = file.json["nodes"][outer["children"][0].get<std::size_t>()];
    EXPECT_FALSE(inner.contains("name"));
    EXPECT_EQ(file.json["nodes"][inner["children"][0].get<std::size_t>()]["name"], "Below");
    const osg::Matrix whole = matrixOf(outer) * matrixOf(inner);
    for (unsigned i = 0; i < 16; ++i)
        EXPECT_NEAR(whole[i], matrix[i], 1e-5) << i;
}

TEST_F(GlbNodesTest, AFlatTransformIsAllowed)
{
    osg::addChild(add(files::makeTransform("Flat", osg::scaleMatrix({3, 2, 0}))),
                  files::makeNode("", geometry("", triangle())));
    const GlbFile file = written();
    const osg::Matrix matrix = matrixOf(file.json["nodes"][1]);
    EXPECT_NEAR(matrix[0], 3, 1e-5);
    EXPECT_NEAR(matrix[5], 2, 1e-5);
    EXPECT_NEAR(matrix[10], 0, 1e-5);
}

TEST_F(GlbNodesTest, WhatHangsBelowATransformWithoutFiniteNumbersIsLeftOut)
{
    osg::Matrix matrix;
    matrix[12] = std::numeric_limits<float>::infinity();
    osg::addChild(add(files::makeTransform("Nowhere", matrix)), files::makeGroup("Below"));
    const GlbFile file = written();
    EXPECT_EQ(file.json["nodes"][1], json::parse(R"({"name": "Nowhere"})"));
    EXPECT_EQ(file.json["nodes"].size(), 2u);
    EXPECT_THAT(warnings(),
                ElementsAre(QStringLiteral(
                    "what hangs below 'Nowhere' was left out because its transform has no finite numbers")));
}

TEST_F(GlbNodesTest, InactiveNodesAreLeftOutWithWhatHangsBelow)
{
    const osg::NodePtr hidden = add(files::makeGroup("Hidden"));
    osg::addChild(hidden, files::makeNode("Below", geometry("", triangle())));
    add(files::makeGroup("Seen"));
    osg::beginEditCP(hidden, osg::Node::ActiveFieldMask, 1);
    hidden->setActive(false);
    osg::endEditCP(hidden, osg::Node::ActiveFieldMask, 1);
    const GlbFile file = written();
    EXPECT_EQ(file.json["nodes"].size(), 2u);
    EXPECT_EQ(file.json["nodes"][1]["name"], "Seen");
    EXPECT_FALSE(file.json.contains("meshes"));
}

TEST_F(GlbNodesTest, AReferenceWithoutContentTellsItsFile)
{
    const auto reference = [](const char* path) {
        const osg::FileReferencePtr file = osg::FileReferenceBase::create();
        file->setPath(path);
        const osg::ExtReferencePtr core = osg::ExtReferenceBase::create();
        core->setSourceFile(file);
        return core;
    };
    add(files::makeNode("Empty", reference("teile/Gehäuse 外壳.jt")));
    osg::addChild(add(files::makeNode("Loaded", reference("teile/deckel.jt"))), files::makeGroup("Content"));
    const GlbFile file = written();
    EXPECT_EQ(file.json["nodes"][1]["extras"], json::parse(R"({"externalReference": "teile/Gehäuse 外壳.jt"})"));
    EXPECT_FALSE(file.json["nodes"][2].contains("extras"));
}

TEST_F(GlbNodesTest, NamesAreKeptAndWhatIsNoUtf8InThemIsReplaced)
{
    add(files::makeGroup("Träger \"支架\" \\ 1"));
    add(files::makeGroup("Geh\xE4use"));
    const GlbFile file = written();
    EXPECT_EQ(file.json["nodes"][1]["name"], "Träger \"支架\" \\ 1");
    EXPECT_EQ(file.json["nodes"][2]["name"], "Geh\xEF\xBF\xBDuse");
}

TEST_F(GlbNodesTest, TheMaterialOfAGroupIsSeenOnWhatHangsBelow)
{
    const osg::SimpleMaterialPtr own = files::makeMaterial("own", {});
    const osg::SimpleMaterialPtr given = files::makeMaterial("given", {});
    const osg::GeometryPtr shared = geometry("shared", triangle(), own);
    const osg::MaterialGroupPtr group = osg::MaterialGroupBase::create();
    osg::beginEditCP(group, osg::MaterialGroupBase::MaterialFieldMask, 1);
    group->setMaterial(given);
    osg::endEditCP(group, osg::MaterialGroupBase::MaterialFieldMask, 1);
    add(files::makeNode("Plain", shared));
    const osg::NodePtr painted = add(files::makeNode("Painted", group));
    osg::addChild(painted, files::makeNode("a", shared));
    osg::addChild(painted, files::makeNode("b", shared));
    const GlbFile file = written();
    EXPECT_EQ(file.json["meshes"].size(), 2u);
    EXPECT_EQ(file.json["materials"][file.primitive(0)["material"].get<std::size_t>()]["name"], "own");
    EXPECT_EQ(file.json["materials"][file.primitive(1)["material"].get<std::size_t>()]["name"], "given");
    EXPECT_EQ(file.primitive(0)["attributes"], file.primitive(1)["attributes"]);
}

TEST_F(GlbNodesTest, TheTopmostGroupRulesTheOthers)
{
    osg::NodePtr place = root.get();
    for (const char* name : {"outer", "none", "inner"}) {
        const osg::MaterialGroupPtr group = osg::MaterialGroupBase::create();
        osg::beginEditCP(group, osg::MaterialGroupBase::MaterialFieldMask, 1);
        group->setMaterial(name == std::string("none") ? osg::MaterialPtr() : files::makeMaterial(name, {}));
        osg::endEditCP(group, osg::MaterialGroupBase::MaterialFieldMask, 1);
        const osg::NodePtr node = files::makeNode(name, group);
        osg::addChild(place, node);
        place = node;
    }
    osg::addChild(place, files::makeNode("a", geometry("a", triangle(), files::makeMaterial("own", {}))));
    const GlbFile file = written();
    ASSERT_EQ(file.json["materials"].size(), 1u);
    EXPECT_EQ(file.json["materials"][0]["name"], "outer");
}

TEST_F(GlbNodesTest, AChainOfAHundredThousandNodesIsWritten)
{
    osg::NodePtr bottom = root.get();
    for (int i = 0; i < 100'000; ++i) {
        const osg::NodePtr next = osg::makeNodeFor(osg::Group::create());
        osg::addChild(bottom, next);
        bottom = next;
    }
    const QString path = pathOf(QStringLiteral("deep.glb"));
    EXPECT_TRUE(files::glb::write(root.get(), path));
    const GlbFile file(path);
    EXPECT_EQ(file.json["nodes"].size(), 100'001u);
    // They only wrap others, so they have no step in an id.
    EXPECT_EQ(file.json["nodes"][99'999], json::parse(R"({"children": [100000], "extras": {"step": ""}})"));
    EXPECT_EQ(file.json["nodes"][100'000], json::object());
}

} // namespace
