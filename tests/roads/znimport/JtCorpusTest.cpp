// The tool on real JT files.

#include "tests/roads/znimport/ToolRun.h"

#include <nlohmann/json.hpp>

namespace
{

using nlohmann::json;

class ZnimportJtTest : public ToolRun
{
protected:
    QString fileInCorpus(const char* name) const
    {
        return qEnvironmentVariable("ZN_CORPUS") + text("/jt/") + text(name);
    }

    /// What the report says of the one file of a run that went well.
    json report(const QStringList& arguments)
    {
        const Ending run = znimport(arguments + QStringList{text("--report"), path("report.json")});
        EXPECT_EQ(run.exitCode, 0) << run.errors.toStdString();
        m_errors = run.errors;
        m_tree = run.output;
        QFile file(path("report.json"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return json::parse(file.readAll().toStdString())["files"][0];
    }

    QString m_errors;
    QString m_tree;
};

#define NEEDS(name)                                                                                                    \
    if (!QFile::exists(fileInCorpus(name)))                                                                            \
    GTEST_SKIP() << "ZN_CORPUS names no folder with jt/" << name << " in it"

TEST_F(ZnimportJtTest, AnAssemblyOfTwelveFilesComesInByTwoProcesses)
{
    NEEDS("fishing_reel.jt");
    const json file = report({fileInCorpus("fishing_reel.jt"), text("--jobs"), text("2"), text("--tree")});
    EXPECT_TRUE(m_errors.contains(text("fishing_reel.jt: 12 of 12 parts done, 0 running, 0 failed\n")))
        << m_errors.toStdString();
    EXPECT_EQ(file["state"], "succeeded");
    EXPECT_EQ(file["missing"], json::array());
    EXPECT_EQ(file["counts"]["placedTriangles"], 9909);
    EXPECT_EQ(file["counts"]["placedGeometries"], 17);
    EXPECT_EQ(file["counts"]["references"], 0);
    EXPECT_TRUE(m_tree.contains(text("handle_assembly_1 [Transform3D], at 48 41 18, axes 0 1 0, 0 0 -1, -1 0 0\n")))
        << m_tree.toStdString();
    EXPECT_TRUE(m_tree.contains(text("button [Geometry], 286 triangles, material '#006c00'\n")))
        << m_tree.toStdString();
}

TEST_F(ZnimportJtTest, TheLevelOfDetailIsASettingOfTheTool)
{
    NEEDS("opening_protection_plate1_jt8.0.jt");
    const QString plate = fileInCorpus("opening_protection_plate1_jt8.0.jt");
    EXPECT_EQ(report({plate})["counts"]["placedTriangles"], 800);
    EXPECT_LT(report({plate, text("--set"), text("mesh.level=3")})["counts"]["placedTriangles"], 400);
}

TEST_F(ZnimportJtTest, AnnotationsAreSaidToBeLeftOut)
{
    NEEDS("butterflyvalve_v9.5.jt");
    const QString valve = fileInCorpus("butterflyvalve_v9.5.jt");
    const json file = report({valve});
    EXPECT_TRUE(m_errors.contains(text("butterflyvalve_v9.5.jt: segments of PMI are left out: 9\n")))
        << m_errors.toStdString();
    EXPECT_EQ(file["leftOut"], json::parse(R"([{"what": "segments of PMI", "count": 9, "files": 1}])"));
}

} // namespace
