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
    EXPECT_THAT(texts(result.warnings), ElementsAre(QStringLiteral("1 values of extras were left out @ ")))
        << "of the primitive";
    EXPECT_EQ(occurrence(0), (AttributeList{{"attributes.a", std::int64_t(1)},
                                            {"no", std::string("A-1")},
                                            {"product", std::int64_t(0)},
                                            {"step", std::string("x")}}));
    EXPECT_EQ(product(0), (AttributeList{{"own", std::int64_t(1)}})) << "of the mesh";
    EXPECT_EQ(occurrence(1), (AttributeList{{"extras", std::string("text")}}));
}

TEST_F(GltfExtrasTest, CamerasAndTheAssetHaveTheirs)
{
    ASSERT_TRUE(readNodes({R"({}, "camera": 0)"}, R"(, "cameras": [{"type": "perspective", "name": "eye", "extras": )"
                                                  R"({"lens": "wide"}, "perspective": {"yfov": 1, "znear": 1}}])"));
    const osg::NodePtr eye = scene()->getChild(0)->getChild(1);
    EXPECT_EQ(osg::attributesOf(eye, AttributeOwner::Occurrence), (AttributeList{{"lens", std::string("wide")}}));
}

/// A file of ours tells another unit or axis than glTF has; in any other file that is an attribute.
TEST_F(GltfExtrasTest, UnitAndAxisOfOurFilesArePutRight)
{
    const auto readAsset = [this](const QByteArray& generator) {
        QByteArray text = document(R"("meshes": [{"primitives": [{"attributes": {"POSITION": 0}}]}], )"
                                   R"("nodes": [{"mesh": 0}])");
        text.replace(R"("version": "2.0")", R"("version": "2.0", "generator": ")" + generator +
                                                R"(", "extras": {"metresPerUnit": 0.5, "upAxis": "Z", "who": "Ada"})");
        return read(write(QStringLiteral("own.gltf"), text));
    };
    ASSERT_TRUE(readAsset("znCADImport 1"));
    EXPECT_THAT(matrixOf(scene()), ElementsAre(500, 0, 0, 0, 0, 500, 0, 0, 0, 0, 500, 0, 0, 0, 0, 1));
    EXPECT_EQ(osg::attributesOf(scene(), AttributeOwner::Occurrence), (AttributeList{{"who", std::string("Ada")}}));
    ASSERT_TRUE(readAsset("another"));
    EXPECT_THAT(matrixOf(scene()), ElementsAre(1000, 0, 0, 0, 0, 0, 1000, 0, 0, -1000, 0, 0, 0, 0, 0, 1));
    EXPECT_EQ(osg::attributesOf(scene(), AttributeOwner::Occurrence).size(), 3u);
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
    EXPECT_THAT(texts(result.warnings), ElementsAre(QStringLiteral("5 values of extras were left out @ ")));
    EXPECT_EQ(product(0), (AttributeList{{"own", std::int64_t(1)}})) << "of the mesh";
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
