#include "files/glb/GlbVariants.h"

#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/SwitchMaterial.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGUberCamera/UberCamera.h"
#include "host/znOpenSGUberMaterial/UberMaterial.h"
#include "tests/files/glb/GlbTest.h"

#include <gmock/gmock.h>

#include <limits>

namespace
{

using nlohmann::json;

class GlbVariantsTest : public GlbTest
{
protected:
    static osg::MaterialPtr paint(const char* name, float red)
    {
        const osg::SimpleMaterialPtr material = osg::SimpleMaterialBase::create();
        osg::setName(material, name);
        material->setDiffuse({red, 0, 0});
        return material;
    }

    /// A switch material of this name that shows the second of "Clear", "Tinted" and "Dark".
    static osg::SwitchMaterialPtr glass(const char* name)
    {
        const osg::SwitchMaterialPtr choices = osg::SwitchMaterialBase::create();
        osg::setName(choices, name);
        choices->addMaterial(paint("Clear", 1));
        choices->addMaterial(paint("Tinted", 0.5f));
        choices->addMaterial(paint("Dark", 0.25f));
        choices->setChoice(1);
        return choices;
    }

    osg::NodePtr addPart(const char* name, const osg::MaterialPtr& material)
    {
        return add(files::makeNode(name, geometry("", triangle(), material)));
    }

    void attach(osg::VariantTable table) { root->addAttachment(osg::VariantAttachment::create(std::move(table))); }

    std::string materialName(const json& number) const
    {
        return m_json["materials"][number.get<std::size_t>()]["name"].get<std::string>();
    }

    json writtenJson() { return m_json = written().json; }

