// What the numbers of a material become in the scene.

#include "scene/EditAudit.h"
#include "tests/cad/visualization/PLMXMLStructureTest.h"

namespace HB::Visualization
{

namespace
{

class SceneMaterialsTest : public PLMXMLStructureTest
{
protected:
    std::string materialOf(const std::string& attributes)
    {
        build("<InstanceGraph rootRefs='i'><Instance id='i' materialRef='m'/></InstanceGraph><Material id='m' " +
              attributes + "/>");
        return materials();
    }
};

TEST_F(SceneMaterialsTest, EveryNumberGoesToItsPlace)
{
    EXPECT_EQ(materialOf("name='steel' ambient='0.1 0.2 0.3' diffuse='0.4 0.5 0.6' emissive='0.7 0.8 0.9' "
                         "specular='0.15 0.25 0.35' alpha='0.25' shininess='64'"),
              "steel ambient 0.1 0.2 0.3 diffuse 0.4 0.5 0.6 emission 0.7 0.8 0.9 specular 0.15 0.25 0.35 "
              "transparency 0.75 shininess 64\n");
}

TEST_F(SceneMaterialsTest, WithoutAttributesTheDefaultsOfTheDocumentHold)
{
    EXPECT_EQ(materialOf(""), "- ambient 0 0 0 diffuse 0.5 0.5 0.5 emission 0 0 0 specular 0 0 0 transparency 0 "
                              "shininess 0\n");
}

TEST_F(SceneMaterialsTest, AListOfAnotherLengthRepeatsTheColourBefore)
{
    EXPECT_EQ(materialOf("name='m' ambient='0.1 0.2 0.3' diffuse='0.4 0.5 0.6 0.7' emissive='1' specular='0.2 0.4'"),
              "m ambient 0.1 0.2 0.3 diffuse 0.1 0.2 0.3 emission 0.1 0.2 0.3 specular 0.1 0.2 0.3 transparency 0 "
              "shininess 0\n");
    EXPECT_EQ(materialOf("name='m' diffuse='0.4 0.5 0.6' emissive='0.7 0.8 0.9 ' specular='1 1'"),
              "m ambient 0 0 0 diffuse 0.4 0.5 0.6 emission 0.4 0.5 0.6 specular 0.4 0.5 0.6 transparency 0 "
              "shininess 0\n");
}

TEST_F(SceneMaterialsTest, EmissionComesBeforeSpecular)
{
    EXPECT_EQ(materialOf("name='m' emissive='0.7 0.8 0.9' specular='1 1'"),
              "m ambient 0 0 0 diffuse 0.5 0.5 0.5 emission 0.7 0.8 0.9 specular 0.7 0.8 0.9 transparency 0 "
              "shininess 0\n");
}

TEST_F(SceneMaterialsTest, OnlyTheFirstColourFallsBackToBlack)
{
    EXPECT_EQ(materialOf("name='m' ambient='0.1 0.2' diffuse='1'"),
              "m ambient 0 0 0 diffuse 0 0 0 emission 0 0 0 specular 0 0 0 transparency 0 shininess 0\n");
}

TEST_F(SceneMaterialsTest, NothingIsClampedOrScaled)
{
    EXPECT_EQ(materialOf("name='m' ambient='2 -1 0' alpha='1.5' shininess='-3'"),
              "m ambient 2 -1 0 diffuse 0.5 0.5 0.5 emission 0 0 0 specular 0 0 0 transparency -0.5 shininess -3\n");
}

TEST_F(SceneMaterialsTest, GroupAndMaterialBearTheName)
{
    materialOf("name='Stahl \xC3\xA4'");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    Stahl \xC3\xA4 [MaterialGroup] material Stahl \xC3\xA4\n");
}

TEST_F(SceneMaterialsTest, TheMaterialIsEditedAtOnceWithAllFields)
{
    load("<InstanceGraph rootRefs='i'><Instance id='i' materialRef='m'/></InstanceGraph><Material id='m'/>");
    const osg::EditAudit audit;
    m_tree = m_structure->createScene();
    int brackets = 0;
    for (const auto& bracket : audit.brackets())
        brackets += bracket.type == "SimpleMaterial" && bracket.mask == 0xFFFFFFFF;
    EXPECT_EQ(brackets, 1);
    EXPECT_THAT(audit.unbracketed(), testing::IsEmpty());
}

} // namespace

} // namespace HB::Visualization
