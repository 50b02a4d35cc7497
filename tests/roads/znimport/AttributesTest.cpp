// Attributes, parts lists and choices of the tool, from the file to the output.

#include "scene/Attributes.h"
#include "files/SceneBuilding.h"
#include "files/scenefile/SceneFile.h"
#include "scene/SceneEdits.h"
#include "tests/files/glb/GlbFile.h"
#include "tests/roads/znimport/ToolRun.h"
#include "tests/support/HostileAttributes.h"

#include <QFileInfo>

#include <map>
#include <set>
#include <string>
#include <vector>

namespace
{

using nlohmann::json;

class ZnimportAttributesTest : public ToolRun
{
protected:
    static QString flywheel() { return text(EXAMPLE_MODELS "/flywheel.step"); }
    static QString cart() { return text(EXAMPLE_MODELS "/../plmxml/cart.plmxml"); }

    static Ending run(const QStringList& arguments)
    {
        const Ending ending = znimport(arguments);
        EXPECT_EQ(ending.exitCode, 0) << ending.errors.toStdString();
        return ending;
    }

    json jsonOf(const char* name) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return json::parse(file.readAll().toStdString());
    }

    /// The document of the GLB file that a run writes.
    json glbOf(const QStringList& arguments)
    {
        run(arguments + QStringList{text("-o"), path("out.glb")});
        return GlbFile(path("out.glb")).json;
    }
};

/// The numbers of the nodes at and below the first node of this name.
std::vector<std::size_t> below(const json& glb, const std::string& name)
{
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < glb["nodes"].size() && found.empty(); ++i)
        if (glb["nodes"][i].value("name", "") == name)
            found.push_back(i);
    for (std::size_t i = 0; i < found.size(); ++i)
        for (const json& child : glb["nodes"][found[i]].value("children", json::array()))
            found.push_back(child.get<std::size_t>());
    return found;
}

/// The names of the materials that are seen below the first node of this name.
std::set<std::string> materialsBelow(const json& glb, const std::string& name)
{
    std::set<std::string> materials;
    for (const std::size_t node : below(glb, name))
        if (glb["nodes"][node].contains("mesh"))
            for (const json& primitive : glb["meshes"][glb["nodes"][node]["mesh"].get<std::size_t>()]["primitives"])
                materials.insert(glb["materials"][primitive["material"].get<std::size_t>()].value("name", ""));
    return materials;
}

TEST_F(ZnimportAttributesTest, TheTreeShowsThemAtTheFirstNodeOfAProduct)
{
    const QString tree = run({flywheel(), text("--tree-attributes")}).output;
    EXPECT_TRUE(tree.contains(text("      left bearing [Transform3D], at -60 0 12\n"
                                   "        product: Product = Lagerböck\n"
                                   "        product: Product id = Lagerböck\n")))
        << tree.toStdString();
    EXPECT_EQ(tree.count(text("Product id = Lagerböck")), 1);
    EXPECT_FALSE(run({flywheel(), text("--tree")}).output.contains(text("product:")));
}

TEST_F(ZnimportAttributesTest, TheReportCountsThemByName)
{
    run({flywheel(), text("--report"), path("report.json")});
    EXPECT_EQ(jsonOf("report.json")["files"][0]["attributes"], json::parse(R"({"Product": 9, "Product id": 9})"));
}

TEST_F(ZnimportAttributesTest, WhatIsNotChosenIsInNoOutput)
{
    EXPECT_TRUE(glbOf({flywheel()}).contains("extras"));
    EXPECT_FALSE(glbOf({flywheel(), text("--attributes"), text("none")}).contains("extras"));
    const json names = glbOf({flywheel(), text("--attributes"), text("names")});
    EXPECT_EQ(names["extras"]["products"], json::parse(R"([{"Product": "", "Product id": ""}])"));
    const json some = glbOf({flywheel(), text("--attribute-filter"), text("!Product")});
    EXPECT_EQ(some["extras"]["products"][0], json::parse(R"({"Product id": "flywheel unit"})"));
}

/// The measures are those of the model's own dimensions: a box of 160 by 120 by 12 with four holes, and so on; the
/// cover's are plane, so that they are exact to the last digit.
TEST_F(ZnimportAttributesTest, APartsListTellsExactMeasures)
{
    run({flywheel(), text("--bom"), path("parts.json")});
    std::map<std::string, json> parts;
    const json list = jsonOf("parts.json");
    for (const json& part : list["parts"])
        parts[part["product"].get<std::string>()] = part;
    EXPECT_EQ(parts.size(), 7u);
    EXPECT_EQ(parts["bolt M10"]["count"], 4);
    EXPECT_EQ(parts["Lagerböck"]["count"], 2);
    EXPECT_EQ(parts["bolt M10"]["path"], "flywheel.step/flywheel unit/fastener 1@fastener/bolt@bolt M10");
    for (const auto& [name, part] : parts)
        EXPECT_EQ(part["measured"], "exact") << name;
    EXPECT_NEAR(parts["cover"]["area"].get<double>(), 86848, 1e-3);
    EXPECT_NEAR(parts["cover"]["volume"].get<double>(), 128724, 1e-3);
}

