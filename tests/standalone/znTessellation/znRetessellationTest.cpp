#include "tests/standalone/znTessellation/RetessellationTest.h"

#include "host/znOpenSGUtils/znOptimize.h"
#include "scene/Tags.h"

#include <BRepBuilderAPI_Copy.hxx>
#include <BRepBuilderAPI_Transform.hxx>
#include <BRep_Builder.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Compound.hxx>
#include <gp_Trsf.hxx>
#include <gp_Vec.hxx>

#include <QCoreApplication>

#include <numbers>

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{

/// How far the edges of triangles on the jacket of a cylinder of the radius 10 about Z run below it.
double deviationFromCylinder(const osg::Mesh& mesh)
{
    double largest = 0;
    for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
        const std::uint32_t a = mesh.triangles[i], b = mesh.triangles[i % 3 == 2 ? i - 2 : i + 1];
        const osg::Vec3f &p = mesh.positions[a], &q = mesh.positions[b];
        // The lids look along Z.
        if (std::abs(mesh.normals[a].z) < 0.5)
            largest = std::max(largest, 10 - std::hypot((p.x + q.x) / 2.0, (p.y + q.y) / 2.0));
    }
    return largest;
}

/// The faces of a box, none of them joined, the last one lifted off by `gap`.
TopoDS_Shape looseBox(double gap)
{
    TopoDS_Compound all;
    BRep_Builder builder;
    builder.MakeCompound(all);
    const TopoDS_Shape box = BRepPrimAPI_MakeBox(10, 20, 30).Shape();
    gp_Trsf lift;
    lift.SetTranslation(gp_Vec(0, 0, gap));
    int number = 0;
    for (TopExp_Explorer face(box, TopAbs_FACE); face.More(); face.Next())
        builder.Add(all, BRepBuilderAPI_Transform(BRepBuilderAPI_Copy(face.Current()).Shape(),
                                                  ++number == 6 ? lift : gp_Trsf(), true)
                             .Shape());
    return all;
}

TEST_F(RetessellationTest, ABoxBecomesTwelveTrianglesInSixFaces)
{
    const osg::NodePtr node = addSurface(box());
    retessellate({});
    const osg::Mesh& mesh = meshOf(node);
    EXPECT_EQ(mesh.triangles.size(), 36u);
    EXPECT_THAT(mesh.faces.span(), SizeIs(6));
    EXPECT_EQ(mesh.faces[5], (osg::FaceRange{10, 2}));
    EXPECT_NEAR(measuresOf(mesh).area, 2200, 1e-3);
    EXPECT_NEAR(measuresOf(mesh).volume, 6000, 1e-3);
    EXPECT_EQ(openEdges(mesh), 0u);
    EXPECT_EQ(mesh.normals.size(), mesh.positions.size());
    EXPECT_EQ(mesh.brep, ptx::occt::meshing::brepBlob(box()));
    EXPECT_THAT(m_log, IsEmpty());
}

TEST_F(RetessellationTest, FinerWishesComeNearerToTheSurface)
{
    const double volume = std::numbers::pi * 100 * 40;
    const osg::NodePtr node = addSurface(cylinder());
    retessellate({.chordDeviation = 0.5, .normalTolerance = 40});
    const double coarse = deviationFromCylinder(meshOf(node));
    EXPECT_LE(coarse, 0.5);
    EXPECT_GT(coarse, 0.1);
    EXPECT_NEAR(measuresOf(meshOf(node)).volume, volume, 0.1 * volume);
    retessellate({.chordDeviation = 0.02, .normalTolerance = 40});
    const double fine = deviationFromCylinder(meshOf(node));
    EXPECT_LE(fine, 0.02);
    EXPECT_GT(fine, 0.002);
    EXPECT_NEAR(measuresOf(meshOf(node)).volume, volume, 0.004 * volume);
    EXPECT_EQ(openEdges(meshOf(node)), 0u);
}

