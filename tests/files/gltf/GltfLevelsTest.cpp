#include "files/gltf/GltfLevels.h"

#include "scene/Attributes.h"
#include "tests/files/gltf/GltfSquare.h"

#include <gmock/gmock.h>

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

/// The node 0, the levels of which are the nodes 2 and 3, and the node 1 beside it. Meshes have 2, 1 and 2 triangles.
QByteArray leveled(const QByteArray& ids, const QByteArray& scenes = R"(, "scenes": [{"nodes": [0, 1]}])",
                   const QByteArray& more = {})
{
    return R"("nodes": [
        {"name": "fine", "mesh": 0, "translation": [5, 0, 0], "extensions": {"MSFT_lod": {"ids": )" +
           ids + R"(}}, "extras": {"kind": "bolt", "MSFT_screencoverage": [0.5, 0.2, 0]}},
        {"name": "beside", "mesh": 0},
        {"mesh": 1, "translation": [7, 0, 0])" +
           more + R"(},
        {"name": "coarse", "mesh": 2, "children": [4]}, {"name": "below", "mesh": 1}],
        "meshes": [{"primitives": [{"attributes": {"POSITION": 0}, "indices": 4}]},
                   {"primitives": [{"attributes": {"POSITION": 0}, "indices": 7}]},
                   {"primitives": [{"attributes": {"POSITION": 0}, "indices": 4}]}])" +
           scenes;
}

class GltfLevelsTest : public GltfReaderTest
{
protected:
    QString read(const QByteArray& members, int level)
    {
        files::ReadOptions options;
        options.level = level;
        const files::ReadResult result = readDocument(members, options);
        EXPECT_TRUE(result) << (result ? "" : result.error().toString().toStdString());
        warnings = texts(result.warnings);
        return QString::fromStdString(outline(scene()));
    }

    decltype(texts({})) warnings;
};

TEST_F(GltfLevelsTest, TheFinestLevelIsReadUnlessAnotherIsAskedFor)
{
    EXPECT_EQ(read(leveled("[2, 3]"), 0), QStringLiteral("fine((none)) beside"));
    EXPECT_THAT(warnings, IsEmpty());
    EXPECT_EQ(matrixOf(scene()->getChild(0))[12], 5);
    EXPECT_EQ(read(leveled("[2, 3]"), 1), QStringLiteral("fine((none)) beside"));
    EXPECT_EQ(matrixOf(scene()->getChild(0))[12], 7);
    EXPECT_EQ(read(leveled("[2, 3]"), 2), QStringLiteral("coarse((none) below) beside"));
    EXPECT_EQ(read(leveled("[2, 3]"), 9), QStringLiteral("coarse((none) below) beside"));
    EXPECT_THAT(warnings, IsEmpty());
}

TEST_F(GltfLevelsTest, WithoutAListOfScenesLevelsAreNoPartsOfTheirOwn)
{
    EXPECT_EQ(read(leveled("[2, 3]", ""), 0), QStringLiteral("fine((none)) beside"));
    EXPECT_EQ(read(leveled("[2, 3]", ""), 2), QStringLiteral("coarse((none) below) beside"));
}

TEST_F(GltfLevelsTest, ALevelHasTheFactsOfTheNodeAndNotTheHintsOfViewers)
{
    for (const int level : {0, 2}) {
        read(leveled("[2, 3]"), level);
        const auto* attributes = osg::attributeAttachment(scene()->getChild(0), osg::AttributeOwner::Occurrence).get();
        ASSERT_NE(attributes, nullptr);
        ASSERT_EQ(attributes->attributes().size(), 1u);
        EXPECT_EQ(attributes->attributes()[0].name, "kind");
    }
}

TEST_F(GltfLevelsTest, DamagedListsAreLeftOutWithAWarning)
{
    for (const char* ids : {"[2, 5]", "[-1]", "[2, 2]", "[0]", "[2.5]", "[\"2\"]", "2", "[]", "[1e300]"}) {
        for (const int level : {0, 2}) {
            EXPECT_EQ(read(leveled(ids), level), QStringLiteral("fine((none)) beside")) << ids;
            EXPECT_EQ(warnings.size(), 1) << ids;
        }
        EXPECT_EQ(matrixOf(scene()->getChild(0))[12], 5);
    }
}

TEST_F(GltfLevelsTest, LevelsOfLevelsDoNotCount)
{
    const QByteArray back = R"(, "extensions": {"MSFT_lod": {"ids": [0]}})";
    EXPECT_EQ(read(leveled("[2]", R"(, "scenes": [{"nodes": [0, 1]}])", back), 1),
              QStringLiteral("fine((none)) beside"));
    EXPECT_EQ(matrixOf(scene()->getChild(0))[12], 7);
}

TEST_F(GltfLevelsTest, ALevelAboveItsNodeIsDamage)
{
    files::ReadOptions options;
    options.level = 1;
    const QByteArray around = R"(, "children": [0])";
    const QByteArray members = leveled("[2]", R"(, "scenes": [{"nodes": [0, 1]}])", around);
    EXPECT_TRUE(errorOfDocument(members, options).contains(QStringLiteral("below itself")));
    EXPECT_EQ(read(members, 0), QStringLiteral("fine((none)) beside"));
}

TEST_F(GltfLevelsTest, ALevelCanBeRequiredAndThoseOfMaterialsDoNoHarm)
{
    const QByteArray materials = R"(, "extensionsRequired": ["MSFT_lod"],
        "materials": [{"name": "a", "extensions": {"MSFT_lod": {"ids": [1, 77]}},
                       "extras": {"MSFT_screencoverage": [0.5, 0]}}, {"name": "b"}])";
    for (const int level : {0, 1}) {
        EXPECT_EQ(read(leveled("[2, 3]") + materials, level), QStringLiteral("fine((none)) beside"));
        EXPECT_EQ(warnings.size(), 1) << "the levels of the material";
    }
}

} // namespace
