// What the settings of the optimisation make of files of meshes, and of whom they say that they do nothing.

#include "tests/roads/znimport/ToolRun.h"

#include <QFileInfo>

#include <nlohmann/json.hpp>

namespace
{

using nlohmann::json;

/// As programs write boards: every node has a number for a name, and every shape a material of its own.
QByteArray board()
{
    QByteArray text = "#VRML V2.0 utf8\nDEF o0 Group { children [\n";
    const char* const shapes[] = {
        "IndexedFaceSet { coord Coordinate { point [ 0 0 0, 1 0 0, 0 1 0 ] } coordIndex [ 0 1 2 -1 ] }",
        "IndexedLineSet { coord Coordinate { point [ 0 0 0, 1 0 0, 0 1 0 ] } coordIndex [ 0 1 2 -1 ] }",
        "PointSet { coord Coordinate { point [ 0 0 0, 1 0 0, 0 1 0 ] } color Color { color [ 1 0 0, 0 1 0, 0 0 1 ] } "
        "}"};
    for (int i = 0; i < 60; ++i) {
        const QByteArray number = QByteArray::number(10 * i + 1);
        text += "DEF o" + number + " Transform { translation " + number + " 0 0 children DEF o" +
                QByteArray::number(10 * i + 2) +
                " Shape { appearance Appearance { material Material { diffuseColor 0." + QByteArray::number(2 + i % 4) +
                " 0.5 0 } } geometry " + shapes[i % 3] + " } }\n";
    }
    return text + "] }\n";
}

QByteArray cubes()
{
    QByteArray text;
    for (int i = 0; i < 20; ++i) {
        const QByteArray x = QByteArray::number(3 * i), number = QByteArray::number(3 * i);
        text += "g cube" + QByteArray::number(i) + "\nv " + x + " 0 0 1 0 0\nv " + x + " 5 0 0 1 0\nv " + x +
                " 5 7 0 0 1\nf -3 -2 -1\n";
    }
    return text;
}

class OptimizeSettingsTest : public ToolRun
{
protected:
    struct Run {
        json file;
        QString tree;
        QString errors;
        qint64 bytes = 0;
    };

