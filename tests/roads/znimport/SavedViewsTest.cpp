// The sample with annotations and saved views on its whole road.

#include "tests/files/glb/GlbFile.h"
#include "tests/gltf-validator/GltfValidator.h"
#include "tests/roads/znimport/ToolRun.h"

#include <QImage>

#include <gmock/gmock.h>

#include <map>
#include <set>

namespace
{

using nlohmann::json;
using testing::ElementsAre;

class SavedViewsTest : public ToolRun
{
protected:
    static QString plate() { return text(EXAMPLE_MODELS "/plate.stp"); }
    QImage picture(const char* name) const { return QImage(path("pictures") + text("/") + text(name)); }
};

/// Pixels as red as the annotations.
int redPixels(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            count += color.red() > 120 && color.green() < 90 && color.blue() < 90 ? 1 : 0;
        }
    return count;
}

std::map<std::string, json> nodesByName(const json& document)
{
    std::map<std::string, json> nodes;
    for (const json& node : document["nodes"])
        if (node.contains("name"))
            nodes.try_emplace(node["name"], node);
    return nodes;
}

/// The kinds of primitives below `node`: 1 for lines, 4 for triangles.
std::set<int> modesBelow(const json& document, const json& node)
{
    std::set<int> modes;
    for (const json& child : node["children"])
        for (const json& primitive :
             document["meshes"][document["nodes"][child.get<int>()]["mesh"].get<int>()]["primitives"])
            modes.insert(primitive.value("mode", 4));
    return modes;
}

TEST_F(SavedViewsTest, EachPictureShowsTheAnnotationsOfItsView)
{
    const QStringList size{text("--size"), text("480x300")};
    const Ending ending = znimport(QStringList{plate(), text("--variants"), text("--snapshot-variants"),
                                               path("pictures"), text("--snapshot"), path("plain.png")} +
                                   size);
    ASSERT_EQ(ending.exitCode, 0) << ending.errors.toStdString();
    EXPECT_EQ(ending.output, text("Dimensions [plate] from Dimensions_vp\n"
                                  "Thickness and datum [plate] from Thickness and datum_vp\n"));
    const int dimensions = redPixels(picture("Dimensions.png"));
    const int datum = redPixels(picture("Thickness and datum.png"));
    EXPECT_GT(dimensions, 1.5 * datum);
    EXPECT_GT(datum, 200);
    EXPECT_EQ(redPixels(QImage(path("plain.png"))), 0);
    ASSERT_EQ(
        znimport(QStringList{plate(), text("--view"), text("saved:Dimensions"), text("--snapshot"), path("one.png")} +
                 size)
            .exitCode,
        0);
    EXPECT_EQ(QImage(path("one.png")), picture("Dimensions.png"));
}

TEST_F(SavedViewsTest, GlbHasTheViewsTheirCamerasAndWhatTheyShow)
{
    ASSERT_EQ(znimport({plate(), text("-o"), path("plate.glb")}).exitCode, 0);
    if (gltfvalidator::isInstalled()) {
        EXPECT_EQ(gltfvalidator::validate(path("plate.glb")), gltfvalidator::Verdict());
    }
    const json document = GlbFile(path("plate.glb")).json;
    EXPECT_EQ(document["nodes"][0]["extras"]["variantSets"], json::parse(R"([
        {"name": "Dimensions", "group": "plate", "viewpoint": "Dimensions_vp"},
        {"name": "Thickness and datum", "group": "plate", "viewpoint": "Thickness and datum_vp"}])"));
    std::map<std::string, float> heights;
    for (const json& camera : document["cameras"])
        if (camera["type"] == "orthographic")
            heights[camera["name"]] = 2 * camera["orthographic"]["ymag"].get<float>();
    EXPECT_THAT(heights, ElementsAre(testing::Pair("Dimensions_vp", testing::FloatNear(0.12F, 1e-5F)),
                                     testing::Pair("Thickness and datum_vp", testing::FloatNear(0.11F, 1e-5F))));
    const std::map<std::string, json> nodes = nodesByName(document);
    EXPECT_EQ(nodes.at("PMI")["extras"]["annotations"], true);
    EXPECT_EQ(nodes.at("PMI")["children"].size(), 5u);
    EXPECT_EQ(nodes.at("Datum A")["extras"]["variants"],
              json::parse(R"({"Dimensions": false, "Thickness and datum": true})"));
    EXPECT_EQ(nodes.at("Hole")["extras"]["variants"],
              json::parse(R"({"Dimensions": true, "Thickness and datum": false})"));
    EXPECT_THAT(modesBelow(document, nodes.at("Hole")), ElementsAre(1, 4));
}

} // namespace
