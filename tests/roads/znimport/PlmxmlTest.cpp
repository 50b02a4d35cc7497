// The tool on PLMXML documents: the sample with the real converter, others with the scripted child.

#include "tests/gltf-validator/GltfValidator.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <csignal>

namespace
{

using nlohmann::json;

class ZnimportPlmxmlTest : public testing::Test
{
protected:
    QString path(const QString& name) const { return m_folder.filePath(name); }

    QString write(const QString& name, const QByteArray& content) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }
    /// A document with one solid part for each location.
    QString writeDocument(const QStringList& locations) const
    {
        QString roots, instances, parts;
        for (int i = 0; i < locations.size(); ++i) {
            roots += QStringLiteral("i%1 ").arg(i);
            instances += QStringLiteral("<Instance id='i%1' name='I%1' partRef='p%1'/>\n").arg(i);
            parts += QStringLiteral("<Part id='p%1' name='P%1' type='solid'><Representation id='r%1' location='%2'/>"
                                    "</Part>\n")
                         .arg(i)
                         .arg(locations[i]);
        }
        return write(QStringLiteral("car.plmxml"),
                     (QStringLiteral("<PLMXML>\n<ProductDef id='pd'>\n<InstanceGraph rootRefs='%1'>\n").arg(roots) +
                      instances + QStringLiteral("</InstanceGraph>\n") + parts +
                      QStringLiteral("</ProductDef>\n</PLMXML>\n"))
                         .toUtf8());
    }

    int run(const QStringList& arguments)
    {
        m_process.start(QString::fromUtf8(ZNIMPORT), arguments);
        EXPECT_TRUE(m_process.waitForFinished(100000));
        m_output = QString::fromUtf8(m_process.readAllStandardOutput());
        m_errors = QString::fromUtf8(m_process.readAllStandardError());
        return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    }

    static json read(const QString& name)
    {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return json::parse(file.readAll().toStdString());
    }

    QTemporaryDir m_folder{QDir::tempPath() + QStringLiteral("/znimport plmxml äö XXXXXX")};
    QProcess m_process;
    QString m_output;
    QString m_errors;
};

TEST_F(ZnimportPlmxmlTest, TheSampleBecomesAGlbAndAPicture)
{
    const QString glb = path(QStringLiteral("cart.glb"));
    const QString png = path(QStringLiteral("cart.png"));
    EXPECT_EQ(
        run({QString::fromUtf8(EXAMPLE_MODELS "/../plmxml/cart.plmxml"), QStringLiteral("--tree"), QStringLiteral("-o"),
             glb, QStringLiteral("--snapshot"), png, QStringLiteral("--size"), QStringLiteral("320x200")}),
        0)
        << m_errors.toStdString();
    EXPECT_TRUE(m_output.contains(QStringLiteral("Right wheel [Transform3D], at 100 0 370")));
    for (const char* step : {"Reading document", "Part files found: 4", "Loading wheel.wrl",
                             "4 of 4 parts done, 0 running, 0 failed", "Optimising"})
        EXPECT_TRUE(m_errors.contains(QStringLiteral("cart.plmxml: ") + QString::fromUtf8(step) + QLatin1Char('\n')))
            << step << "\n"
            << m_errors.toStdString();
    if (gltfvalidator::isInstalled()) {
        EXPECT_EQ(gltfvalidator::validate(glb), gltfvalidator::Verdict());
    }
    EXPECT_EQ(QImage(png).size(), QSize(320, 200));
}

TEST_F(ZnimportPlmxmlTest, MissingPartsEndWithThreeAndAreNamedWithTheirInstances)
{
    write(QStringLiteral("plate.obj"), "v 0 0 0\nv 2 0 0\nv 0 3 0\nf 1 2 3\n");
    const QString glb = path(QStringLiteral("car.glb"));
    EXPECT_EQ(run({writeDocument({QStringLiteral("none.stp"), QStringLiteral("plate.obj"), QStringLiteral("none.stp")}),
                   QStringLiteral("-o"), glb}),
              3);
    EXPECT_TRUE(m_errors.contains(QStringLiteral("znimport: missing: ") + path(QStringLiteral("none.stp")) +
                                  QStringLiteral(": there is no such file (used by P0, P2)\n")))
        << m_errors.toStdString();
    EXPECT_TRUE(QFile::exists(glb));
}

