// A GLB in another unit and with another axis up comes in like the usual one.

#include "tests/files/glb/GlbFile.h"
#include "tests/roads/znimport/ToolRun.h"

#include <QMatrix4x4>

#include <optional>
#include <string>
#include <vector>

namespace
{

using nlohmann::json;

class ZnimportUnitsTest : public ToolRun
{
protected:
    /// The example as a GLB that is written with these options and goes in and out once more.
    GlbFile twice(const QStringList& options) const
    {
        const QStringList first{text(EXAMPLE_MODELS "/flywheel.step"), text("-o"), path("once.glb")};
        EXPECT_EQ(znimport(first + options).exitCode, 0);
        EXPECT_EQ(znimport({path("once.glb"), text("-o"), path("twice.glb")}).exitCode, 0);
        return GlbFile(path("twice.glb"));
    }
};

QMatrix4x4 matrixOf(const json& node)
{
    if (!node.contains("matrix"))
        return {};
    std::vector<float> values = node["matrix"];
    return QMatrix4x4(values.data()).transposed();
}

/// A node with all that stands below it in the place of numbers.
json below(const json& glb, std::size_t number)
{
    json node = glb["nodes"][number];
    for (json& child : node["children"])
        child = below(glb, child.get<std::size_t>());
    return node;
}

/// A node's place in the world, and what it is.
struct Found {
    QMatrix4x4 place;
    json node;
};

/// The first node of this name that has attributes.
std::optional<Found> find(const json& glb, std::size_t number, const std::string& name, const QMatrix4x4& above)
{
    const json& node = glb["nodes"][number];
    const QMatrix4x4 place = above * matrixOf(node);
    if (node.value("name", "") == name && node.contains("extras"))
        return Found{place, below(glb, number)};
    for (const json& child : node.value("children", json::array()))
        if (auto found = find(glb, child.get<std::size_t>(), name, place))
            return found;
    return {};
}

TEST_F(ZnimportUnitsTest, AGlbInInchesWithZUpComesInLikeTheUsual)
{
    const GlbFile usual = twice({});
    const GlbFile other = twice({text("--unit"), text("in"), text("--up"), text("Z")});
    const std::size_t root = usual.json["scenes"][0]["nodes"][0];
    auto expected = find(usual.json, root, "flywheel unit", {});
    auto found = find(other.json, root, "flywheel unit", {});
    ASSERT_TRUE(expected && found);
    for (int i = 0; i < 16; ++i)
        EXPECT_NEAR(found->place.constData()[i], expected->place.constData()[i], 1e-8) << i;
    // The file begins with it, so that its matrix is that of the unit.
    EXPECT_NE(found->node["matrix"], expected->node["matrix"]);
    found->node.erase("matrix");
    expected->node.erase("matrix");
    EXPECT_EQ(found->node, expected->node);
    for (const char* part : {"meshes", "accessors", "bufferViews", "materials", "extras"})
        EXPECT_EQ(other.json.value(part, json()), usual.json.value(part, json())) << part;
    EXPECT_EQ(other.bytes().mid(other.binaryChunk()), usual.bytes().mid(usual.binaryChunk()));
}

TEST_F(ZnimportUnitsTest, OptionAndSettingTakeTheScaleIntoTheVertices)
{
    const GlbFile usual = twice({});
    const GlbFile option = twice({text("--scale-into-vertices")});
    const GlbFile setting = twice({text("--set"), text("export.scaleIntoVertices=on")});
    EXPECT_EQ(option.bytes(), setting.bytes());
    EXPECT_EQ(option.size(), GlbFile(path("once.glb")).size());
    ASSERT_EQ(option.json["nodes"].size(), usual.json["nodes"].size());
    EXPECT_EQ(option.json["meshes"].size(), usual.json["meshes"].size());
    for (const json& node : option.json["nodes"])
        for (const int axis : {0, 1, 2})
            EXPECT_NEAR(matrixOf(node).column(axis).length(), 1, 1e-5) << node;
}

} // namespace
