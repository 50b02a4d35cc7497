#include "files/gltf/GltfExtras.h"

#include "tests/files/gltf/GltfSquare.h"

#include <gmock/gmock.h>

namespace
{

using osg::AttributeList;
using osg::AttributeOwner;
using testing::ElementsAre;
using testing::IsEmpty;

class GltfExtrasTest : public GltfReaderTest
{
protected:
    /// A node for each extras, all with the same mesh, whose material has extras too; and more members.
    files::ReadResult readNodes(const QByteArrayList& extras, const QByteArray& more = {})
    {
        QByteArrayList nodes;
        for (const QByteArray& each : extras)
            nodes << R"({"mesh": 0, "extras": )" + each + "}";
        return readDocument(R"("meshes": [{"extras": {"own": 1}, "primitives": [{"attributes": {"POSITION": 0}, )"
                            R"("material": 0, "extras": {"own": 2}}]}], "materials": [{"extras": {"coat": 7}}], )"
                            R"("nodes": [)" +
                            nodes.join(',') + "]" + more);
    }

    AttributeList product(unsigned node) const
    {
        return osg::attributesOf(scene()->getChild(node), AttributeOwner::Product);
    }
    AttributeList occurrence(unsigned node) const
    {
        return osg::attributesOf(scene()->getChild(node), AttributeOwner::Occurrence);
    }
};

TEST_F(GltfExtrasTest, ForeignExtrasAreThoseOfTheOccurrence)
{
    const auto result = readNodes({R"({"no": "A-1", "product": 0, "step": "x", "attributes": {"a": 1}})", R"("text")"});
    EXPECT_THAT(texts(result.warnings), IsEmpty());
    EXPECT_EQ(occurrence(0), (AttributeList{{"attributes.a", std::int64_t(1)},
                                            {"no", std::string("A-1")},
                                            {"product", std::int64_t(0)},
                                            {"step", std::string("x")}}));
    EXPECT_EQ(product(0), AttributeList());
    EXPECT_EQ(occurrence(1), (AttributeList{{"extras", std::string("text")}}));
}

TEST_F(GltfExtrasTest, MaterialsHaveTheirs)
{
    ASSERT_TRUE(readNodes({"{}"}));
    EXPECT_EQ(osg::attributesOf(geometry(scene()->getChild(0))->getMaterial(), AttributeOwner::Product),
              (AttributeList{{"coat", std::int64_t(7)}}));
    EXPECT_EQ(occurrence(0), AttributeList());
}

TEST_F(GltfExtrasTest, ProductsAreSharedByTheNodesThatReferToThem)
{
    ASSERT_TRUE(readNodes(
        {R"({"product": 1, "step": "x"})", R"({"product": 0, "attributes": {"Side": "left"}, "hue": 3})",
         R"({"product": 1})"},
        R"(, "extras": {"products": [{"Product": "nut"}, {"Product": "bolt", "Size": ["M8", "M9"]}], "run": 4})"));
    EXPECT_EQ(
        product(0),
        (AttributeList{{"Product", std::string("bolt")}, {"Size", std::string("M8")}, {"Size", std::string("M9")}}));
    EXPECT_EQ(product(1), (AttributeList{{"Product", std::string("nut")}}));
    EXPECT_EQ(osg::attributeAttachment(scene()->getChild(0), AttributeOwner::Product),
              osg::attributeAttachment(scene()->getChild(2), AttributeOwner::Product));
    EXPECT_EQ(occurrence(0), AttributeList());
    EXPECT_EQ(occurrence(1), (AttributeList{{"Side", std::string("left")}, {"hue", std::int64_t(3)}}));
    EXPECT_EQ(osg::attributesOf(scene(), AttributeOwner::Occurrence), (AttributeList{{"run", std::int64_t(4)}}));
}

TEST_F(GltfExtrasTest, AProductThatIsNotThereIsToldOf)
{
    const auto result = readNodes({R"({"product": 1})", R"({"product": -1})", R"({"product": "0"})", R"({"a": [[]]})"},
                                  R"(, "extras": {"products": [{"Product": "nut"}]})");
    ASSERT_TRUE(result);
    EXPECT_THAT(texts(result.warnings), ElementsAre(QStringLiteral("4 values of extras were left out @ ")));
    EXPECT_EQ(product(0), AttributeList());
}

TEST_F(GltfExtrasTest, TheSceneThatIsReadHasItsOwn)
{
    ASSERT_TRUE(readNodes({"{}"}, R"(, "scene": 1, "scenes": [{"nodes": [], "extras": {"a": 1}},
                                      {"nodes": [0], "extras": {"b": 2}}], "extras": {"c": 3})"));
    EXPECT_EQ(osg::attributesOf(scene(), AttributeOwner::Occurrence),
              (AttributeList{{"c", std::int64_t(3)}, {"b", std::int64_t(2)}}));
}

TEST_F(GltfExtrasTest, AMemberOfExtrasMayBeCalledExtrasToo)
{
    ASSERT_TRUE(readNodes({R"({"extras": {"extras": 1}, "nodes": {"extras": 2}})"}));
    EXPECT_EQ(occurrence(0), (AttributeList{{"extras.extras", std::int64_t(1)}, {"nodes.extras", std::int64_t(2)}}));
}

TEST_F(GltfExtrasTest, ControlCharactersStay)
{
    ASSERT_TRUE(readNodes({"{\"a\": \"\\u0001\\u0000x\"}"}));
    EXPECT_EQ(occurrence(0), (AttributeList{{"a", std::string("\x01\0x", 3)}}));
}

} // namespace
