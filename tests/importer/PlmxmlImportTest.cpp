#include "tests/importer/PlmxmlImport.h"
#include "importer/DocumentFault.h"
#include "importer/MissingParts.h"
#include "standalone/scenefile/ConvertedTree.h"

using namespace znCADFileTypes;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

class PlmxmlImportTest : public PlmxmlImport
{
};

TEST_F(PlmxmlImportTest, ConvertedAndReadPartsComeInAndNoConvertedFileStays)
{
    writePart(QStringLiteral("bolt.stp"), {"head"});
    writeTriangle(QStringLiteral("plate.obj"));
    const znImportResult result = importParts({"bolt.stp", "plate.obj"});
    EXPECT_EQ(result.state, JobSucceeded);
    EXPECT_EQ(result.error, QString());
    EXPECT_THAT(result.missing, IsEmpty());
    ASSERT_TRUE(result.node);
    EXPECT_TRUE(result.node->getParent() == m_session.sceneRoot());
    EXPECT_EQ(nameOf(partOf(result, 0)), "P0");
    EXPECT_THAT(childNames(partOf(result, 0)->getChild(0)), ElementsAre("head"));
    EXPECT_EQ(partOf(result, 1)->getChild(0)->getNChildren(), 1u);
    drainEvents();
    EXPECT_EQ(outputs(), QStringList());
}

TEST_F(PlmxmlImportTest, ProgressTellsDocumentPartsLoadingAndConversions)
{
    writePart(QStringLiteral("bolt.stp"), {"head"});
    writePart(QStringLiteral("nut.stp"), {"ring"});
    writeTriangle(QStringLiteral("plate.obj"));
    importParts({"bolt.stp", "plate.obj", "nut.stp"});
    EXPECT_EQ(m_texts, texts({"Reading document", "Part files found: 3", "Loading plate.obj", "Optimising"}));
    ASSERT_THAT(m_counts, testing::Not(IsEmpty()));
    EXPECT_EQ(m_counts.front(), (znPartCounts{3, 0, 1, 0}));
    EXPECT_EQ(m_counts.back(), (znPartCounts{3, 0, 3, 0}));
    EXPECT_THAT(m_counts, testing::Contains(znPartCounts{3, 1, 1, 0}));
}

TEST_F(PlmxmlImportTest, WhatIsMissingIsNamedWithReasonAndInstances)
{
    writePart(QStringLiteral("bolt.stp"), {"head"});
    write(QStringLiteral("nut.stp"), "log \"Error: the moon is full\"\nexit 7");
    write(QStringLiteral("flat.obj"), "no triangle");
    const znImportResult result = importParts({"nut.stp", "bolt.stp", "none.wrl", "nut.stp", "flat.obj"});
    EXPECT_EQ(result.state, JobPartial);
    EXPECT_EQ(result.error, QString());
    ASSERT_TRUE(result.node);
    const QStringList missing = missingTexts(result);
    ASSERT_EQ(missing.size(), 3);
    EXPECT_EQ(missing[0], QStringLiteral("flat.obj: there are no faces, lines or points in it [I4/P4]"));
    EXPECT_EQ(missing[1], QStringLiteral("none.wrl: there is no such file [I2/P2]"));
    EXPECT_TRUE(missing[2].startsWith(QStringLiteral("nut.stp: The file is damaged. the moon is full")))
        << missing[2].toStdString();
    EXPECT_TRUE(missing[2].endsWith(QStringLiteral("[I0/P0 I3/P3]"))) << missing[2].toStdString();
    EXPECT_EQ(m_counts.back(), (znPartCounts{3, 0, 1, 2}));
}

TEST_F(PlmxmlImportTest, AMissingPartIsDescribedInOneLine)
{
    EXPECT_EQ(describe({QStringLiteral("/a%20b%1.stp"), QStringLiteral("gone"), {}}),
              QStringLiteral("/a%20b%1.stp: gone"));
    EXPECT_EQ(describe({QStringLiteral("/a%20b%1.stp"), QStringLiteral("gone"), texts({"A", "B/C"})}),
              QStringLiteral("/a%20b%1.stp: gone (used by A, B/C)"));
    EXPECT_EQ(describe({QStringLiteral("/a%20b%1.stp"), QStringLiteral("gone"), texts({"A", "B", "C", "D", "E"})}),
              QStringLiteral("/a%20b%1.stp: gone (used by A, B, C and 2 more)"));
}