    json m_json;
};

TEST_F(GlbVariantsTest, ASwitchMaterialIsWhatItShows)
{
    addPart("roof", glass("Roof Glass"));
    json file = writtenJson();
    EXPECT_EQ(materialName(file["meshes"][0]["primitives"][0]["material"]), "Tinted");
    EXPECT_EQ(file["materials"].size(), 1u);
    EXPECT_FALSE(file.contains("extensionsUsed"));
    EXPECT_FALSE(file.contains("cameras"));
}

TEST_F(GlbVariantsTest, AnUberMaterialHasItsLook)
{
    const osg::UberMaterialPtr material = osg::UberMaterialBase::create();
    osg::SurfaceLook look;
    look.diffuse = {1, 0, 1};
    look.transparency = 0.75f;
    material->setLook(look);
    addPart("part", material);
    json file = writtenJson();
    EXPECT_EQ(file["materials"][0]["pbrMetallicRoughness"]["baseColorFactor"], json::parse("[1.0, 0.0, 1.0, 0.25]"));
}

TEST_F(GlbVariantsTest, EachSetBecomesAVariantOfTheMaterialsItNames)
{
    addPart("roof", glass("Roof Glass"));
    addPart("body", paint("Body", 0.125f));
    osg::VariantTable table;
    table.sets = {{"Day", "", "", {}, {{"Roof Glass", "Clear"}}, {}},
                  {"Night", "", "", {}, {{"Roof Glass", "Dark"}, {"Body", "Body"}}, {}},
                  {"Noon", "", "", {}, {{"Roof Glass", "Clear"}}, {}},
                  {"Odd", "", "", {}, {{"Roof Glass", "unknown"}}, {}},
                  {"Rest", "", "", {}, {}, {}}};
    attach(table);
    json file = writtenJson();
    EXPECT_EQ(file["extensionsUsed"], json::parse(R"(["KHR_materials_variants"])"));
    EXPECT_EQ(file["extensions"]["KHR_materials_variants"]["variants"],
              json::parse(R"([{"name":"Day"},{"name":"Night"},{"name":"Noon"},{"name":"Odd"},{"name":"Rest"}])"));
    json& roof = file["meshes"][0]["primitives"][0];
    EXPECT_EQ(materialName(roof["material"]), "Tinted");
    json& mappings = roof["extensions"]["KHR_materials_variants"]["mappings"];
    ASSERT_EQ(mappings.size(), 3u);
    EXPECT_EQ(materialName(mappings[0]["material"]), "Clear");
    EXPECT_EQ(mappings[0]["variants"], json::parse("[0, 2]"));
    EXPECT_EQ(materialName(mappings[1]["material"]), "Dark");
    EXPECT_EQ(mappings[1]["variants"], json::parse("[1]"));
    EXPECT_EQ(materialName(mappings[2]["material"]), "Tinted");
    EXPECT_EQ(mappings[2]["variants"], json::parse("[3]"));
    EXPECT_FALSE(file["meshes"][1]["primitives"][0].contains("extensions"));
}

TEST_F(GlbVariantsTest, ANestedSwitchIsFollowed)
{
    const osg::SwitchMaterialPtr outer = osg::SwitchMaterialBase::create();
    osg::setName(outer, "Outer");
    outer->addMaterial(paint("Plain", 1));
    outer->addMaterial(glass("Inner"));
    addPart("roof", outer);
    osg::VariantTable table;
    table.sets = {{"A", "", "", {}, {{"Inner", "Dark"}}, {}},
                  {"B", "", "", {}, {{"Outer", "Inner"}, {"Inner", "Dark"}}, {}}};
    attach(table);
    json file = writtenJson();
    json& primitive = file["meshes"][0]["primitives"][0];
    EXPECT_EQ(materialName(primitive["material"]), "Plain");
    json& mappings = primitive["extensions"]["KHR_materials_variants"]["mappings"];
    ASSERT_EQ(mappings.size(), 1u);
    EXPECT_EQ(materialName(mappings[0]["material"]), "Dark");
    EXPECT_EQ(mappings[0]["variants"], json::parse("[1]"));
}

TEST_F(GlbVariantsTest, TheMaterialOfAGroupAboveHasVariantsToo)
{
    const osg::MaterialGroupPtr group = osg::MaterialGroupBase::create();
    group->setMaterial(glass("Roof Glass"));
    const osg::NodePtr node = add(osg::makeNodeFor(group));
    osg::addChild(node, files::makeNode("roof", geometry("", triangle(), paint("own", 1))));
    osg::VariantTable table;
    table.sets = {{"Day", "", "", {}, {{"Roof Glass", "Clear"}}, {}}};
    attach(table);
    json file = writtenJson();
    json& primitive = file["meshes"][0]["primitives"][0];
    EXPECT_EQ(materialName(primitive["material"]), "Tinted");
    EXPECT_EQ(primitive["extensions"]["KHR_materials_variants"]["mappings"].size(), 1u);
}

TEST_F(GlbVariantsTest, VisibilityGroupsAndViewpointsAreExtras)
{
    addPart("roof", paint("a", 1));
    addPart("hood", paint("b", 0.5f))->setActive(false);
    addPart("hidden for good", paint("c", 0.25f))->setActive(false);
    osg::VariantTable table;
    table.sets = {
        {"Open", "Außen", "Open_vp", {"Open_vp"}, {}, {{{0}, "!Disable"}, {{1}, "!Enable"}, {{9}, "!Enable"}}},
        {"Closed", "", "", {}, {}, {{{0}, "!Enable"}}}};
    attach(table);
    json file = writtenJson();
    EXPECT_EQ(file["asset"]["extras"]["variantSets"],
              json::parse(R"([{"name":"Open","group":"Außen","viewpoint":"Open_vp"},{"name":"Closed"}])"));
    ASSERT_EQ(file["nodes"].size(), 3u);
    EXPECT_EQ(file["nodes"][1]["extras"]["variants"], json::parse(R"({"Open":false,"Closed":true})"));
    EXPECT_FALSE(file["nodes"][1].contains("extensions"));
    EXPECT_EQ(file["nodes"][2]["extras"]["variants"], json::parse(R"({"Open":true})"));
    EXPECT_EQ(file["nodes"][2]["extensions"]["KHR_node_visibility"], json::parse(R"({"visible":false})"));
    EXPECT_EQ(file["extensionsUsed"], json::parse(R"(["KHR_node_visibility"])"));
}

/// A hood at (7, 8, 9), turned and twice as large, that is hidden at present and shown in a set.
class HiddenNodeTest : public GlbVariantsTest
{
protected:
    HiddenNodeTest()
    {
        addPart("roof", paint("a", 1));
        const osg::NodePtr hood = add(files::makeTransform("hood", turned));
        osg::addChild(hood, files::makeNode("lid", geometry("", triangle(), paint("b", 0.5f))));
        hood->setActive(false);
        osg::VariantTable table;
        table.sets = {{"Open", "", "", {}, {}, {{{1}, "!Enable"}}}, {"Closed", "", "", {}, {}, {{{1}, "!Disable"}}}};
        attach(table);
    }

