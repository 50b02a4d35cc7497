// Many places of few parts stay few meshes, from the converted file to the GLB.

#include "files/scenefile/SceneFile.h"
#include "host/OSGSystem/Transform3D.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "tests/files/glb/GlbFile.h"
#include "tests/roads/znimport/ToolRun.h"
#include "tests/support/BookmarkScene.h"

namespace
{

constexpr unsigned parts = 18;
constexpr unsigned places = 5000;
constexpr unsigned columns = 20;
/// All parts together: 24 bytes of position and normal a vertex, 12 bytes of indices a triangle.
constexpr qint64 meshBytes = 6660 * 24 + 11970 * 12;

/// A sheet of 10 rows of vertices, and one more for each part before this one.
std::shared_ptr<const osg::Mesh> sheet(unsigned part)
{
    const unsigned rows = 10 + part;
    std::vector<osg::Vec3f> positions;
    std::vector<std::uint32_t> triangles;
    for (unsigned row = 0; row < rows; ++row)
        for (unsigned column = 0; column < columns; ++column) {
            positions.push_back({float(column), float(row), float(part)});
            if (row + 1 == rows || column + 1 == columns)
                continue;
            const unsigned corner = row * columns + column;
            const unsigned above = corner + columns;
            triangles.insert(triangles.end(), {corner, corner + 1, above, above, corner + 1, above + 1});
        }
    auto mesh = std::make_shared<osg::Mesh>();
    mesh->normals = std::vector<osg::Vec3f>(positions.size(), {0, 0, 1});
    mesh->positions = std::move(positions);
    mesh->triangles = std::move(triangles);
    return mesh;
}

/// A quarter turn about Z, and a place of its own.
osg::NodePtr place(unsigned index, const osg::NodeCorePtr& part)
{
    const osg::Transform3DPtr core = osg::Transform3DBase::create();
    core->setMatrix(
        {{0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 30.f * float(index % 100), 40.f * float(index / 100), 5, 1}});
    const osg::NodePtr node = osg::makeNodeFor(core);
    osg::setName(node, ("place " + std::to_string(index)).c_str());
    node->addChild(osg::makeNodeFor(part));
    return node;
}

class InstancesTest : public ToolRun, public testing::WithParamInterface<const char*>
{
protected:
    QString writeAssembly() const
    {
        const osg::ExtReferencePtr core = osg::ExtReferenceBase::create();
        const osg::FileReferencePtr source = osg::FileReferenceBase::create();
        source->setPath(path("many.stp").toStdString());
        core->setSourceFile(source);
        core->setState(2);
        const osg::RefPtr<osg::NodePtr> root(osg::makeNodeFor(core));
        std::vector<osg::RefPtr<osg::NodePtr>> shapes;
        for (unsigned i = 0; i < parts; ++i) {
            const std::string name = "part " + std::to_string(i);
            shapes.emplace_back(bookmarkscene::part(
                name.c_str(), sheet(i), bookmarkscene::paint(name.c_str(), {0.25f, 0.5f, 0.05f * float(i)})));
        }
        for (unsigned i = 0; i < places; ++i)
            root->addChild(place(i, shapes[i % parts]->getCore()));
        EXPECT_TRUE(osg::scenefile::writeSceneFile(root, path("made.osb")));
        return writeCad("many.stp", path("made.osb"));
    }
};

TEST_P(InstancesTest, PlacesOfAPartKeepItsMesh)
{
    const Ending ending =
        znimport(withScriptedChild({writeAssembly(), text("-o"), path("out.glb"), text("--report"), path("report.json"),
                                    text("--set"), text("optimize.mergeGeometries=") + text(GetParam())}));
    ASSERT_EQ(ending.exitCode, 0) << ending.errors.toStdString();
    QFile report(path("report.json"));
    ASSERT_TRUE(report.open(QIODevice::ReadOnly));
    const nlohmann::json file = nlohmann::json::parse(report.readAll().toStdString())["files"][0];
    ASSERT_EQ(file["steps"].size(), 19u);
    for (const nlohmann::json& step : file["steps"]) {
        EXPECT_EQ(step["after"]["geometries"], parts) << step["name"];
        EXPECT_EQ(step["after"]["placedGeometries"], places) << step["name"];
        EXPECT_EQ(step["after"]["triangles"], 11970u) << step["name"];
        EXPECT_EQ(step["after"]["placedTriangles"], 3323936u) << step["name"];
    }
    const GlbFile glb(path("out.glb"));
    EXPECT_EQ(glb.json["meshes"].size(), parts);
    EXPECT_LE(glb.size(), 2 * meshBytes + qint64(glb.json["nodes"].dump().size()));
}

INSTANTIATE_TEST_SUITE_P(MergeGeometries, InstancesTest, testing::Values("off", "on"));

} // namespace
