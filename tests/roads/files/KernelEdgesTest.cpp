// What `znimport --glb-edges` writes of STEP parts, beside the edges that the CAD kernel has of them.

#include "tests/files/glb/GlbFile.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRep_Tool.hxx>
#include <GCPnts_AbscissaPoint.hxx>
#include <STEPControl_Reader.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>

#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>

namespace
{

struct Edges {
    std::size_t count = 0;
    double length = 0; ///< millimetres
};

/// Those between two faces and at the rims of open ones: not the seam that a face has with itself, and no poles.
Edges edgesOfKernel(const QString& file)
{
    STEPControl_Reader reader;
    Edges edges;
    if (reader.ReadFile(QFile::encodeName(file).constData()) != IFSelect_RetDone || reader.TransferRoots() == 0)
        return edges;
    TopTools_IndexedDataMapOfShapeListOfShape facesOfEdges;
    TopExp::MapShapesAndAncestors(reader.OneShape(), TopAbs_EDGE, TopAbs_FACE, facesOfEdges);
    for (int i = 1; i <= facesOfEdges.Extent(); ++i) {
        const TopoDS_Edge edge = TopoDS::Edge(facesOfEdges.FindKey(i));
        const TopTools_ListOfShape& faces = facesOfEdges(i);
        const bool isSeam = faces.Extent() > 1 && faces.First().IsSame(faces.Last());
        if (BRep_Tool::Degenerated(edge) || isSeam || faces.IsEmpty())
            continue;
        ++edges.count;
        edges.length += GCPnts_AbscissaPoint::Length(BRepAdaptor_Curve(edge));
    }
    return edges;
}

/// The lines of a plain file of one part, in which nothing but the top node has a place.
Edges edgesOfFile(const GlbFile& file)
{
    Edges edges;
    for (const nlohmann::json& node : file.json["nodes"]) {
        if (!node.contains("mesh"))
            continue;
        for (const nlohmann::json& primitive : file.json["meshes"][node["mesh"].get<std::size_t>()]["primitives"]) {
            if (!primitive.contains("extras") || !primitive["extras"].contains("edges"))
                continue;
            edges.count += primitive["extras"]["edges"].size();
            const auto positions = file.array<float>(primitive["attributes"]["POSITION"].get<std::size_t>());
            const auto accessor = primitive["indices"].get<std::size_t>();
            const bool isShort = file.json["accessors"][accessor]["componentType"] == 5123;
            const std::vector<std::uint16_t> narrow = file.array<std::uint16_t>(accessor);
            const std::vector<std::uint32_t> wide = file.array<std::uint32_t>(accessor);
            const auto count = file.json["accessors"][accessor]["count"].get<std::size_t>();
            for (std::size_t i = 0; i + 1 < count; i += 2) {
                const std::size_t a = isShort ? narrow[i] : wide[i];
                const std::size_t b = isShort ? narrow[i + 1] : wide[i + 1];
                edges.length +=
                    std::hypot(positions[3 * a] - positions[3 * b], positions[3 * a + 1] - positions[3 * b + 1],
                               positions[3 * a + 2] - positions[3 * b + 2]);
            }
        }
    }
    return edges;
}

class KernelEdgesTest : public testing::TestWithParam<const char*>
{
};

/// Chords are shorter than their arcs, and edges that follow each other between the same two faces are one.
TEST_P(KernelEdgesTest, LinesAreAsLongAsTheEdgesOfTheKernel)
{
    const QString input = qEnvironmentVariable("ZN_CORPUS") + QLatin1Char('/') + QLatin1String(GetParam());
    if (!QFile::exists(input))
        GTEST_SKIP() << "ZN_CORPUS names no folder with " << GetParam() << " in it";
    const QTemporaryDir folder;
    const QString output = folder.filePath(QStringLiteral("edges.glb"));
    QProcess znimport;
    znimport.start(QStringLiteral(ZNIMPORT), {input, QStringLiteral("-o"), output, QStringLiteral("--glb-edges")});
    ASSERT_TRUE(znimport.waitForFinished(300'000));
    const Edges kernel = edgesOfKernel(input);
    const Edges ours = edgesOfFile(GlbFile(output));
    std::printf("| %s | %zu | %zu | %.1f | %.1f |\n", GetParam(), kernel.count, ours.count, kernel.length, ours.length);
    ASSERT_GT(kernel.count, 0u);
    EXPECT_LE(ours.count, kernel.count);
    EXPECT_GE(ours.length, kernel.length * 0.99);
    EXPECT_LE(ours.length, kernel.length * 1.001);
}

INSTANTIATE_TEST_SUITE_P(, KernelEdgesTest,
                         testing::Values("step/cube_hole.step", "step/Ventilator.stp", "step/linkrods.step",
                                         "step/nist_ctc_02_asme1_ap203.stp", "step/eight_cyl.stp",
                                         "step/conical-surface.step", "step/featuretype.STEP"));

} // namespace