TEST_F(PlmxmlImportTest, AFileThatTheHostReadsComesInAtAllItsPlaces)
{
    writeTriangle(QStringLiteral("plate.obj"));
    const znImportResult result = importParts({"plate.obj", "plate.obj", "plate.obj"});
    EXPECT_EQ(result.state, JobSucceeded);
    ASSERT_TRUE(result.node);
    const osg::NodePtr first = partOf(result, 0)->getChild(0)->getChild(0)->getChild(0);
    ASSERT_TRUE(first->getCore());
    for (unsigned i = 1; i < 3; ++i) {
        const osg::NodePtr reference = partOf(result, i)->getChild(0);
        ASSERT_EQ(reference->getNChildren(), 1u);
        EXPECT_EQ(reference->getChild(0)->getChild(0)->getCore(), first->getCore());
    }
}

TEST_F(PlmxmlImportTest, PartsThatTheConverterLeftOutMakeAnImportPartial)
{
    const Root part(makeReference("part root", path(QStringLiteral("bolt.stp"))));
    osg::setTags(addGroup(part.get(), "ring place"),
                 {osg::converted::missingTag({"/cad/ring.stp", "the file is not there"})});
    writeScene(QStringLiteral("made/bolt.stp"), part.get());
    write(QStringLiteral("bolt.stp"), line("output-from", QStringLiteral("made/bolt.stp")));
    const znImportResult result = importParts({"bolt.stp"});
    EXPECT_EQ(result.state, JobPartial);
    EXPECT_EQ(missingTexts(result), texts({"ring.stp: the file is not there []"}));
}

TEST_F(PlmxmlImportTest, PartFilesThatNobodyWantsAreNotMissing)
{
    set("import.PLMXML.referencedFiles", QStringLiteral("off"));
    writePart(QStringLiteral("bolt.stp"), {"head"});
    const znImportResult result = importParts({"bolt.stp", "none.stp"});
    EXPECT_EQ(result.state, JobSucceeded);
    EXPECT_THAT(result.missing, IsEmpty());
    EXPECT_THAT(m_counts, IsEmpty());
    EXPECT_EQ(referenceOf(partOf(result, 0)->getChild(0))->getState(), 0u);
}

TEST_F(PlmxmlImportTest, ADocumentThatIsNotThereFailsOnce)
{
    int ends = 0;
    QObject::connect(&m_importer, &znImporter::finished, [&ends] { ++ends; });
    const QString file = path(QStringLiteral("none.plmxml"));
    const znImportResult result = import(file);
    EXPECT_EQ(result.state, JobFailed);
    EXPECT_FALSE(result.node);
    EXPECT_EQ(result.error, file + QStringLiteral(": there is no such file"));
    drainEvents();
    EXPECT_EQ(ends, 1);
}

TEST_F(PlmxmlImportTest, AnUnreadableDocumentFailsWithLineAndColumn)
{
    const QString file = write(QStringLiteral("car.plmxml"), "<PLMXML>\n  <ProductDef>\n </Product>\n</PLMXML>\n");
    const znImportResult result = import(file);
    EXPECT_EQ(result.state, JobFailed);
    EXPECT_FALSE(result.node);
    EXPECT_TRUE(result.error.startsWith(file + QStringLiteral(":3:"))) << result.error.toStdString();
    EXPECT_EQ(m_session.sceneRoot()->getNChildren(), 0u);
}

TEST_F(PlmxmlImportTest, ADocumentWhoseAssemblyHasNoEndFailsWithThePath)
{
    const QString file =
        write(QStringLiteral("car.plmxml"), "<PLMXML><ProductDef><InstanceGraph rootRefs='i'><Instance id='i' "
                                            "partRef='p'/></InstanceGraph><Part id='p' name='P' instanceRefs='i'/>"
                                            "</ProductDef></PLMXML>");
    const znImportResult result = import(file);
    EXPECT_EQ(result.state, JobFailed);
    EXPECT_TRUE(result.error.contains(QStringLiteral("refers to itself"))) << result.error.toStdString();
}

TEST_F(PlmxmlImportTest, AnExceptionOfTheDocumentIsTheReason)
{
    // The tree that was being built has nobody who could hold it.
    leavesOnPurpose({"Node car", "Name", "Transform", "Node", "Transform", "Node I0", "Name", "Transform", "Node P0",
                     "Name", "Transform"});
    const znImportResult result = importParts({"."});
    EXPECT_EQ(result.state, JobFailed);
    EXPECT_FALSE(result.node);
    EXPECT_TRUE(result.error.startsWith(result.file + QStringLiteral(": "))) << result.error.toStdString();
    EXPECT_FALSE(result.error.contains(QStringLiteral("no tree")));
}

