// What the tool reports on its runs.

#include "files/scenefile/SceneFile.h"
#include "host/OSGSystem/Cast.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "scene/Tags.h"
#include "tests/roads/znimport/ToolRun.h"
#include "tests/support/BookmarkScene.h"

#include <nlohmann/json.hpp>

namespace
{

using nlohmann::json;

class ReportTest : public ToolRun
{
protected:
    static osg::NodePtr reference(const char* name, const char* file)
    {
        const osg::ExtReferencePtr core = osg::ExtReferenceBase::create();
        const osg::FileReferencePtr source = osg::FileReferenceBase::create();
        source->setPath(file);
        core->setSourceFile(source);
        core->setState(2);
        const osg::NodePtr node = osg::makeNodeFor(core);
        osg::setName(node, name);
        return node;
    }

    /// A CAD file of two boxes with materials of equal look and name, one of them below a reference, and one place of
    /// the first box. Its root has `tags`.
    QString writeEngine(const std::vector<std::string>& tags = {}) const
    {
        const osg::RefPtr<osg::NodePtr> root(reference("engine", "engine.stp"));
        osg::setTags(root, tags);
        const auto mesh = bookmarkscene::box({0, 0, 0}, {10, 20, 30});
        root->addChild(bookmarkscene::part("first", mesh, bookmarkscene::paint("steel", {0.5f, 0.25f, 0.125f})));
        root->addChild(osg::makeNodeFor(root->getChild(0)->getCore()));
        root->addChild(reference("sub", "sub.stp"));
        root->getChild(2)->addChild(
            bookmarkscene::part("second", mesh, bookmarkscene::paint("steel", {0.5f, 0.25f, 0.125f})));
        const QString made = path("made.osb");
        EXPECT_TRUE(osg::scenefile::writeSceneFile(root, made));
        return writeCad("engine.stp", made);
    }