TEST_F(RetessellationTest, TheNormalToleranceBoundsTheTurnAlongAnEdge)
{
    const osg::NodePtr node = addSurface(cylinder());
    retessellate({.chordDeviation = 5, .normalTolerance = 10});
    // A turn of 10 degrees on the radius 10 leaves a gap of 10 (1 - cos 5 degrees).
    EXPECT_LE(deviationFromCylinder(meshOf(node)), 10 * (1 - std::cos(5 * std::numbers::pi / 180)) + 1e-5);
}

TEST_F(RetessellationTest, EdgesAreSplitWithoutCracks)
{
    const osg::NodePtr node = addSurface(cylinder());
    retessellate({});
    const MeshMeasures before = measuresOf(meshOf(node));
    EXPECT_GT(longestEdge(meshOf(node)), 30);
    retessellate({.maxChordLength = 3});
    const osg::Mesh& mesh = meshOf(node);
    EXPECT_LE(longestEdge(mesh), 3);
    EXPECT_EQ(openEdges(mesh), 0u);
    EXPECT_THAT(mesh.faces.span(), SizeIs(3));
    EXPECT_NEAR(measuresOf(mesh).area, before.area, 1e-2);
    EXPECT_NEAR(measuresOf(mesh).volume, before.volume, 1e-1);
}

TEST_F(RetessellationTest, LooseFacesAreStitchedWithinTheTolerance)
{
    const osg::NodePtr node = addSurface(looseBox(0.2));
    retessellate({});
    EXPECT_EQ(openEdges(meshOf(node)), 8u);
    retessellate({.useStitching = true, .stitchingTolerance = 0.05});
    EXPECT_EQ(openEdges(meshOf(node)), 8u);
    retessellate({.useStitching = true, .stitchingTolerance = 0.25});
    EXPECT_EQ(openEdges(meshOf(node)), 0u);
    EXPECT_THAT(meshOf(node).faces.span(), SizeIs(6));
}

TEST_F(RetessellationTest, AMeshWithoutASurfaceStaysAndTheUserIsTold)
{
    osg::Mesh plain = triangle();
    plain.brep = {};
    const osg::GeometryPtr core = geometry(plain);
    add(root, core);
    add(root, core);
    add(root, geometry(osg::Mesh()));
    const auto before = osg::GeometryAccess::sharedMesh(*core);
    retessellate({});
    EXPECT_EQ(osg::GeometryAccess::sharedMesh(*core), before);
    EXPECT_THAT(m_log, ElementsAre("1 geometries have no exact surface and keep their meshes"));
}

TEST_F(RetessellationTest, AnnotationsAreNotMissingASurface)
{
    osg::Mesh plain = triangle();
    plain.brep = {};
    const osg::NodePtr pmi = osg::makeNodeFor(osg::Group::create());
    osg::setTags(pmi, {"ptx::pmi"});
    root->addChild(pmi);
    add(pmi, geometry(plain));
    retessellate({});
    EXPECT_THAT(m_log, IsEmpty());
    add(root, geometry(plain));
    retessellate({});
    EXPECT_THAT(m_log, ElementsAre("1 geometries have no exact surface and keep their meshes"));
}

TEST_F(RetessellationTest, GeometryInManyPlacesIsMeshedOnceAndStaysShared)
{
    const osg::GeometryPtr shared = geometry(standIn(box()));
    const osg::NodePtr a = add(root, shared), b = add(addGroup(root, "group"), shared);
    retessellate({});
    EXPECT_EQ(a->getCore(), b->getCore());
    EXPECT_EQ(meshOf(b).triangles.size(), 36u);
}

TEST_F(RetessellationTest, MergedGeometryKeepsTheFacesOfAllItsSurfaces)
{
    const osg::NodePtr node = addSurface(box());
    addSurface(cylinder());
    znOptimize::mergeGeometry(root);
    ASSERT_EQ(root->getNChildren(), 1u);
    retessellate({.chordDeviation = 0.02});
    EXPECT_THAT(meshOf(node).faces.span(), SizeIs(6 + 3));
    EXPECT_NEAR(measuresOf(meshOf(node)).volume, 6000 + std::numbers::pi * 4000, 60);
    EXPECT_EQ(openEdges(meshOf(node)), 0u);
}

