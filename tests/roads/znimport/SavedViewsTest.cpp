// The sample with annotations and saved views on its whole road.

#include "tests/files/glb/GlbFile.h"
#include "tests/gltf-validator/GltfValidator.h"
#include "tests/roads/znimport/ToolRun.h"

#include <QImage>

#include <gmock/gmock.h>

#include <array>
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

/// The kinds of primitives of the mesh of `node`: 1 for lines, 4 for triangles.
std::set<int> modesOf(const json& document, const json& node)
{
    std::set<int> modes;
    for (const json& primitive : document["meshes"][node["mesh"].get<int>()]["primitives"])
        modes.insert(primitive.value("mode", 4));
    return modes;
}

using Numbers = std::array<double, 3>;

/// `vector` of the node `index` as the root's parent has it, by the matrices, rotations and scales above it.
Numbers turned(const json& document, std::size_t index, Numbers vector)
{
    const json& node = document["nodes"][index];
    if (node.contains("scale"))
        for (int i = 0; i < 3; ++i)
            vector[i] *= node["scale"][i].get<double>();
    if (node.contains("rotation")) {
        const std::array<double, 4> q = node["rotation"];
        const auto cross = [&q](const Numbers& v) {
            return Numbers{q[1] * v[2] - q[2] * v[1], q[2] * v[0] - q[0] * v[2], q[0] * v[1] - q[1] * v[0]};
        };
        Numbers once = cross(vector);
        for (int i = 0; i < 3; ++i)
            once[i] += q[3] * vector[i];
        const Numbers twice = cross(once);
        for (int i = 0; i < 3; ++i)
            vector[i] += 2 * twice[i];
    }
    if (node.contains("matrix")) {
        const std::array<double, 16> m = node["matrix"];
        const Numbers v = vector;
        for (int i = 0; i < 3; ++i)
            vector[i] = m[i] * v[0] + m[4 + i] * v[1] + m[8 + i] * v[2];
    }
    for (std::size_t parent = 0; parent < document["nodes"].size(); ++parent)
        for (const json& child : document["nodes"][parent].value("children", json::array()))
            if (child == index)
                return turned(document, parent, vector);
    return vector;
}

/// Of the camera `name`: its right and where it looks are these, in the space of the CAD file whose Z is up.
void expectAxes(const json& document, const std::string& name, const Numbers& right, const Numbers& view)
{
    for (std::size_t i = 0; i < document["nodes"].size(); ++i) {
        const json& node = document["nodes"][i];
        if (!node.contains("camera") || document["cameras"][node["camera"].get<std::size_t>()]["name"] != name)
            continue;
        const Numbers x = turned(document, i, {1, 0, 0});
        const Numbers z = turned(document, i, {0, 0, -1});
        const auto inFile = [](const Numbers& v) { return Numbers{v[0], -v[2], v[1]}; };
        for (int k = 0; k < 3; ++k) {
            EXPECT_NEAR(inFile(x)[k], right[k], 1e-3) << name;
            EXPECT_NEAR(inFile(z)[k], view[k], 1e-3) << name;
        }
        return;
    }
    ADD_FAILURE() << "there is no node for the camera " << name;
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

/// Pixels of the plate's own colour.
int bluePixels(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            count += color.blue() > color.red() + 25 ? 1 : 0;
        }
    return count;
}

TEST_F(SavedViewsTest, ASectionCutsThePictureAndIsToldInTheGlb)
{
    QFile whole(plate());
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    QByteArray step = whole.readAll();
    step.replace("#97=CAMERA_MODEL_D3('Dimensions',#96,#92);",
                 "#97=CAMERA_MODEL_D3_MULTI_CLIPPING('Dimensions',#96,#92,(#203));"
                 "#201=CARTESIAN_POINT('',(20.,0.,0.));#202=AXIS2_PLACEMENT_3D('',#201,#15,$);#203=PLANE('',#202);");
    const QString cut = write("cut.stp", step);
    const QStringList size{text("--size"), text("300x300")};
    ASSERT_EQ(znimport(QStringList{plate(), text("--snapshot-variants"), path("whole")} + size).exitCode, 0);
    ASSERT_EQ(
        znimport(QStringList{cut, text("--snapshot-variants"), path("pictures"), text("-o"), path("cut.glb")} + size)
            .exitCode,
        0);
    // 70 of the 100 mm of the plate are beyond the plane, and the hole is in them.
    const double left = bluePixels(picture("Dimensions.png"));
    const double all = bluePixels(QImage(path("whole") + text("/Dimensions.png")));
    EXPECT_GT(left / all, 0.5);
    EXPECT_LT(left / all, 0.75);
    EXPECT_EQ(picture("Thickness and datum.png"), QImage(path("whole") + text("/Thickness and datum.png")));
    if (gltfvalidator::isInstalled()) {
        EXPECT_EQ(gltfvalidator::validate(path("cut.glb")), gltfvalidator::Verdict());
    }
    const GlbFile glb(path("cut.glb"));
    int sections = 0;
    for (const json& camera : glb.json["cameras"]) {
        if (camera["name"] != "Dimensions_vp") {
            EXPECT_FALSE(camera.contains("extras"));
            continue;
        }
        // The plane x = 20 mm as the camera has it, whose right is (0.9002, 0.4356, 0).
        const json& section = camera["extras"]["sections"][0];
        ++sections;
        EXPECT_NEAR(section[0].get<double>(), -0.9002, 1e-3);
        EXPECT_FLOAT_EQ(camera["orthographic"]["xmag"].get<float>(), 0.096F);
    }
    EXPECT_EQ(sections, 1);
}