TEST_F(ZnimportPlmxmlTest, TheReportTellsWhatTheSampleHolds)
{
    const QString file = path(QStringLiteral("report.json"));
    ASSERT_EQ(run({QString::fromUtf8(EXAMPLE_MODELS "/../plmxml/cart.plmxml"), QStringLiteral("--report"), file}), 0)
        << m_errors.toStdString();
    const json document = read(file)["files"][0]["document"];
    EXPECT_EQ(document, (json{{"instances", 9},
                              {"parts", 6},
                              {"partFiles", 4},
                              {"occurrences", 2},
                              {"materials", 3},
                              {"danglingReferences", 0},
                              {"dangling", json::array()}}));
}

TEST_F(ZnimportPlmxmlTest, TheReportNamesReferencesThatLeadNowhere)
{
    const QString file = path(QStringLiteral("report.json"));
    const QString document =
        write(QStringLiteral("car.plmxml"), "<PLMXML>\n<ProductDef>\n<InstanceGraph rootRefs='i'>\n"
                                            "<Instance id='i' partRef='#gone'/></InstanceGraph></ProductDef></PLMXML>");
    // It places nothing.
    EXPECT_EQ(run({document, QStringLiteral("--report"), file}), 1) << m_errors.toStdString();
    const json told = read(file)["files"][0]["document"];
    EXPECT_EQ(told["danglingReferences"], 1);
    EXPECT_EQ(
        told["dangling"],
        json::array(
            {{{"line", 4}, {"element", "Instance"}, {"id", "i"}, {"attribute", "partRef"}, {"target", "#gone"}}}));
}

TEST_F(ZnimportPlmxmlTest, TheTreeAloneReadsNoPartFileAndTellsWhichItWouldRead)
{
    const QString report = path(QStringLiteral("report.json"));
    const QString kept = path(QStringLiteral("kept.plmxml"));
    EXPECT_EQ(run({QString::fromUtf8(EXAMPLE_MODELS "/../plmxml/cart_export.xml"), QStringLiteral("--tree-only"),
                   QStringLiteral("--report"), report, QStringLiteral("--keep-normalised"), kept}),
              0)
        << m_errors.toStdString();
    EXPECT_TRUE(m_output.contains(QStringLiteral("part files: 4 would be read, 0 missing\n")));
    EXPECT_TRUE(m_output.contains(QStringLiteral("wheel.wrl (4 places)\n"))) << m_output.toStdString();
    EXPECT_TRUE(m_output.contains(QStringLiteral("Crate on top (inactive) [Transform3D], at 200 0 420")));
    EXPECT_FALSE(m_output.contains(QStringLiteral("[Geometry")));
    const json told = read(report)["files"][0]["structure"];
    EXPECT_EQ(told["treeFrom"], "occurrence tree");
    EXPECT_EQ(told["places"], 13);
    EXPECT_EQ(told["hiddenLeaves"], 1);
    EXPECT_EQ(told["files"][0]["whyNot"], "missing");
    EXPECT_EQ(told["files"][0]["written"], "Parts\\FRAME.jt");
    EXPECT_EQ(told["files"][1]["foundBy"], "letter case");
    EXPECT_EQ(run({kept, QStringLiteral("--tree-only")}), 0);
    EXPECT_TRUE(m_output.contains(QStringLiteral("Crate on top [Transform3D], at 200 0 420")));
}

/// "..." stands for anything; lines may be left out.
TEST_F(ZnimportPlmxmlTest, TheTreeThatTheReadmeShowsIsTheOneThatIsPrinted)
{
    QFile readme(QString::fromUtf8(EXAMPLE_MODELS "/../../README.md"));
    ASSERT_TRUE(readme.open(QIODevice::ReadOnly));
    const QString command = QStringLiteral("    $ znimport examples/plmxml/cart_export.xml --tree-only\n");
    const QString block =
        QString::fromUtf8(readme.readAll()).section(command, 1, 1).section(QStringLiteral("\n\n"), 0, 0);
    const QStringList lines = block.split(QLatin1Char('\n'));
    ASSERT_GT(lines.size(), 15);
    QString pattern;
    for (const QString& line : lines)
        pattern +=
            QStringLiteral("\\n") +
            QRegularExpression::escape(line.mid(4)).replace(QStringLiteral("\\.\\.\\."), QStringLiteral("[^\\n]*")) +
            QStringLiteral("(?=\\n)[\\s\\S]*?");
    ASSERT_EQ(run({QString::fromUtf8(EXAMPLE_MODELS "/../plmxml/cart_export.xml"), QStringLiteral("--tree-only")}), 0);
    EXPECT_TRUE(m_output.contains(QRegularExpression(pattern))) << m_output.toStdString();
}

