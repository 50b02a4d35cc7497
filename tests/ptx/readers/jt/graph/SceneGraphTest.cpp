#include "ptx/readers/jt/graph/SceneGraph.h"

#include "tests/support/jt/FileWriter.h"

#include <gmock/gmock.h>

#include <cmath>

using namespace ptx::jt::container;
using namespace ptx::jt::codec;
using namespace ptx::jt::graph;
using jttest::FileWriter;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;

namespace
{

struct Layout {
    int major;
    bool isBigEndian;
};

void PrintTo(const Layout& layout, std::ostream* stream)
{
    *stream << layout.major << (layout.isBigEndian ? " big endian" : " little endian");
}

class JtSceneGraphLayout : public testing::TestWithParam<Layout>
{
protected:
    SceneGraph read() const
    {
        const jttest::Data data = m_writer.sceneGraph();
        return readSceneGraph(data, GetParam().major, GetParam().isBigEndian);
    }

    FileWriter m_writer{GetParam().major, GetParam().isBigEndian};
};

INSTANTIATE_TEST_SUITE_P(All, JtSceneGraphLayout,
                         testing::Values(Layout{8, false}, Layout{9, false}, Layout{10, false}, Layout{8, true},
                                         Layout{9, true}, Layout{10, true}));

SceneGraph readOf(const FileWriter& writer, int major = 8)
{
    return readSceneGraph(writer.sceneGraph(), major, false);
}

Placement placementOf(const SceneGraph& graph, Id id)
{
    return graph.attributes.at(id).placement.value_or(Placement());
}

Colour colourOf(const SceneGraph& graph, Id id)
{
    return graph.attributes.at(id).material.value_or(Material()).diffuse;
}

} // namespace

TEST_P(JtSceneGraphLayout, NodesHaveKindChildrenAttributesAndFlags)
{
    m_writer.partition(-7, {2, 3}, "Sub/Part 1.jt");
    m_writer.metadata(2, {4});
    m_writer.part(3, {5, 6}, {{21, 22}, true});
    m_writer.instance(4, 3, {{23}});
    m_writer.levels(5, {7, 8, 9});
    m_writer.choice(6, {10, 11}, 1);
    m_writer.group(7, {12});
    m_writer.shape(12, {{24}});
    const SceneGraph graph = read();
    EXPECT_FALSE(graph.damage);
    EXPECT_THAT(graph.warnings, IsEmpty());
    EXPECT_EQ(graph.root, -7);
    EXPECT_EQ(graph.nodes.size(), 8u);
    EXPECT_EQ(graph.nodes.at(-7).kind, ElementKind::Partition);
    EXPECT_EQ(graph.nodes.at(-7).file, "Sub/Part 1.jt");
    EXPECT_THAT(graph.nodes.at(-7).children, ElementsAre(2, 3));
    EXPECT_EQ(graph.nodes.at(2).kind, ElementKind::MetaData);
    EXPECT_FALSE(graph.nodes.at(2).isIgnored);
    EXPECT_EQ(graph.nodes.at(3).kind, ElementKind::Part);
    EXPECT_TRUE(graph.nodes.at(3).isIgnored);
    EXPECT_THAT(graph.nodes.at(3).attributes, ElementsAre(21, 22));
    EXPECT_EQ(graph.nodes.at(4).kind, ElementKind::Instance);
    EXPECT_THAT(graph.nodes.at(4).children, ElementsAre(3));
    EXPECT_EQ(graph.nodes.at(5).kind, ElementKind::Lod);
    EXPECT_THAT(graph.nodes.at(5).children, ElementsAre(7, 8, 9));
    EXPECT_EQ(graph.nodes.at(6).kind, ElementKind::Switch);
    EXPECT_EQ(graph.nodes.at(6).selected, 1);
    EXPECT_EQ(graph.nodes.at(7).kind, ElementKind::Group);
    EXPECT_EQ(graph.nodes.at(12).kind, ElementKind::Shape);
    EXPECT_THAT(graph.nodes.at(12).attributes, ElementsAre(24));
}

TEST_P(JtSceneGraphLayout, AttributesGiveColourAndPlace)
{
    m_writer.group(1, {});
    m_writer.material(21, {0.25f, 0.5f, 0.75f, 0.4f});
    m_writer.transform(22, {{0, 0}, {1, 1}, {4, -1}, {5, 0}, {12, 10}, {13, -20}, {14, 30}});
    const SceneGraph graph = read();
    EXPECT_THAT(colourOf(graph, 21), ElementsAre(0.25f, 0.5f, 0.75f, 0.4f));
    EXPECT_FALSE(graph.attributes.at(21).placement);
    EXPECT_THAT(placementOf(graph, 22), ElementsAre(0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 10, -20, 30, 1));
    EXPECT_FALSE(graph.attributes.at(22).material);
}

TEST_P(JtSceneGraphLayout, PropertiesBecomeTextsWhateverTheirType)
{
    m_writer.group(1, {});
    m_writer.property(1, "Material::", "Steel");
    m_writer.integerProperty(1, "Rank", -40000);
    m_writer.floatProperty(1, "Share", 0.375f);
    m_writer.dateProperty(1, "Made::", {2019, 0, 31, 7, 5, 9});
    m_writer.late(1, "JT_LLPROP_SHAPEIMPL", 0xABCDEF01, 7);
    const SceneGraph graph = read();
    EXPECT_THAT(graph.nodes.at(1).properties,
                ElementsAre(Pair("Material::", "Steel"), Pair("Rank", "-40000"), Pair("Share", "0.375"),
                            Pair("Made::", "2019-01-31T07:05:09")));
    ASSERT_EQ(graph.nodes.at(1).lateLoaded.size(), 1u);
    EXPECT_EQ(guidText(graph.nodes.at(1).lateLoaded[0].segment), "abcdef01-0001-0002-0304-05060708090a");
    EXPECT_EQ(graph.nodes.at(1).lateLoaded[0].type, 7);
}