    json report() const
    {
        QFile file(path("report.json"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return json::parse(file.readAll().toStdString());
    }

    static const json& step(const json& file, const char* name)
    {
        for (const json& step : file["steps"])
            if (step["name"] == name)
                return step;
        static const json none;
        ADD_FAILURE() << name;
        return none;
    }

    Ending reported(const QStringList& arguments) const
    {
        return znimport(withScriptedChild(arguments) + QStringList{text("--report"), path("report.json")});
    }
};

TEST_F(ReportTest, TrianglesWithWrongNormalsAreCounted)
{
    const QString file = write("lit.obj", "v 0 0 0\nv 10 0 0\nv 10 5 0\nv 0 5 0\nvn 0 0 1\nvn 0 0 -1\n"
                                          "f 1//2 2//2 3//2\nf 1//1 2//2 3//1\nf 1//1 3//1 4//1\n");
    EXPECT_EQ(reported({file}).exitCode, 0);
    EXPECT_EQ(report()["files"][0]["wrongNormals"], (json{{"offPlane", 2}, {"inverted", 1}, {"repaired", false}}));
    EXPECT_EQ(reported({file, text("--set"), text("mesh.repairNormals=on")}).exitCode, 0);
    EXPECT_EQ(report()["files"][0]["wrongNormals"], (json{{"offPlane", 2}, {"inverted", 1}, {"repaired", true}}));
}

TEST_F(ReportTest, EachStepTellsWhatItFoundAndLeft)
{
    const QString engine = writeEngine();
    const QString glb = path("out.glb");
    const Ending ending = reported({engine, text("-o"), glb});
    ASSERT_EQ(ending.exitCode, 0) << ending.errors.toStdString();
    const json told = report();
    EXPECT_EQ(told["format"], "znimport-report");
    EXPECT_EQ(told["version"], 1);
    EXPECT_EQ(told["generator"], "znimport " ZN_VERSION);
    EXPECT_EQ(told["exitCode"], 0);
    EXPECT_EQ(told["outputs"], json::array({glb.toStdString()}));
    EXPECT_EQ(told["warnings"], json::array());
    EXPECT_FALSE(told.contains("error"));
    ASSERT_EQ(told["files"].size(), 1u);
    const json& file = told["files"][0];
    EXPECT_EQ(file["file"], engine.toStdString());
    EXPECT_EQ(file["state"], "succeeded");
    EXPECT_EQ(file["missing"], json::array());
    EXPECT_EQ(file["leftOut"], json::array());
    ASSERT_EQ(file["steps"].size(), 19u);
    EXPECT_EQ(file["steps"][0]["name"], "optimizeMaterials");
    EXPECT_EQ(file["steps"][18]["name"], "notifyReferences");
    EXPECT_EQ(step(file, "optimizeMaterials")["before"],
              json::parse(R"({"nodes": 5, "geometries": 2, "materials": 2, "triangles": 24, "references": 2,
                              "placedGeometries": 3, "placedTriangles": 36})"));
    EXPECT_EQ(step(file, "optimizeMaterials")["after"]["materials"], 1);
    EXPECT_EQ(step(file, "removeSourceReferences")["before"]["references"], 2);
    EXPECT_EQ(step(file, "removeSourceReferences")["after"],
              json::parse(R"({"nodes": 4, "geometries": 2, "materials": 1, "triangles": 24, "references": 0,
                              "placedGeometries": 3, "placedTriangles": 36})"));
    EXPECT_EQ(file["counts"], step(file, "notifyReferences")["after"]);
    EXPECT_EQ(told["scene"]["placedTriangles"], 36);
    double seconds = 0;
    for (const json& one : file["steps"]) {
        EXPECT_GE(one["seconds"].get<double>(), 0);
        seconds += one["seconds"].get<double>();
    }
    EXPECT_LE(seconds, told["seconds"].get<double>());
}

TEST_F(ReportTest, OnAFullDiskTheFormerReportStaysAndTheRunFails)
{
    const QString former = write("report.json", "former");
    QProcess process;
    // A file may grow to a block of 512 or 1,024 bytes, as the shell counts them.
    process.start(QStringLiteral("sh"), {text("-c"), text("ulimit -f 1; exec \"$@\""), text("sh"), text(ZNIMPORT),
                                         text(EXAMPLE_MODELS "/bracket.obj"), text("--report"), former});
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 1);
    const QByteArray errors = process.readAllStandardError();
    EXPECT_TRUE(errors.contains("report.json: File too large")) << errors.toStdString();
    QFile file(former);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("former"));
}

TEST_F(ReportTest, AFailureAndWhatIsMissingAreReported)
{
    const osg::RefPtr<osg::NodePtr> root(reference("engine", "engine.stp"));
    root->addChild(reference("place", path("nowhere.stp").toUtf8().constData()));
    osg::fcCast<osg::ExtReference>(root->getChild(0)->getCore())->setState(0);
    ASSERT_TRUE(osg::scenefile::writeSceneFile(root, path("made.osb")));
    const QString damaged = write("damaged.stp", "log \"no product\"\nexit 7\n");
    const Ending ending = reported({damaged, writeCad("engine.stp", path("made.osb"))});
    EXPECT_EQ(ending.exitCode, 3) << ending.errors.toStdString();
    const json told = report();
    EXPECT_EQ(told["exitCode"], 3);
    const json& failed = told["files"][0];
    EXPECT_EQ(failed["state"], "failed");
    EXPECT_EQ(failed["counts"]["nodes"], 0);
    EXPECT_EQ(failed["steps"], json::array());
    EXPECT_NE(failed["error"].get<std::string>().find("damaged.stp: "), std::string::npos);
    const json& partial = told["files"][1];
    EXPECT_EQ(partial["state"], "partial");
    ASSERT_EQ(partial["missing"].size(), 1u);
    EXPECT_EQ(partial["missing"][0]["file"], path("nowhere.stp").toStdString());
    EXPECT_NE(partial["missing"][0]["reason"], "");
}

TEST_F(ReportTest, WhatIsLeftOutIsCountedAndSaidAndTheImportIsComplete)
{
    const Ending ending = reported({writeEngine({"ptx::left-out=4 segments of PMI\n/engine.stp"})});
    EXPECT_EQ(ending.exitCode, 0);
    EXPECT_TRUE(ending.errors.contains(text("engine.stp: segments of PMI are left out: 4\n")))
        << ending.errors.toStdString();
    const json told = report();
    EXPECT_EQ(told["files"][0]["state"], "succeeded");
    EXPECT_EQ(told["files"][0]["leftOut"], json::parse(R"([{"what": "segments of PMI", "count": 4, "files": 1}])"));
}

TEST_F(ReportTest, ARunWithoutAnyTreeIsReportedToo)
{
    const Ending ending = reported({path("nowhere.obj")});
    EXPECT_EQ(ending.exitCode, 1);
    const json told = report();
    EXPECT_EQ(told["exitCode"], 1);
    EXPECT_EQ(told["files"][0]["error"], (path("nowhere.obj") + text(": the file does not exist")).toStdString());
    EXPECT_EQ(told["outputs"], json::array());
}

TEST_F(ReportTest, AnOutputThatCannotBeWrittenIsTheErrorOfTheRun)
{
    const QString glb = path("out.glb");
    QDir().mkpath(glb);
    const Ending ending = reported({writeEngine(), text("-o"), glb});
    EXPECT_EQ(ending.exitCode, 1);
    const json told = report();
    EXPECT_EQ(told["exitCode"], 1);
    EXPECT_EQ(told["files"][0]["state"], "succeeded");
    EXPECT_EQ(told["error"].get<std::string>().find(glb.toStdString()), 0u);
    EXPECT_EQ(told["outputs"], json::array());
}

TEST_F(ReportTest, AFolderThatIsNotThereIsTheErrorOfARunThatImportsNothing)
{
    const QString glb = path("no/such/folder/out.glb");
    const Ending ending = reported({writeEngine(), text("-o"), glb});
    EXPECT_EQ(ending.exitCode, 1);
    const json told = report();
    EXPECT_EQ(told["error"].get<std::string>().find(glb.toStdString()), 0u);
    EXPECT_EQ(told["files"], json::array());
}

TEST_F(ReportTest, AReportThatCannotBeWrittenIsAFailure)
{
    const QString file = path("no/such/folder/report.json");
    const Ending ending = znimport(withScriptedChild({writeEngine(), text("--report"), file}));
    EXPECT_EQ(ending.exitCode, 1);
    EXPECT_TRUE(ending.errors.contains(text("znimport: ") + file)) << ending.errors.toStdString();
}

TEST_F(ReportTest, AFormerReportIsReplaced)
{
    write("report.json", QByteArray(1 << 20, 'x'));
    EXPECT_EQ(reported({writeEngine()}).exitCode, 0);
    EXPECT_EQ(report()["version"], 1);
    EXPECT_EQ(QDir(QFileInfo(path("report.json")).path()).entryList({text("report*")}),
              QStringList{text("report.json")});
}

} // namespace
