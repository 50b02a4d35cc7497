#include "files/glb/GlbFold.h"

#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/SwitchMaterial.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "host/znOpenSGUberCamera/UberCamera.h"
#include "scene/MatrixMath.h"
#include "scene/Tags.h"
#include "scene/VariantTable.h"
#include "tests/files/glb/GlbTest.h"
#include "tests/support/BuiltInReading.h"

#include <QFile>

namespace
{

using nlohmann::json;

/// Writes as programs do, with the nodes folded.
class GlbFoldTest : public GlbTest
{
protected:
    GlbFoldTest() { options.fold = true; }

    static osg::NodePtr part(const std::string& name, const std::vector<std::string>& bodies)
    {
        const osg::NodePtr node = files::makeGroup(name);
        for (const std::string& body : bodies)
            osg::addChild(node, files::makeNode(body, geometry("", triangle())));
        return node;
    }
    static void give(const osg::NodePtr& node, osg::AttributeOwner owner, const std::string& name)
    {
        osg::addAttributes(node, owner, {{"Product", name}});
    }
    /// The names of the nodes, level by level, with the names of their meshes.
    static std::vector<std::pair<std::string, std::string>> names(const GlbFile& file)
    {
        std::vector<std::pair<std::string, std::string>> result;
        for (const json& node : file.json["nodes"])
            result.emplace_back(node.value("name", "-"),
                                node.contains("mesh") ? file.json["meshes"][node["mesh"].get<int>()].value("name", "-")
                                                      : std::string());
        return result;
    }
    using Names = std::vector<std::pair<std::string, std::string>>;
};

TEST_F(GlbFoldTest, BodiesBelowAPartBecomeItsMesh)
{
    add(part("bolt", {"bolt", "", "bolt"}));
    add(part("nut", {"nut"}));
    const GlbFile file = written();
    EXPECT_EQ(names(file), (Names{{"Root", ""}, {"bolt", "bolt"}, {"nut", "nut"}}));
    EXPECT_EQ(file.json["meshes"][0]["primitives"].size(), 3u);
    EXPECT_EQ(file.json["meshes"][1]["primitives"].size(), 1u);
}

TEST_F(GlbFoldTest, EachBodyKeepsItsMaterial)
{
    const osg::NodePtr bolt = add(files::makeGroup("bolt"));
    osg::addChild(bolt, files::makeNode("bolt", geometry("", triangle(), files::makeMaterial("steel", {}))));
    osg::addChild(bolt, files::makeNode("bolt", geometry("", triangle(), files::makeMaterial("brass", {}))));
    add(part("nut", {}));
    const GlbFile file = written();
    const json& primitives = file.json["meshes"][0]["primitives"];
    EXPECT_EQ(file.json["materials"][primitives[0]["material"].get<int>()]["name"], "steel");
    EXPECT_EQ(file.json["materials"][primitives[1]["material"].get<int>()]["name"], "brass");
}

TEST_F(GlbFoldTest, BodiesWithNamesOfTheirOwnAreNodes)
{
    add(part("engine", {"head", "block"}));
    add(part("gear", {"gear", "tooth"}));
    const GlbFile file = written();
    EXPECT_EQ(names(file), (Names{{"Root", ""},
                                  {"engine", ""},
                                  {"gear", ""},
                                  {"head", "head"},
                                  {"block", "block"},
                                  {"gear \u00B7 grey #cccccc", "gear"},
                                  {"tooth", "tooth"}}));
}

TEST_F(GlbFoldTest, TheMeshKeepsTheNameThatAllBodiesHave)
{
    add(part("crate.1", {"crate", "crate"}));
    const osg::NodePtr other = add(files::makeGroup("crate.2"));
    osg::addChild(other, files::makeNode("", geometry("lid", triangle())));
    const osg::NodePtr both = add(files::makeGroup("crate.3"));
    osg::addChild(both, files::makeNode("lid", geometry("cover", triangle())));
    EXPECT_EQ(names(written()),
              (Names{{"Root", ""}, {"crate.1", "crate"}, {"crate.2", "lid"}, {"crate.3", ""}, {"lid", "cover"}}));
}

TEST_F(GlbFoldTest, MeshesAreNamedAfterTheirProduct)
{
    const osg::NodePtr bolt = add(part("bolt.17", {"bolt.17"}));
    give(bolt, osg::AttributeOwner::Product, "bolt M6");
    const osg::NodePtr sub = add(files::makeGroup("frame"));
    give(sub, osg::AttributeOwner::Product, "frame 40");
    osg::addChild(sub, part("left", {"rail", "beam"}));
    EXPECT_EQ(names(written()), (Names{{"Root", ""},
                                       {"bolt.17", "bolt M6"},
                                       {"frame", ""},
                                       {"left", ""},
                                       {"rail", "frame 40"},
                                       {"beam", "frame 40"}}));
}

TEST_F(GlbFoldTest, OccurrencesShareTheMesh)
{
    const osg::GeometryPtr shared = geometry("", triangle());
    for (const char* name : {"bolt.1", "bolt.2"})
        osg::addChild(add(files::makeGroup(name)), files::makeNode(name, shared));
    const GlbFile file = written();
    EXPECT_EQ(names(file), (Names{{"Root", ""}, {"bolt.1", "bolt.1"}, {"bolt.2", "bolt.1"}}));
    EXPECT_EQ(result->meshes, 1u);
}

TEST_F(GlbFoldTest, BodiesWithFactsAreNodesNamedAfterTheirMaterial)
{
    const osg::MaterialPtr steel = files::makeMaterial("steel", {});
    const osg::NodePtr bolt = add(files::makeGroup("bolt"));
    for (int i = 0; i < 3; ++i) {
        const osg::NodePtr body = files::makeNode("bolt", geometry("", triangle(), steel));
        osg::addChild(bolt, body);
        if (i > 0)
            osg::addAttributes(body, osg::AttributeOwner::Occurrence, {{"Layer", std::string("3")}});
    }
    add(part("nut", {}));
    const GlbFile file = written();
    EXPECT_EQ(names(file), (Names{{"Root", ""},
                                  {"bolt", "bolt"},
                                  {"nut", ""},
                                  {"bolt \u00B7 steel", "bolt"},
                                  {"bolt \u00B7 steel 2", "bolt"}}));
    EXPECT_EQ(file.json["nodes"][3]["extras"], json::parse(R"({"attributes": {"Layer": "3"}, "step": "bolt#2"})"));
}

TEST_F(GlbFoldTest, AWrapperAndItsOnlyChildOfTheSameNameAreOne)
{
    const osg::NodePtr outer = add(files::makeTransform("bolt", osg::composed({{1, 2, 3}, {}, {1, 1, 1}, {}})));
    give(outer, osg::AttributeOwner::Occurrence, "outer");
    const osg::NodePtr middle = files::makeTransform("", {});
    osg::addChild(outer, middle);
    const osg::NodePtr inner = part("bolt", {"bolt"});
    give(inner, osg::AttributeOwner::Product, "M6");
    osg::addChild(middle, inner);
    add(part("nut", {}));
    const GlbFile file = written();
    EXPECT_EQ(names(file), (Names{{"Root", ""}, {"bolt", "M6"}, {"nut", ""}}));
    const json& node = file.json["nodes"][1];
    EXPECT_TRUE(node.contains("matrix"));
    EXPECT_EQ(node["extras"],
              json::parse(R"({"attributes": {"Product": "outer"}, "product": 0, "step": "bolt/bolt@M6"})"));
}

TEST_F(GlbFoldTest, WhatSaysSomethingOfItsOwnStaysANode)
{
    const auto pair = [this](const std::string& name, const osg::NodePtr& inner) {
        const osg::NodePtr outer = add(files::makeGroup(name));
        give(outer, osg::AttributeOwner::Product, "outer");
        osg::addChild(outer, inner);
        osg::addChild(inner, part("x", {}));
    };
    const osg::NodePtr clashing = files::makeGroup("a");
    give(clashing, osg::AttributeOwner::Product, "inner");
    pair("a", clashing);
    pair("b", files::makeTransform("b", osg::composed({{1, 2, 3}, {}, {1, 1, 1}, {}})));
    pair("c", files::makeGroup("other"));
    const osg::NodePtr drawings = files::makeGroup("d");
    osg::setTags(drawings, {"ptx::pmi"});
    pair("d", drawings);
    EXPECT_EQ(written().json["nodes"].size(), 1u + 4 * 3);
}

TEST_F(GlbFoldTest, ACameraIsOneWithItsNodeUnlessItHasAPlaceOfItsOwn)
{
    for (const bool isMoved : {false, true}) {
        const osg::UberCameraPtr camera = osg::UberCameraBase::create();
        osg::setName(camera, "lens");
        if (isMoved)
            camera->setTranslation({1, 2, 3});
        osg::addChild(add(files::makeGroup("eye")), files::makeNode("lens", camera));
    }
    const GlbFile file = written();
    ASSERT_EQ(file.json["nodes"][1]["children"].size(), 1u);
    EXPECT_TRUE(file.json["nodes"][3].contains("camera")) << "below the first eye, without the scale of the root";
    EXPECT_EQ(file.json["nodes"][4]["name"], "lens");
    EXPECT_TRUE(file.json["nodes"][4].contains("matrix"));
}

TEST_F(GlbFoldTest, InactiveSiblingsDoNotCount)
{
    const osg::NodePtr bolt = add(part("bolt", {"bolt", "hidden"}));
    bolt->getChild(1)->setActive(false);
    add(part("nut", {}));
    EXPECT_EQ(names(written()), (Names{{"Root", ""}, {"bolt", "bolt"}, {"nut", ""}}));
}

TEST_F(GlbFoldTest, TheMaterialOfAFoldedGroupIsSeen)
{
    const auto group = osg::MaterialGroup::create();
    osg::beginEditCP(group, osg::MaterialGroupBase::MaterialFieldMask, 1);
    group->setMaterial(files::makeMaterial("red", {}));
    osg::endEditCP(group, osg::MaterialGroupBase::MaterialFieldMask, 1);
    const osg::NodePtr bolt = add(files::makeGroup("bolt"));
    const osg::NodePtr paint = files::makeNode("", group);
    osg::addChild(bolt, paint);
    osg::addChild(paint, files::makeNode("bolt", geometry("", triangle(), files::makeMaterial("own", {}))));
    add(part("nut", {}));
    const GlbFile file = written();
    EXPECT_EQ(names(file), (Names{{"Root", ""}, {"bolt", "bolt"}, {"nut", ""}}));
    ASSERT_EQ(file.json["materials"].size(), 1u);
    EXPECT_EQ(file.json["materials"][0]["name"], "red");
}

TEST_F(GlbFoldTest, TheFileBeginsWhereSomethingIsTold)
{
    const osg::NodePtr file = add(files::makeGroup("crate.stp"));
    const osg::NodePtr product = part("crate", {"crate"});
    give(product, osg::AttributeOwner::Product, "crate");
    osg::addChild(file, product);
    const GlbFile glb = written();
    EXPECT_EQ(names(glb), (Names{{"crate", "crate"}}));
    EXPECT_TRUE(glb.json["nodes"][0].contains("matrix"));
    EXPECT_EQ(glb.json["nodes"][0]["extras"], json::parse(R"({"product": 0})"));
}

TEST_F(GlbFoldTest, APlaceKeepsTheNodeOfTheUnit)
{
    const osg::NodePtr place = add(files::makeTransform("crate", osg::composed({{1, 2, 3}, {}, {1, 1, 1}, {}})));
    osg::addChild(place, files::makeNode("crate", geometry("", triangle())));
    EXPECT_EQ(names(written()), (Names{{"Root", ""}, {"crate", "crate"}}));
}

/// What a file is read as, written and read and written again.
class GlbRoundTest : public GlbFoldTest
{
protected:
    QByteArray bytesAfterARound(const QByteArray& before)
    {
        const QString path = pathOf(QStringLiteral("before.glb"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(before);
        file.close();
        const files::ReadResult read = readScene(path);
        EXPECT_TRUE(read) << (read ? "" : read.error().toString().toStdString());
        const osg::RefPtr<osg::NodePtr> top(files::makeGroup("Scene"));
        osg::addChild(top.get(), read.value());
        if (const auto variants = osg::VariantAttachment::of(read.value()))
            top.get()->addAttachment(osg::VariantAttachment::create(below(variants->table())));
        const QString after = pathOf(QStringLiteral("after.glb"));
        EXPECT_TRUE(files::glb::write(top.get(), after, options));
        return bytesOf(after);
    }
    /// As a session takes the variants of what it read: from the root of the scene.
    static osg::VariantTable below(osg::VariantTable table)
    {
        for (osg::VariantTable::Set& set : table.sets)
            for (osg::VariantTable::NodeState& entry : set.nodes)
                entry.node.insert(entry.node.begin(), 0);
        return table;
    }
    QByteArray bytesNow()
    {
        const QString path = pathOf(QStringLiteral("now.glb"));
        EXPECT_TRUE(files::glb::write(root.get(), path, options));
        return bytesOf(path);
    }
    static QByteArray bytesOf(const QString& path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
};

TEST_F(GlbRoundTest, ARoundGivesTheSameBytes)
{
    files::MaterialLook look;
    look.diffuse = {0.3f, 0.07f, 0.7f};
    look.shininess = 17;
    osg::Mesh mesh = triangle();
    mesh.normals = std::vector<osg::Vec3f>{{0.1f, 0.2f, 0.3f}, {3, 1, 2}, {-0.7f, 0.7f, 0.1f}};
    mesh.colors = std::vector<osg::Color4f>{{0.1f, 0.2f, 0.3f, 0.5f}, {0.9f, 0.8f, 0.01f, 1}, {0.5f, 0.5f, 0.5f, 1}};
    const osg::NodePtr assembly = add(files::makeGroup("assembly"));
    give(assembly, osg::AttributeOwner::Product, "assembly");
    for (const char* name : {"left", "right"}) {
        const osg::NodePtr place =
            files::makeTransform(name, osg::composed({{1, 2, 3}, {0.5f, 0.5f, 0.5f, 0.5f}, {1, 1, 1}, {}}));
        osg::addChild(assembly, place);
        osg::addChild(place, files::makeNode(name, geometry("", mesh, files::makeMaterial("", look))));
        osg::addChild(place, files::makeNode(name, geometry("", triangle())));
    }
    const QByteArray before = bytesNow();
    EXPECT_EQ(bytesAfterARound(before), before);
}

TEST_F(GlbRoundTest, TheFrameOfAFileBecomesItsScene)
{
    const osg::NodePtr frame = add(files::makeTransform("Hall", files::toMillimetresZUp(1000, files::UpAxis::Y)));
    osg::addAttributes(frame, osg::AttributeOwner::Occurrence, {{"author", std::string("Ada")}});
    osg::addChild(frame, part("a", {"a"}));
    osg::addChild(frame, files::makeNode("b", geometry("", triangle())));
    const GlbFile file = written();
    EXPECT_EQ(names(file), (Names{{"a", "a"}, {"b", "b"}}));
    EXPECT_EQ(file.json["scenes"],
              json::parse(R"([{"name": "Hall", "nodes": [0, 1], "extras": {"attributes": {"author": "Ada"}}}])"));
    EXPECT_FALSE(file.json["nodes"][0].contains("matrix"));
    const QByteArray before = bytesNow();
    EXPECT_EQ(bytesAfterARound(before), before);
}

TEST_F(GlbRoundTest, VariantsComeBack)
{
    const osg::SwitchMaterialPtr glass = osg::SwitchMaterialBase::create();
    osg::setName(glass, "glass");
    for (const char* name : {"clear", "dark"})
        glass->addMaterial(files::makeMaterial(name, {}));
    add(files::makeNode("roof", geometry("", triangle(), glass)));
    const osg::NodePtr hidden =
        add(files::makeTransform("box", osg::composed({{1, 2, 3}, {0.5f, 0.5f, 0.5f, 0.5f}, {2, 1, 1}, {}})));
    osg::addChild(hidden, files::makeNode("box", geometry("", triangle())));
    hidden->setActive(false);
    osg::VariantTable table;
    table.groups = {"light"};
    table.sets = {{"day", "light", "sun", {}, {{"glass", "clear"}}, {{{1}, "!Disable"}}},
                  {"night", "light", "", {}, {{"glass", "dark"}}, {{{1}, "!Enable"}}}};
    root.get()->addAttachment(osg::VariantAttachment::create(table));
    const QByteArray before = bytesNow();
    EXPECT_TRUE(before.contains("KHR_materials_variants"));
    for (const auto hiding : {files::glb::Hidden::Shrink, files::glb::Hidden::Keep}) {
        options.hidden = hiding;
        const QByteArray written = bytesNow();
        EXPECT_EQ(written == before, hiding == files::glb::Hidden::Shrink);
        EXPECT_EQ(bytesAfterARound(written), written);
    }
}

TEST_F(GlbRoundTest, AnotherUnitKeepsTheFrameAsANode)
{
    options.millimetresPerUnit = 1;
    const osg::NodePtr frame = add(files::makeTransform("Hall", files::toMillimetresZUp(1000, files::UpAxis::Y)));
    osg::addChild(frame, part("a", {"a"}));
    EXPECT_EQ(names(written()), (Names{{"Root", ""}, {"Hall", ""}, {"a", "a"}}));
}

} // namespace