TEST_F(ZnimportPlmxmlTest, AnExportWithoutPlacesIsAFailure)
{
    const QString document = write(QStringLiteral("empty.xml"), "<PLMXML><Header/></PLMXML>");
    EXPECT_EQ(run({document}), 1);
    EXPECT_TRUE(m_errors.contains(document + QStringLiteral(": the document places no part")))
        << m_errors.toStdString();
}

TEST_F(ZnimportPlmxmlTest, AStructureWithoutFilesIsToldAndComesIn)
{
    const QString document = write(QStringLiteral("bare.xml"), "<PLMXML><Instance id='i' name='Bare'/></PLMXML>");
    EXPECT_EQ(run({document, QStringLiteral("--tree")}), 0);
    EXPECT_TRUE(m_output.contains(QStringLiteral("Bare [Transform3D]")));
    EXPECT_TRUE(
        m_errors.contains(QStringLiteral("the document names no file with a shape; its structure has 1 places")))
        << m_errors.toStdString();
}

TEST_F(ZnimportPlmxmlTest, OccurrencesThatSpeakOfNoPlaceAreTold)
{
    const QString report = path(QStringLiteral("report.json"));
    const QString document = write(QStringLiteral("lost.plmxml"),
                                   "<PLMXML><ProductDef><InstanceGraph rootRefs='a'><Instance id='a' partRef='#p'/>"
                                   "</InstanceGraph><ProductView>\n<Occurrence id='o' instanceRefs='#b'/>"
                                   "<Occurrence/></ProductView><Part id='p' name='P'/></ProductDef></PLMXML>");
    EXPECT_EQ(run({document, QStringLiteral("--report"), report}), 0);
    EXPECT_TRUE(m_errors.contains(document + QStringLiteral(": 2 occurrences speak of no place of the structure and "
                                                            "are passed over, the first in line 2")))
        << m_errors.toStdString();
    const json told = read(report)["files"][0]["structure"];
    EXPECT_EQ(told["occurrencesWithoutPlace"], 2);
    EXPECT_EQ(told["withoutPlace"].size(), 2u);
    EXPECT_EQ(told["withoutPlace"][0], (json{{"line", 2}, {"id", "o"}, {"instanceRefs", "#b"}}));
}

TEST_F(ZnimportPlmxmlTest, RepresentationsThatAreLeftOutAreCountedAndListed)
{
    const QString report = path(QStringLiteral("report.json"));
    write(QStringLiteral("plate.obj"), "v 0 0 0\nv 2 0 0\nv 0 3 0\nf 1 2 3\n");
    write(QStringLiteral("plate.ply"), "ply\n");
    const auto document = [this](const char* name, const QByteArray& representations) {
        return write(QString::fromUtf8(name), "<PLMXML><ProductDef><InstanceGraph rootRefs='i'>\n"
                                              "<Instance id='i' partRef='#p'/></InstanceGraph>\n"
                                              "<Part id='p' name='P' type='solid'>\n" +
                                                  representations + "</Part></ProductDef></PLMXML>");
    };
    const QString inner = document("inner.plmxml", "<Representation id='a' format='OBJ' location='plate.obj'/>\n"
                                                   "<Representation id='b' format='PLY' location='plate.ply'/>\n"
                                                   "<Representation id='c' format='PLY' location='plate.ply'/>\n"
                                                   "<Representation id='d' format='Clay' location='plate.clay'/>\n");
    const QString line =
        QStringLiteral("inner.plmxml: representations left out: 3 (another file was taken: 2, unknown format: 1)\n");
    EXPECT_EQ(run({inner, QStringLiteral("--report"), report}), 0) << m_errors.toStdString();
    EXPECT_EQ(m_errors.count(line), 1) << m_errors.toStdString();
    const json told = read(report)["files"][0]["structure"];
    EXPECT_EQ(told["representationsLeftOut"], (json{{"another file was taken", 2}, {"unknown format", 1}}));
    ASSERT_EQ(told["leftOut"].size(), 3u);
    EXPECT_EQ(told["leftOut"][2], (json{{"line", 7},
                                        {"element", "Representation"},
                                        {"id", "d"},
                                        {"part", "p"},
                                        {"written", "plate.clay"},
                                        {"format", "Clay"},
                                        {"whyNot", "unknown format"}}));

    const QString outer =
        document("outer.plmxml", "<Representation id='a' format='PLMXML' location='inner.plmxml'/>\n");
    EXPECT_EQ(run({outer}), 0) << m_errors.toStdString();
    EXPECT_EQ(m_errors.count(line), 1) << m_errors.toStdString();
    EXPECT_EQ(m_errors.count(QStringLiteral("left out")), 1) << m_errors.toStdString();
}