TEST_P(JtSceneGraphLayout, AnUnknownGroupKeepsItsChildren)
{
    m_writer.group(1, {2});
    m_writer.unknownGroup(2, {3, 4});
    const SceneGraph graph = read();
    EXPECT_EQ(graph.nodes.at(2).kind, ElementKind::Group);
    EXPECT_THAT(graph.nodes.at(2).children, ElementsAre(3, 4));
    EXPECT_THAT(graph.warnings, IsEmpty());
}

TEST(JtSceneGraph, PairsThatLeadNowhereDropOut)
{
    FileWriter writer;
    writer.group(1, {});
    writer.rawProperty(1, 77, 78);
    writer.property(1, "Colour::", "blue");
    writer.property(99, "Of nobody::", "lost");
    EXPECT_THAT(readOf(writer).nodes.at(1).properties, ElementsAre(Pair("Colour::", "blue")));
}

TEST(JtSceneGraph, ADamagedElementIsToldAndTheOthersStay)
{
    FileWriter writer;
    writer.group(1, {2, 3});
    writer.cutOffGroup(2);
    writer.group(3, {4});
    const SceneGraph graph = readOf(writer);
    EXPECT_THAT(graph.warnings, ElementsAre("element 2 of the scene graph at 82: a count is larger than what follows"));
    EXPECT_FALSE(graph.damage);
    EXPECT_THAT(graph.nodes.at(2).children, IsEmpty());
    EXPECT_THAT(graph.nodes.at(3).children, ElementsAre(4));
}

TEST(JtSceneGraph, OfTwoNodesWithOneNumberTheFirstCounts)
{
    FileWriter writer;
    writer.group(1, {5});
    writer.part(1, {6});
    EXPECT_EQ(readOf(writer).nodes.at(1).kind, ElementKind::Group);
    EXPECT_THAT(readOf(writer).nodes.at(1).children, ElementsAre(5));
}

TEST(JtSceneGraph, NoiseOfAPlacementIsDroppedAndItsDivisorTaken)
{
    FileWriter writer;
    writer.group(1, {});
    writer.transform(20, {{0, 6}, {3, 2e-10}, {5, 6}, {7, -1e-10}, {10, 6}, {11, 1e-11}, {12, 8}, {15, 2}});
    EXPECT_THAT(placementOf(readOf(writer), 20), ElementsAre(3, 0, 0, 0, 0, 3, 0, 0, 0, 0, 3, 0, 4, 0, 0, 1));
}

TEST(JtSceneGraph, APlacementThatIsNotFiniteIsToldAndCountsAsNone)
{
    for (const auto& [element, value] : std::map<unsigned, double>{{12, INFINITY}, {5, NAN}, {15, 0}}) {
        FileWriter writer;
        writer.group(1, {});
        writer.transform(20, {{element, value}});
        const SceneGraph graph = readOf(writer);
        EXPECT_FALSE(graph.attributes.at(20).placement) << element;
        EXPECT_THAT(graph.warnings, ElementsAre(HasSubstr("a placement is not finite"))) << element;
    }
}

TEST(JtSceneGraph, ShortFormsOfAMaterialLeaveItsDiffuseColourWhole)
{
    FileWriter writer;
    writer.group(1, {});
    writer.shortMaterial(20, {0.1f, 0.2f, 0.3f, 0.9f});
    const SceneGraph graph = readOf(writer);
    EXPECT_THAT(colourOf(graph, 20), ElementsAre(0.1f, 0.2f, 0.3f, 0.9f));
}

TEST(JtSceneGraph, ColoursOutOfRangeAreCut)
{
    FileWriter writer;
    writer.group(1, {});
    writer.material(20, {-0.5f, 1.5f, NAN, 0.5f});
    const SceneGraph graph = readOf(writer);
    EXPECT_THAT(colourOf(graph, 20), ElementsAre(0.f, 1.f, 0.f, 0.5f));
}

TEST(JtSceneGraph, AttributesThatAreIgnoredSayNothing)
{
    constexpr unsigned Ignored = 4;
    FileWriter writer;
    writer.group(1, {});
    writer.material(20, {0.1f, 0.2f, 0.3f, 1}, Ignored);
    writer.transform(21, {{12, 5}}, Ignored);
    const SceneGraph graph = readOf(writer);
    EXPECT_FALSE(graph.attributes.at(20).material);
    EXPECT_FALSE(graph.attributes.at(21).placement);
}

TEST(JtSceneGraph, AMaterialThatInhibitsItsDiffuseColourLeavesTheOneAround)
{
    for (const auto& [major, bit] : std::map<int, unsigned>{{8, 1}, {9, 7}, {10, 6}}) {
        FileWriter writer(major);
        writer.group(1, {});
        writer.material(20, {0.1f, 0.2f, 0.3f, 1}, 8, 1u << bit);
        writer.material(21, {0.1f, 0.2f, 0.3f, 1}, 8, 1u << 3);
        const SceneGraph graph = readOf(writer, major);
        EXPECT_FALSE(graph.attributes.at(20).material.value().given & ColourField) << major;
        EXPECT_TRUE(graph.attributes.at(21).material.value().given & ColourField) << major;
    }
}

TEST(JtSceneGraph, BytesWithoutANodeAreAnError)
{
    EXPECT_STREQ(readSceneGraph(std::vector<std::uint8_t>(64, 0xFF), 9, false).damage.what,
                 "the scene graph holds no nodes");
}