TEST_F(RetessellationTest, LinesPointsAndTexturesStayAndOtherValuesOfTheOldVerticesGo)
{
    osg::Mesh mesh = standIn(box());
    mesh.lines = std::vector<std::uint32_t>{0, 2};
    mesh.points = std::vector<std::uint32_t>{2};
    mesh.texCoords = std::vector<osg::Vec2f>{{0.25F, 0.5F}, {0.75F, 0.5F}, {0.5F, 1}};
    mesh.colors = std::vector<osg::Color4f>(3);
    mesh.occlusion = std::vector<float>(3, 0.5f);
    const osg::NodePtr node = add(root, geometry(mesh));
    retessellate({});
    const osg::Mesh& result = meshOf(node);
    EXPECT_EQ(result.triangles.size(), 36u);
    ASSERT_EQ(result.lines.size(), 2u);
    EXPECT_EQ(result.positions[result.lines[0]], (osg::Vec3f{1, 2, 3}));
    EXPECT_EQ(result.positions[result.lines[1]], (osg::Vec3f{1, 8, 3}));
    EXPECT_EQ(result.points[0], result.lines[1]);
    ASSERT_EQ(result.texCoords.size(), result.positions.size());
    EXPECT_EQ(result.texCoords[result.lines[0]], (osg::Vec2f{0.25F, 0.5F}));
    EXPECT_EQ(result.texCoords[result.lines[1]], (osg::Vec2f{0.5F, 1}));
    EXPECT_EQ(result.normals.size(), result.positions.size());
    EXPECT_TRUE(result.colors.empty());
    EXPECT_TRUE(result.occlusion.empty());
}

TEST_F(RetessellationTest, NothingChangesBeforeTheSurfacesAreRebuilt)
{
    const osg::NodePtr node = addSurface(box());
    znRetessellation retessellation;
    retessellation.addNodes({osg::NodePtr(), root, root});
    retessellation.setupTessellation(0.3, 25, 0, false, 0);
    retessellation.applyTessellation();
    EXPECT_EQ(meshOf(node).triangles.size(), 3u);
    retessellation.rebuildSurfaces();
    EXPECT_EQ(meshOf(node).triangles.size(), 36u);
    retessellation.rebuildSurfaces();
    EXPECT_EQ(meshOf(node).triangles.size(), 36u);
}

TEST_F(RetessellationTest, NothingIsLeftInTheTemporaryFolder)
{
    addSurface(box());
    retessellate({});
    EXPECT_THAT(QDir(m_session.temporaryFolder()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), IsEmpty());
}

TEST_F(RetessellationTest, DamagedSurfacesKeepTheirMeshesAndCostNoOtherItsOwn)
{
    const osg::NodePtr first = addSurface(box());
    std::vector<osg::NodePtr> damaged;
    const osg::Buffer<std::byte> sound = ptx::occt::meshing::brepBlob(cylinder());
    // Texts of the kernel's format before the numbers are spared: a change there is found at once.
    for (std::size_t i = 0; i < 24; ++i) {
        std::vector<std::byte> bytes(sound.begin(), sound.end());
        if (i % 3 == 0)
            bytes.resize(bytes.size() * (i + 1) / 30);
        else
            for (std::size_t place = 60 + 7 * i; place < bytes.size(); place += 150)
                bytes[place] ^= std::byte(i % 2 ? 0xff : 0x20);
        osg::Mesh mesh = triangle();
        mesh.brep = std::move(bytes);
        damaged.push_back(add(root, geometry(mesh)));
    }
    const osg::NodePtr last = addSurface(cylinder());
    retessellate({});
    EXPECT_EQ(meshOf(first).triangles.size(), 36u);
    EXPECT_GT(meshOf(last).triangles.size(), 36u);
    std::size_t kept = 0;
    for (const osg::NodePtr& node : damaged)
        kept += meshOf(node).triangles.size() == 3;
    EXPECT_GE(kept, 12u);
    EXPECT_THAT(m_log, SizeIs(kept));
    EXPECT_THAT(m_log, Each(testing::StartsWith("Geometry without a name keeps its mesh: ")));
}

