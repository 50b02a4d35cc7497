#include "files/gltf/GltfVariants.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SwitchMaterial.h"
#include "scene/Tags.h"
#include "tests/files/gltf/GltfSquare.h"

#include <gmock/gmock.h>

namespace
{

using osg::VariantTable;
using testing::ElementsAre;
using testing::IsEmpty;

class GltfVariantsTest : public GltfReaderTest
{
protected:
    /// Two squares of the materials "red" and none, of which the first has these mappings, in a document of the
    /// variants "day" and "night"; below these nodes, with more members.
    files::ReadResult readSquares(const QByteArray& mappings, const QByteArray& nodes, const QByteArray& more = {})
    {
        return readDocument(
            R"("extensions": {"KHR_materials_variants": {"variants": [{"name": "day"}, {"name": "night"}]}}, )"
            R"("materials": [{"name": "red"}, {"name": "blue"}, {}], "meshes": [{"primitives": [{"material": 0, )"
            R"("attributes": {"POSITION": 0}, "extensions": {"KHR_materials_variants": {"mappings": )" +
            mappings + R"(}}}]}, {"primitives": [{"attributes": {"POSITION": 0}}]}], "nodes": )" + nodes + more);
    }
    VariantTable table() const
    {
        const auto attachment = osg::VariantAttachment::of(root());
        return attachment ? attachment->table() : VariantTable();
    }
    osg::SwitchMaterialPtr choicesOf(unsigned node) const
    {
        const auto geometry = osg::fcCast<osg::Geometry>(scene()->getChild(node)->getCore());
        return geometry ? osg::fcCast<osg::SwitchMaterial>(geometry->getMaterial()) : osg::SwitchMaterialPtr();
    }
};

TEST_F(GltfVariantsTest, ExchangedMaterialsBecomeChoices)
{
    ASSERT_TRUE(readSquares(R"([{"material": 1, "variants": [1]}, {"material": 2, "variants": [0]}])",
                            R"([{"mesh": 0}, {"mesh": 1}])"));
    const osg::SwitchMaterialPtr choices = choicesOf(0);
    ASSERT_TRUE(choices);
    std::vector<std::string> names;
    for (const osg::MaterialPtr& material : choices->getMaterials())
        names.emplace_back(osg::getName(material));
    EXPECT_THAT(names, ElementsAre("red", "Material", "blue"));
    EXPECT_EQ(choices->getChoice(), 0u);
    EXPECT_FALSE(choicesOf(1));
    const std::vector<VariantTable::Set> sets = table().sets;
    ASSERT_EQ(sets.size(), 2u);
    EXPECT_EQ(sets[0].name, "day");
    EXPECT_EQ(sets[1].name, "night");
    EXPECT_EQ(sets[0].materials, (std::vector<VariantTable::MaterialState>{{osg::getName(choices), "Material"}}));
    EXPECT_EQ(sets[1].materials, (std::vector<VariantTable::MaterialState>{{osg::getName(choices), "blue"}}));
}

TEST_F(GltfVariantsTest, MappingsThatNameNothingAreTold)
{
    for (const char* mappings :
         {R"([{"material": 1, "variants": [2]}])", R"([{"material": 1, "variants": [-1]}])", R"([{"variants": [1]}])",
          R"([{"material": 1}])", R"([7])", R"({})", R"([{"material": "x", "variants": [1]}])"}) {
        const auto result = readSquares(mappings, R"([{"mesh": 0}])");
        ASSERT_TRUE(result) << mappings;
        EXPECT_EQ(result.warnings.size(), 1u) << mappings;
        EXPECT_FALSE(choicesOf(0)) << mappings;
    }
    EXPECT_FALSE(readSquares(R"([{"material": 9, "variants": [1]}])", R"([{"mesh": 0}])"));
}

TEST_F(GltfVariantsTest, HiddenNodesAreInTheSceneAndNotShown)
{
    ASSERT_TRUE(readSquares("[]", R"([{"mesh": 0, "extensions": {"KHR_node_visibility": {"visible": false}}}, )"
                                  R"({"mesh": 1, "extensions": {"KHR_node_visibility": {"visible": true}}}])"));
    EXPECT_FALSE(scene()->getChild(0)->isActive());
    EXPECT_TRUE(scene()->getChild(1)->isActive());
}

TEST_F(GltfVariantsTest, SetsOfOursHaveGroupsAndViewpointsAndShowNodes)
{
    const QByteArray nodes =
        R"([{"mesh": 1, "extras": {"variantSets": [{"name": "day", "group": "light", "viewpoint": "sun"}, )"
        R"({"name": "night", "group": "light"}]}}, {"children": [2], "extras": {"annotations": true}}, )"
        R"({"mesh": 1, "extras": {"variants": {"night": true, "day": false, "other": true}}}])";
    ASSERT_TRUE(readSquares("[]", nodes, R"(, "scenes": [{"nodes": [0, 1]}], "extras": {"products": []})"));
    const VariantTable read = table();
    EXPECT_THAT(read.groups, ElementsAre("light"));
    ASSERT_EQ(read.sets.size(), 2u);
    EXPECT_EQ(read.sets[0].group, "light");
    EXPECT_EQ(read.sets[0].viewpoint, "sun");
    EXPECT_EQ(read.sets[1].viewpoint, "");
    const osg::NodePath path = *osg::pathTo(scene()->getChild(1)->getChild(0), root());
    EXPECT_EQ(read.sets[0].nodes, (std::vector<VariantTable::NodeState>{{path, "!Disable"}}));
    EXPECT_EQ(read.sets[1].nodes, (std::vector<VariantTable::NodeState>{{path, "!Enable"}}));
    EXPECT_THAT(osg::tagsOf(scene()->getChild(1)), ElementsAre("ptx::pmi"));
    EXPECT_THAT(osg::tagsOf(scene()->getChild(0)), IsEmpty());
}

/// As files of ours are when another program has written them anew: it puts its own name in the place of ours.
TEST_F(GltfVariantsTest, SetsInTheAssetMakeADocumentOneOfOurs)
{
    const QByteArray nodes = R"([{"mesh": 1}, {"mesh": 1, "extras": {"variants": {"night": true}}}])";
    ASSERT_TRUE(
        readSquares("[]", nodes,
                    R"(, "asset": {"version": "2.0", "extras": {"variantSets": [{"name": "day", "group": "light"}, )"
                    R"({"name": "night", "viewpoint": "moon"}], "source": "x"}})"));
    const VariantTable read = table();
    ASSERT_EQ(read.sets.size(), 2u);
    EXPECT_THAT(read.groups, ElementsAre("light"));
    EXPECT_EQ(read.sets[1].viewpoint, "moon");
    EXPECT_EQ(read.sets[0].nodes.size(), 0u);
    EXPECT_EQ(read.sets[1].nodes.size(), 1u);
}

TEST_F(GltfVariantsTest, SmallNodesOfOursAreHiddenAndOfTheirTrueSize)
{
    const QByteArray nodes =
        R"([{"mesh": 1, "scale": [1e-6, 1e-6, 1e-6], "extras": {"shown": {"translation": [1, 2, 3]}}}, )"
        R"({"mesh": 1, "scale": [1e-6, 1e-6, 1e-6], "extras": {"shown": {}}}])";
    ASSERT_TRUE(readSquares("[]", nodes, R"(, "extras": {"products": []})"));
    const auto transform = osg::fcCast<osg::Transform>(scene()->getChild(0)->getCore());
    ASSERT_TRUE(transform);
    EXPECT_EQ(transform->getMatrix(), (osg::Matrix{{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1}}));
    EXPECT_FALSE(scene()->getChild(0)->isActive());
    EXPECT_TRUE(osg::fcCast<osg::Geometry>(scene()->getChild(1)->getCore())) << "it has a transform";
    EXPECT_FALSE(scene()->getChild(1)->isActive());
}

TEST_F(GltfVariantsTest, ADocumentWithoutVariantsHasNoTable)
{
    ASSERT_TRUE(
        readDocument(R"("meshes": [{"primitives": [{"attributes": {"POSITION": 0}}]}], "nodes": [{"mesh": 0}])"));
    EXPECT_FALSE(osg::VariantAttachment::of(root()));
}

} // namespace