TEST_F(ZnimportPlmxmlTest, OtherFilesAndUnreadableDocumentsHaveNoFactsToReport)
{
    const QString file = path(QStringLiteral("report.json"));
    const QString plate = write(QStringLiteral("plate.obj"), "v 0 0 0\nv 2 0 0\nv 0 3 0\nf 1 2 3\n");
    const QString other = write(QStringLiteral("car.plmxml"), "<Other/>");
    EXPECT_EQ(run({plate, other, QStringLiteral("--report"), file}), 3);
    const json files = read(file)["files"];
    ASSERT_EQ(files.size(), 2u);
    EXPECT_FALSE(files[0].contains("document"));
    EXPECT_FALSE(files[1].contains("document"));
}

TEST_F(ZnimportPlmxmlTest, AnUnreadableDocumentEndsWithOneAndSaysWhere)
{
    const QString file = write(QStringLiteral("car.plmxml"), "<PLMXML>\n <ProductDef>\n  <Part\n</PLMXML>\n");
    const QString glb = path(QStringLiteral("car.glb"));
    EXPECT_EQ(run({file, QStringLiteral("-o"), glb}), 1);
    EXPECT_TRUE(m_errors.contains(QStringLiteral("znimport: ") + file + QStringLiteral(":4:1: ")))
        << m_errors.toStdString();
    EXPECT_FALSE(QFile::exists(glb));

    const QString none = path(QStringLiteral("none.plmxml"));
    EXPECT_EQ(run({none}), 1);
    EXPECT_TRUE(m_errors.contains(none + QStringLiteral(": there is no such file\n"))) << m_errors.toStdString();
}

TEST_F(ZnimportPlmxmlTest, CtrlCEndsAllConversionsAndLeavesNoChildAndNoFile)
{
    QStringList parts;
    for (int i = 0; i < 5; ++i) {
        parts << QStringLiteral("part%1.stp").arg(i);
        write(parts.last(), "pid \"" + path(QStringLiteral("id%1").arg(i)).toUtf8() + "\"\nappend \"" +
                                path(QStringLiteral("ids")).toUtf8() + "\" x\nprogress 5 Merge\nwait 600000\n");
    }
    const QString converted = path(QStringLiteral("converted"));
    ASSERT_TRUE(QDir().mkpath(converted));
    const QString glb = path(QStringLiteral("car.glb"));
    m_process.start(QString::fromUtf8(ZNIMPORT),
                    {writeDocument(parts), QStringLiteral("-o"), glb, QStringLiteral("--jobs"), QStringLiteral("2"),
                     QStringLiteral("--set"),
                     QStringLiteral("converter.program=") + QString::fromUtf8(ZN_SCRIPTED_CHILD),
                     QStringLiteral("--set"), QStringLiteral("files.temporaryFolder=") + converted});
    ASSERT_TRUE(m_process.waitForStarted());
    for (int tries = 0; tries < 600 && QFileInfo(path(QStringLiteral("ids"))).size() < 4; ++tries)
        m_process.waitForReadyRead(50);
    ASSERT_EQ(QFileInfo(path(QStringLiteral("ids"))).size(), 4);

    ASSERT_EQ(kill(static_cast<pid_t>(m_process.processId()), SIGINT), 0);
    ASSERT_TRUE(m_process.waitForFinished(30000));
    EXPECT_EQ(m_process.exitCode(), 130);
    EXPECT_FALSE(QFile::exists(glb));
    EXPECT_EQ(QDir(converted).entryList({QStringLiteral("*.osb")}, QDir::Files | QDir::Hidden), QStringList());
    for (int i = 0; i < 5; ++i) {
        QFile id(path(QStringLiteral("id%1").arg(i)));
        if (id.open(QIODevice::ReadOnly)) {
            EXPECT_NE(kill(id.readAll().trimmed().toInt(), 0), 0);
        }
    }
}

} // namespace