/// A program in place of the real one, which it may call as "$REAL".
class StandInProgramTest : public RetessellationTest
{
protected:
    void useProgram(const QByteArray& body)
    {
        const QByteArray real = QCoreApplication::applicationDirPath().toUtf8() + "/ptxtessellate";
        const QString file = write(QStringLiteral("program"),
                                   "#!/bin/sh\nREAL=\"" + real + "\"\nfor OUTPUT; do :; done\n" + body + "\n");
        QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        set("tessellation.program", file);
    }
};

TEST_F(StandInProgramTest, WhatWasNotAtWorkInACrashGetsItsMesh)
{
    useProgram("case $(cat \"$0.runs\" 2>/dev/null) in\n"
               "'') echo first > \"$0.runs\"; printf e.s > \"$OUTPUT.parts\"; kill -SEGV $$;;\n"
               "first) echo second > \"$0.runs\"; exec \"$REAL\" \"$@\";;\n"
               "*) printf s > \"$OUTPUT.parts\"; kill -SEGV $$;;\n"
               "esac");
    const osg::NodePtr a = addSurface(box()), b = addSurface(box()), c = addSurface(box());
    retessellate({});
    EXPECT_EQ(meshOf(a).triangles.size(), 36u);
    EXPECT_EQ(meshOf(b).triangles.size(), 36u);
    EXPECT_EQ(meshOf(c).triangles.size(), 3u);
    EXPECT_THAT(m_log, ElementsAre("Geometry without a name keeps its mesh: meshing crashed (signal 11)"));
}

TEST_F(StandInProgramTest, TheProgramIsToldItsTime)
{
    useProgram("case \"$*\" in *\"limit.time=0.25 --set limit.time-per-mb=0 \"*) exit 11;; esac");
    set("tessellation.timeLimit", QStringLiteral("0.25"));
    const osg::NodePtr node = addSurface(box());
    retessellate({});
    EXPECT_EQ(meshOf(node).triangles.size(), 3u);
    EXPECT_THAT(m_log, ElementsAre("Geometry without a name keeps its mesh: meshing took too long"));
}

TEST_F(StandInProgramTest, ALimitThatIsReachedIsTold)
{
    useProgram("exit 10");
    addSurface(box());
    retessellate({});
    useProgram("exit 11");
    retessellate({});
    useProgram("exit 7");
    retessellate({});
    EXPECT_THAT(m_log, ElementsAre("Geometry without a name keeps its mesh: meshing needed too much memory",
                                   "Geometry without a name keeps its mesh: meshing took too long",
                                   "Geometry without a name keeps its mesh: meshing failed (code 7)"));
}

TEST_F(StandInProgramTest, OutputThatIsMissingOrForeignIsRefused)
{
    const osg::NodePtr node = addSurface(box());
    useProgram("exit 0");
    retessellate({});
    useProgram("cp /dev/null \"$OUTPUT\"");
    retessellate({});
    EXPECT_EQ(meshOf(node).triangles.size(), 3u);
    EXPECT_THAT(m_log, SizeIs(2));
}

TEST_F(StandInProgramTest, AProgramThatIsNotThereIsNamed)
{
    addSurface(box());
    addSurface(cylinder());
    set("tessellation.program", QStringLiteral("/nowhere/at all"));
    retessellate({});
    EXPECT_THAT(m_log, ElementsAre("Geometry without a name keeps its mesh: /nowhere/at all cannot be started",
                                   "Geometry without a name keeps its mesh: /nowhere/at all cannot be started"));
}

} // namespace