/// The plate with a line in the midst of it, which its view "Dimensions" lists, whose camera is `camera`.
QByteArray plateWithALineInside(const QString& plate, const QByteArray& camera)
{
    QFile file(plate);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QByteArray step = file.readAll();
    step.replace("CAMERA_MODEL_D3('Dimensions',#96,#92)", camera);
    step.replace("'Dimensions',(#97,", "'Dimensions',(#205,#97,");
    step.replace("#97=", "#201=CARTESIAN_POINT('',(-45.,-20.,6.));#202=CARTESIAN_POINT('',(45.,-20.,6.));"
                         "#203=POLYLINE('',(#201,#202));#204=GEOMETRIC_CURVE_SET('',(#203));"
                         "#205=ANNOTATION_CURVE_OCCURRENCE('Inside',(#48),#204);#97=");
    return step;
}

TEST_F(SavedViewsTest, AnnotationsComeToTheFrontWhereTheViewOrTheCommandSaysSo)
{
    const QString closed =
        write("closed.stp", plateWithALineInside(plate(), "CAMERA_MODEL_D3_WITH_HLHSR('Dimensions',#96,#92,.T.)"));
    const QString open =
        write("open.stp", plateWithALineInside(plate(), "CAMERA_MODEL_D3_WITH_HLHSR('Dimensions',#96,#92,.F.)"));
    const QStringList pictures{text("--snapshot-variants"), path("pictures"), text("--size"), text("300x300")};
    ASSERT_EQ(znimport(QStringList{closed} + pictures).exitCode, 0);
    const int hidden = redPixels(picture("Dimensions.png"));
    const QImage other = picture("Thickness and datum.png");
    ASSERT_EQ(znimport(QStringList{open, text("-o"), path("open.glb")} + pictures).exitCode, 0);
    const QImage asTheViewSays = picture("Dimensions.png");
    EXPECT_GT(redPixels(asTheViewSays), hidden + 100);
    EXPECT_EQ(other, picture("Thickness and datum.png"));
    ASSERT_EQ(znimport(QStringList{closed, text("--pmi-in-front")} + pictures).exitCode, 0);
    EXPECT_EQ(asTheViewSays, picture("Dimensions.png"));
    const GlbFile glb(path("open.glb"));
    int told = 0;
    for (const json& camera : glb.json["cameras"]) {
        EXPECT_EQ(camera.contains("extras"), camera["name"] == "Dimensions_vp") << camera.dump();
        told += camera.contains("extras") && camera["extras"]["annotationsInFront"] == true ? 1 : 0;
    }
    EXPECT_EQ(told, 1);
}

TEST_F(SavedViewsTest, APictureOfAnyShapeHoldsTheWindowOfTheView)
{
    ASSERT_EQ(
        znimport({plate(), text("--snapshot-variants"), path("pictures"), text("--size"), text("200x400")}).exitCode,
        0);
    const QImage tall = picture("Dimensions.png");
    // The window is 192 mm wide and the plate within it: its sides are free.
    int atSides = 0;
    for (int y = 0; y < tall.height(); ++y)
        for (const int x : {0, 1, tall.width() - 2, tall.width() - 1}) {
            const QColor color = tall.pixelColor(x, y);
            atSides += color.blue() > color.red() + 25 || color.red() > color.blue() + 25 ? 1 : 0;
        }
    EXPECT_EQ(atSides, 0);
    EXPECT_GT(bluePixels(tall), 1000);
}

TEST_F(SavedViewsTest, GlbHasTheViewsTheirCamerasAndWhatTheyShow)
{
    ASSERT_EQ(znimport({plate(), text("-o"), path("plate.glb")}).exitCode, 0);
    if (gltfvalidator::isInstalled()) {
        EXPECT_EQ(gltfvalidator::validate(path("plate.glb")), gltfvalidator::Verdict());
    }
    const json document = GlbFile(path("plate.glb")).json;
    EXPECT_EQ(document["asset"]["extras"]["variantSets"], json::parse(R"([
        {"name": "Dimensions", "group": "plate", "viewpoint": "Dimensions_vp"},
        {"name": "Thickness and datum", "group": "plate", "viewpoint": "Thickness and datum_vp"}])"));
    std::map<std::string, float> heights;
    for (const json& camera : document["cameras"])
        if (camera["type"] == "orthographic")
            heights[camera["name"]] = 2 * camera["orthographic"]["ymag"].get<float>();
    EXPECT_THAT(heights, ElementsAre(testing::Pair("Dimensions_vp", testing::FloatNear(0.12F, 1e-5F)),
                                     testing::Pair("Thickness and datum_vp", testing::FloatNear(0.11F, 1e-5F))));
    // Right, up and back of the cameras are those of the file: back is against its view, and right is against its X.
    expectAxes(document, "Dimensions_vp", {0.9002, 0.4356, 0}, {-0.2647, 0.5471, -0.7941});
    expectAxes(document, "Thickness and datum_vp", {0.8944, 0.4472, 0}, {-0.4224, 0.8448, -0.3285});
    const std::map<std::string, json> nodes = nodesByName(document);
    EXPECT_EQ(nodes.at("PMI")["extras"]["annotations"], true);
    EXPECT_EQ(nodes.at("PMI")["children"].size(), 5u);
    EXPECT_EQ(nodes.at("Datum A")["extras"]["variants"],
              json::parse(R"({"Dimensions": false, "Thickness and datum": true})"));
    EXPECT_EQ(nodes.at("Hole")["extras"]["variants"],
              json::parse(R"({"Dimensions": true, "Thickness and datum": false})"));
    EXPECT_THAT(modesOf(document, nodes.at("Hole")), ElementsAre(1, 4));
}

} // namespace