    /// Imports `file` with settings such as "optimize.keepNurbs=on".
    Run run(const QString& file, const QStringList& settings) const
    {
        QStringList arguments{file, text("--tree"), text("--report"), path("report.json"), text("-o"), path("out.glb")};
        for (const QString& setting : settings)
            arguments << text("--set") << setting;
        const Ending end = znimport(arguments);
        EXPECT_EQ(end.exitCode, 0) << end.errors.toStdString();
        QFile report(path("report.json"));
        EXPECT_TRUE(report.open(QIODevice::ReadOnly));
        const json told = json::parse(report.readAll().toStdString());
        return {told["files"][0], end.output, end.errors, QFileInfo(path("out.glb")).size()};
    }
    int countOf(const Run& run, const char* what) const { return run.file["counts"][what].get<int>(); }
};

TEST_F(OptimizeSettingsTest, ABoardHasItsMaterialsOnceAndItsShapesOnRequest)
{
    const QString file = write("board.vrml", board());
    const Run plain = run(file, {});
    EXPECT_EQ(countOf(plain, "materials"), 6) << "four of the triangles, and what lines and points shine with";
    EXPECT_EQ(countOf(plain, "geometries"), 60);
    EXPECT_GT(countOf(plain, "nodes"), 120);
    const Run apart = run(file, {text("optimize.mergeMaterials=off")});
    EXPECT_EQ(countOf(apart, "materials"), 60);
    EXPECT_EQ(countOf(apart, "nodes"), countOf(plain, "nodes"));

    const Run merged = run(file, {text("optimize.mergeGeometries=on")});
    EXPECT_EQ(countOf(merged, "geometries"), 6);
    EXPECT_EQ(countOf(merged, "nodes"), 7) << "with that of the file";
    EXPECT_EQ(countOf(merged, "triangles"), 20);
    EXPECT_EQ(merged.tree.count(text("5 triangles, material")), 4);
    EXPECT_EQ(merged.tree.count(text("40 lines, material")), 1);
    EXPECT_EQ(merged.tree.count(text("60 points, material")), 1);
    EXPECT_LT(merged.bytes, plain.bytes);
    const json& steps = merged.file["steps"];
    ASSERT_EQ(steps.size(), 4u);
    EXPECT_EQ(steps[0]["name"], "optimizeMaterials");
    EXPECT_EQ(steps[0]["before"]["materials"], 60);
    EXPECT_EQ(steps[0]["after"]["materials"], 6);
    EXPECT_EQ(steps[2]["name"], "mergeGeometries");
    EXPECT_EQ(steps[2]["after"]["geometries"], 6);
}

TEST_F(OptimizeSettingsTest, VertexColoursStay)
{
    const QString file = write("cubes.obj", "o tower\n" + cubes());
    const Run merged = run(file, {text("optimize.mergeGeometries=on")});
    EXPECT_EQ(countOf(merged, "geometries"), 1) << "of one parent";
    QFile glb(path("out.glb"));
    ASSERT_TRUE(glb.open(QIODevice::ReadOnly));
    EXPECT_TRUE(glb.readAll().contains("COLOR_0"));
}

TEST_F(OptimizeSettingsTest, WhatHasNoEffectIsToldInOneLine)
{
    const QString file = write("board.wrl", board());
    const QString line = file + text(": these settings have no effect on files of its kind: "
                                     "optimize.removeEmptyGroups, optimize.keepNurbs");
    const Run told = run(file, {text("optimize.keepNurbs=on"), text("optimize.removeEmptyGroups=on"),
                                text("optimize.flushTransformations=on")});
    EXPECT_EQ(told.errors.count(text("znimport: ") + line + text("\n")), 1) << told.errors.toStdString();
    EXPECT_EQ(told.errors.count(text("optimize.")), 2);
    EXPECT_EQ(told.file["warnings"], json::array({line.toStdString()}));

    run(file, {});
    ASSERT_TRUE(QFile::rename(path("out.glb"), path("again.glb")));
    EXPECT_EQ(run(path("again.glb"), {text("optimize.unshareNodes=on")}).file["warnings"], json::array());
    EXPECT_EQ(znimport({file, text("-o"), path("scene.osb")}).exitCode, 0);
    EXPECT_TRUE(run(path("scene.osb"), {text("optimize.unshareNodes=on")})
                    .errors.contains(text("no effect on files of its kind: optimize.unshareNodes\n")));
}

TEST_F(OptimizeSettingsTest, NoneButThoseThatCopyMakesAFileLarger)
{
    const QString ply = write("a.ply", "ply\nformat ascii 1.0\nelement vertex 3\nproperty float x\nproperty float y\n"
                                       "property float z\nelement face 1\nproperty list uchar int vertex_indices\n"
                                       "end_header\n0 0 0\n1 0 0\n0 1 0\n3 0 1 2\n");
    const QString stl = write("a.stl", "solid a\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\n"
                                       "vertex 0 1 0\nendloop\nendfacet\nendsolid a\n");
    for (const QString& file : {write("board.wrl", board()), write("cubes.obj", cubes()), ply, stl}) {
        const qint64 bytes = run(file, {}).bytes;
        EXPECT_LE(bytes, run(file, {text("optimize.mergeMaterials=off")}).bytes) << file.toStdString();
        for (const char* name : {"removeEmptyGroups", "mergeGeometries", "solidKernel"})
            EXPECT_LE(run(file, {text("optimize.") + text(name) + text("=on")}).bytes, bytes)
                << name << ' ' << file.toStdString();
    }
}

class OptimizeSettingsCorpusTest : public OptimizeSettingsTest, public testing::WithParamInterface<const char*>
{
protected:
    void SetUp() override
    {
        m_file = qEnvironmentVariable("ZN_CORPUS") + text("/") + text(GetParam());
        if (!QFile::exists(m_file))
            GTEST_SKIP() << "ZN_CORPUS names no folder with " << GetParam() << " in it";
    }
    QString m_file;
};

TEST_P(OptimizeSettingsCorpusTest, NoneButThoseThatCopyMakesAFileLarger)
{
    const qint64 bytes = run(m_file, {}).bytes;
    EXPECT_LE(bytes, run(m_file, {text("optimize.mergeMaterials=off")}).bytes);
    std::vector<const char*> names = {"removeEmptyGroups", "solidKernel"};
    if (!m_file.endsWith(text(".stp"))) // exact surfaces are meshed anew when they are merged
        names.push_back("mergeGeometries");
    for (const char* name : names)
        EXPECT_LE(run(m_file, {text("optimize.") + text(name) + text("=on")}).bytes, bytes) << name;
}

INSTANTIATE_TEST_SUITE_P(, OptimizeSettingsCorpusTest,
                         testing::Values("obj/hundred_cubes.obj", "obj/spider.obj", "gltf/OrientationTest.glb",
                                         "gltf/CubeHierarchy/CubeHierarchy.gltf", "wrl/led0603.wrl",
                                         "jt/butterflyvalve_v9.5.jt", "jt/fishing_reel.jt", "step/as1-oc-214.stp"));

class BoardCorpusTest : public OptimizeSettingsTest
{
};

TEST_F(BoardCorpusTest, ABoardOfThousandsOfNodesComesDownToAFew)
{
    const QString file = qEnvironmentVariable("ZN_CORPUS") + text("/wrl/ESP32-WROVER-E.wrl");
    if (!QFile::exists(file))
        GTEST_SKIP() << "ZN_CORPUS names no folder with this board in it";
    const Run plain = run(file, {});
    EXPECT_EQ(countOf(plain, "materials"), 8);
    EXPECT_EQ(countOf(plain, "geometries"), 2124);
    const Run merged = run(file, {text("optimize.mergeGeometries=on")});
    EXPECT_EQ(countOf(merged, "materials"), 8);
    EXPECT_LT(20 * countOf(merged, "nodes"), countOf(plain, "nodes"));
    EXPECT_EQ(countOf(merged, "triangles"), countOf(plain, "triangles"));
    EXPECT_LT(merged.bytes, plain.bytes);
}

} // namespace