    const osg::Matrix turned{{0, 2, 0, 0, -2, 0, 0, 0, 0, 0, 2, 0, 7, 8, 9, 1}};
};

TEST_F(HiddenNodeTest, IsTooSmallToBeSeenAndTellsItsTransform)
{
    json hood = writtenJson()["nodes"][2];
    EXPECT_EQ(hood["name"], "hood");
    EXPECT_EQ(hood["translation"], json::parse("[7.0, 8.0, 9.0]"));
    for (const json& scale : hood["scale"])
        EXPECT_FLOAT_EQ(scale.get<float>(), 1e-6f);
    EXPECT_FALSE(hood.contains("matrix"));
    EXPECT_EQ(hood["extras"]["shown"]["matrix"], json(turned.values));
    EXPECT_EQ(hood["extensions"]["KHR_node_visibility"]["visible"], false);
    EXPECT_EQ(warnings(), QStringList());
}

TEST_F(HiddenNodeTest, ThatShearsTellsBothSteps)
{
    const osg::Transform3DPtr core = osg::Transform3DBase::create();
    core->setMatrix({{1, 0, 0, 0, 0.5f, 1, 0, 0, 0, 0, 1, 0, 7, 8, 9, 1}});
    root.get()->getChild(1)->setCore(core);
    json file = writtenJson();
    json& shown = file["nodes"][2]["extras"]["shown"];
    EXPECT_EQ(file["nodes"][2]["translation"], json::parse("[7.0, 8.0, 9.0]"));
    EXPECT_EQ(shown["translation"], json::parse("[7.0, 8.0, 9.0]"));
    EXPECT_EQ(shown["scale"].size(), 3u);
    EXPECT_FALSE(file["nodes"][2].contains("rotation"));
    EXPECT_TRUE(file["nodes"][3].contains("rotation"));
}

TEST_F(HiddenNodeTest, KeepsItsTransformWhereThatIsAsked)
{
    options.hidden = files::glb::Hidden::Keep;
    json hood = writtenJson()["nodes"][2];
    EXPECT_EQ(hood["matrix"], json(turned.values));
    EXPECT_FALSE(hood["extras"].contains("shown"));
    EXPECT_EQ(hood["extensions"]["KHR_node_visibility"]["visible"], false);
}

TEST_F(HiddenNodeTest, IsLeftOutWithAWordWhereThatIsAsked)
{
    options.hidden = files::glb::Hidden::LeaveOut;
    json file = writtenJson();
    EXPECT_EQ(file["nodes"].size(), 2u);
    EXPECT_EQ(file["meshes"].size(), 1u);
    EXPECT_FALSE(file.contains("extensionsUsed"));
    EXPECT_EQ(warnings(), QStringList{QStringLiteral("1 hidden nodes that variant sets show were left out")});
}

TEST_F(GlbVariantsTest, ACameraStandsInANodeOfItsOwnSize)
{
    const osg::UberCameraPtr camera = osg::UberCameraBase::create();
    osg::setName(camera, "Open_vp");
    camera->setTranslation({10, -20, 30});
    camera->setFieldOfView(90);
    camera->setNear(50);
    camera->setFar(2000);
    const osg::NodePtr node = add(osg::makeNodeFor(camera));
    osg::setName(node, "Open_vp");
    json file = writtenJson();
    json& lens = file["cameras"][0];
    EXPECT_EQ(lens["name"], "Open_vp");
    EXPECT_EQ(lens["type"], "perspective");
    EXPECT_NEAR(lens["perspective"]["yfov"].get<double>(), 1.5707963, 1e-6);
    EXPECT_NEAR(lens["perspective"]["znear"].get<double>(), 0.05, 1e-8);
    EXPECT_NEAR(lens["perspective"]["zfar"].get<double>(), 2, 1e-6);
    EXPECT_EQ(file["nodes"][1]["matrix"],
              json::parse("[1.0,0.0,0.0,0.0, 0.0,1.0,0.0,0.0, 0.0,0.0,1.0,0.0, 10.0,-20.0,30.0,1.0]"));
    EXPECT_EQ(file["nodes"][1]["children"], json::parse("[2]"));
    EXPECT_EQ(file["nodes"][2]["camera"], 0);
    for (const json& scale : file["nodes"][2]["scale"])
        EXPECT_NEAR(scale.get<double>(), 1000, 1e-3);
}

TEST_F(GlbVariantsTest, ACameraMeasuresInTheUnitOfTheFile)
{
    const osg::UberCameraPtr camera = osg::UberCameraBase::create();
    camera->setNear(50);
    camera->setFar(2000);
    add(osg::makeNodeFor(camera));
    options.millimetresPerUnit = 10;
    json file = written().json;
    EXPECT_FLOAT_EQ(file["cameras"][0]["perspective"]["znear"].get<float>(), 5);
    EXPECT_FLOAT_EQ(file["cameras"][0]["perspective"]["zfar"].get<float>(), 200);
    EXPECT_FLOAT_EQ(file["nodes"][2]["scale"][0].get<float>(), 10);
}

TEST_F(GlbVariantsTest, ACameraBelowAScaleKeepsItsOwnSize)
{
    const osg::NodePtr scaled =
        add(files::makeTransform("scaled", {{0, 20, 0, 0, -20, 0, 0, 0, 0, 0, 20, 0, 1, 2, 3, 1}}));
    osg::addChild(scaled, osg::makeNodeFor(osg::UberCameraBase::create()));
    json file = writtenJson();
    for (const json& scale : file["nodes"][3]["scale"])
        EXPECT_NEAR(scale.get<double>(), 50, 1e-4);
}

TEST_F(GlbVariantsTest, AParallelCameraTellsItsHeight)
{
    const osg::UberCameraPtr camera = osg::UberCameraBase::create();
    camera->setProjection(osg::UberCameraBase::Parallel);
    camera->setHeight(3000);
    camera->setNear(0);
    camera->setFar(8000);
    add(osg::makeNodeFor(camera));
    json lens = writtenJson()["cameras"][0];
    EXPECT_EQ(lens["type"], "orthographic");
    EXPECT_NEAR(lens["orthographic"]["xmag"].get<double>(), 1.5, 1e-6);
    EXPECT_NEAR(lens["orthographic"]["ymag"].get<double>(), 1.5, 1e-6);
    EXPECT_EQ(lens["orthographic"]["znear"], 0.0);
    EXPECT_EQ(lens["orthographic"]["zfar"], 8.0);
}

TEST_F(GlbVariantsTest, ImpossibleOpticsStayValid)
{
    for (const float value :
         {0.0f, -5.0f, std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()})
        for (const auto projection : {osg::UberCameraBase::Perspective, osg::UberCameraBase::Parallel}) {
            const osg::UberCameraPtr camera = osg::UberCameraBase::create();
            camera->setProjection(projection);
            camera->setFieldOfView(value);
            camera->setHeight(value);
            camera->setNear(value);
            camera->setFar(value);
            add(osg::makeNodeFor(camera));
        }
    EXPECT_EQ(writtenJson()["cameras"].size(), 8u);
}

} // namespace