TEST_F(PlmxmlImportTest, CancelEndsTheConversionsAndKeepsWhatCameIn)
{
    writeTriangle(QStringLiteral("plate.obj"));
    std::vector<std::string> locations{"plate.obj"};
    for (int i = 0; i < 5; ++i) {
        const QString name = QStringLiteral("slow%1.stp").arg(i);
        writePart(name, {"head"}, line("append", QStringLiteral("runs"), "run") + "progress 5 Merge\nwait 600000\n");
        locations.push_back(name.toStdString());
    }
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        if (has(QStringLiteral("runs")))
            m_importer.cancel();
    });
    watch.start(1);
    const znImportResult result = importParts(locations);
    EXPECT_TRUE(result.cancelled);
    EXPECT_EQ(result.state, JobPartial);
    EXPECT_EQ(result.missing.size(), 5u);
    ASSERT_TRUE(result.node);
    EXPECT_EQ(partOf(result, 0)->getChild(0)->getNChildren(), 1u);
    EXPECT_LE(readLines(QStringLiteral("runs")).size(), 3);
    drainEvents();
    EXPECT_EQ(outputs(), QStringList());
}

TEST_F(PlmxmlImportTest, ConversionsThatBeginAfterTheCancelEndAtOnce)
{
    writePart(QStringLiteral("slow.stp"), {"head"}, "wait 600000\n");
    QObject::connect(&m_importer, &znImporter::progressChanged, [this](unsigned, const QString& text) {
        if (text == QStringLiteral("Reading document"))
            m_importer.cancel();
    });
    const znImportResult result = importParts({"slow.stp"});
    EXPECT_TRUE(result.cancelled);
    EXPECT_EQ(result.state, JobPartial);
    EXPECT_EQ(result.missing.size(), 1u);
}

TEST_F(PlmxmlImportTest, ACancelBeforeTheDocumentIsReadLeavesNothing)
{
    const QString file = documentOf({"none.stp"});
    QTimer::singleShot(0, [this] { m_importer.cancel(); });
    const znImportResult result = import(file);
    EXPECT_TRUE(result.cancelled);
    EXPECT_EQ(result.state, JobFailed);
    EXPECT_EQ(result.error, QString());
    EXPECT_THAT(result.missing, IsEmpty());
}

struct FaultRow {
    const char* name;
    QByteArray text;
    const char* fault;
};

class DocumentFaultTest : public PlmxmlImportTest, public testing::WithParamInterface<FaultRow>
{
};

TEST_P(DocumentFaultTest, IsToldWithItsPlace)
{
    const QString file = write(QStringLiteral("car.plmxml"), GetParam().text);
    const auto fault = findDocumentFault(file);
    ASSERT_TRUE(fault);
    EXPECT_EQ(describe(file, *fault), file + QString::fromUtf8(GetParam().fault));
}

INSTANTIATE_TEST_SUITE_P(
    All, DocumentFaultTest,
    testing::Values(FaultRow{"OtherRoot", "<?xml version='1.0'?>\n  <Other/>\n",
                             ":2:3: the document begins with the element Other, not with PLMXML"},
                    FaultRow{"CutOff", "<PLMXML>\n<ProductDef id='a", ":2:1: the document is cut off"},
                    FaultRow{"Number", "<PLMXML><ProductDef>\n<Transform>1 0 x 1</Transform></ProductDef></PLMXML>",
                             ":2:12: value 3 of a Transform is not a number that fits"},
                    FaultRow{"Empty", "", ":1:1: Error document empty."},
                    FaultRow{"Letters", "<?xml encoding='utf-8'?>\n<PLMXML n='\xc3'/>",
                             ":2:12: a character is not valid UTF-8"},
                    FaultRow{"EndTag", "<PLMXML></PLMXML>\n</X>", ":2:1: an end tag has no element"}),
    [](const auto& row) { return row.param.name; });

TEST_F(PlmxmlImportTest, AFolderIsNoDocument)
{
    EXPECT_TRUE(QDir().mkpath(path(QStringLiteral("folder.plmxml"))));
    const QString file = path(QStringLiteral("folder.plmxml"));
    EXPECT_EQ(import(file).error, file + QStringLiteral(": this is no file"));
}

TEST_F(PlmxmlImportTest, NothingIsWrongWithASoundDocument)
{
    EXPECT_FALSE(findDocumentFault(documentOf({"a.stp"})));
}

} // namespace