TEST_F(ZnimportAttributesTest, MeasuresAreTakenOnlyForAPartsList)
{
    EXPECT_FALSE(run({flywheel(), text("--tree-attributes")}).output.contains(text("Exact")));
}

TEST_F(ZnimportAttributesTest, KeepingTakesAllElseOutOfAllOutputs)
{
    const json glb =
        glbOf({flywheel(), text("--keep"), text("product=bolt M10"), text("--report"), path("report.json")});
    EXPECT_EQ(glb["meshes"].size(), 1u);
    EXPECT_EQ(jsonOf("report.json")["scene"]["placedGeometries"], 4);
    const Ending none = znimport({flywheel(), text("--keep"), text("name=nothing"), text("-o"), path("none.glb")});
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_TRUE(none.errors.contains(text("nothing in the scene matches --keep 'name=nothing'")));
    EXPECT_FALSE(QFile::exists(path("none.glb")));
}

TEST_F(ZnimportAttributesTest, HidingLeavesItInTheTree)
{
    const QStringList hidden = {flywheel(), text("--hide"), text("product=cover"), text("--tree")};
    EXPECT_TRUE(run(hidden).output.contains(text("cover (inactive) [Transform3D]")));
    EXPECT_TRUE(below(glbOf(hidden), "cover").empty());
}

TEST_F(ZnimportAttributesTest, WrongWishesAreTold)
{
    for (const QStringList& wish :
         {QStringList{text("--keep"), text("colour=red")}, QStringList{text("--hide"), text("name")},
          QStringList{text("--attributes"), text("some")}, QStringList{text("--bom"), text("parts.txt")},
          QStringList{text("--bom-levels"), text("deep")}}) {
        const Ending ending = znimport(QStringList{flywheel()} + wish);
        EXPECT_EQ(ending.exitCode, 2) << wish.join(QLatin1Char(' ')).toStdString();
        EXPECT_TRUE(ending.errors.contains(wish.first())) << ending.errors.toStdString();
    }
}

TEST_F(ZnimportAttributesTest, ASceneFileWithoutAShapeIsNamedAsEmpty)
{
    const osg::RefPtr<osg::NodePtr> root(osg::Node::create());
    ASSERT_TRUE(osg::scenefile::writeSceneFile(root, path("none.osb")));
    const Ending ending = run({path("none.osb")});
    EXPECT_TRUE(ending.errors.contains(text("the file is empty: it holds no shape, mesh or curve")))
        << ending.errors.toStdString();
}

/// The frame is an instance with a material, the second crate has one by its instance and another by its occurrence.
TEST_F(ZnimportAttributesTest, MaterialsOfAProductStructureAreSeenOnItsParts)
{
    const json glb = glbOf({cart()});
    EXPECT_EQ(materialsBelow(glb, "Crate 2"), std::set<std::string>{"Signal red"});
    EXPECT_EQ(materialsBelow(glb, "Crate 1"), (std::set<std::string>{"iron", "oak"}));
    EXPECT_EQ(materialsBelow(glb, "Frame"), std::set<std::string>{"Beech"});
}

/// A converter of another maker may write anything.
TEST_F(ZnimportAttributesTest, HostileAttributesComeThroughAllOutputs)
{
    const osg::RefPtr<osg::NodePtr> root(files::makeGroup("root"));
    osg::Mesh mesh;
    mesh.positions = std::vector<osg::Vec3f>{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    mesh.triangles = std::vector<std::uint32_t>{0, 1, 2};
    const osg::NodePtr part = files::makeNode("part", files::makeGeometry("", mesh, {}));
    osg::addChild(root.get(), part);
    osg::addAttributes(part, osg::AttributeOwner::Product, hostileAttributes(2'000'000, 20'000));
    ASSERT_TRUE(osg::scenefile::writeSceneFile(root, path("hostile.osb")));

    const Ending ending =
        znimport({path("hostile.osb"), text("--tree-attributes"), text("--report"), path("report.json"), text("--bom"),
                  path("parts.csv"), text("-o"), path("out.glb")});
    EXPECT_EQ(ending.exitCode, 0) << ending.errors.toStdString();
    EXPECT_TRUE(ending.errors.contains(text("the parts list has columns for 1000 of 20007 attributes")))
        << ending.errors.toStdString();
    EXPECT_TRUE(ending.output.contains(text("product: \\x1b[31m\\x07\\x0d\\x0a\\x00\\x7f\\xc2\\x9b = ")));
    EXPECT_TRUE(ending.output.contains(text("... (2000000 bytes)\n")));
    for (const QChar letter : ending.output)
        ASSERT_TRUE(letter == u'\n' || letter.category() != QChar::Other_Control) << letter.unicode();
    const json report = jsonOf("report.json")["files"][0];
    EXPECT_EQ(report["attributes"].size(), 10'000u);
    EXPECT_EQ(report["attributeNamesLeftOut"], 10'007);
    EXPECT_EQ(GlbFile(path("out.glb")).json["extras"]["products"][0].size(), 20'007u);
    EXPECT_LT(QFileInfo(path("report.json")).size(), 1'000'000);
}

} // namespace
