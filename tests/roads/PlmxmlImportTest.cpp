#include "tests/roads/PlmxmlImport.h"
#include "files/scenefile/ConvertedTree.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "scene/Attributes.h"

using namespace znCADFileTypes;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

class PlmxmlImportTest : public PlmxmlImport
{
};

std::vector<std::string> attributeTexts(const osg::NodePtr& node, osg::AttributeOwner owner)
{
    std::vector<std::string> texts;
    for (const osg::Attribute& attribute : osg::attributesOf(osg::AttachmentContainerPtr(node), owner))
        texts.push_back(attribute.name + "=" + osg::textOf(attribute));
    return texts;
}

TEST_F(PlmxmlImportTest, ConvertedAndReadPartsComeInAndNoConvertedFileStays)
{
    writePart(QStringLiteral("bolt.stp"), {"head"});
    writeTriangle(QStringLiteral("plate.obj"));
    const zn::ImportResult result = importParts({"bolt.stp", "plate.obj"});
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
    EXPECT_EQ(m_counts.front(), (zn::PartCounts{3, 0, 1, 0}));
    EXPECT_EQ(m_counts.back(), (zn::PartCounts{3, 0, 3, 0}));
    EXPECT_THAT(m_counts, testing::Contains(zn::PartCounts{3, 1, 1, 0}));
}

TEST_F(PlmxmlImportTest, WhatIsMissingIsNamedWithReasonAndInstances)
{
    writePart(QStringLiteral("bolt.stp"), {"head"});
    write(QStringLiteral("nut.stp"), "log \"Error: the moon is full\"\nexit 7");
    write(QStringLiteral("flat.obj"), "no triangle");
    const zn::ImportResult result = importParts({"nut.stp", "bolt.stp", "none.wrl", "nut.stp", "flat.obj"});
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
    EXPECT_EQ(m_counts.back(), (zn::PartCounts{3, 0, 1, 2}));
}

TEST_F(PlmxmlImportTest, AFileThatTheHostReadsComesInAtAllItsPlaces)
{
    writeTriangle(QStringLiteral("plate.obj"));
    const zn::ImportResult result = importParts({"plate.obj", "plate.obj", "plate.obj"});
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
                 {osg::scenefile::converted::missingTag({"/cad/ring.stp", "the file is not there"})});
    writeScene(QStringLiteral("made/bolt.stp"), part.get());
    write(QStringLiteral("bolt.stp"), line("output-from", QStringLiteral("made/bolt.stp")));
    const zn::ImportResult result = importParts({"bolt.stp"});
    EXPECT_EQ(result.state, JobPartial);
    EXPECT_EQ(missingTexts(result), texts({"ring.stp: the file is not there [I0/P0/part root/ring place]"}));
}

TEST_F(PlmxmlImportTest, WhatIsLeftOutOfPartFilesIsTold)
{
    const Root part(makeReference("part root", path(QStringLiteral("bolt.stp"))));
    osg::setTags(addGroup(part.get(), "head"), {"ptx::left-out=3 segments of PMI\n/cad/bolt.stp"});
    osg::setTags(addGroup(part.get(), "view of the bolt"), {"stylar::bookmark"});
    writeScene(QStringLiteral("made/bolt.stp"), part.get());
    write(QStringLiteral("bolt.stp"), line("output-from", QStringLiteral("made/bolt.stp")));
    const zn::ImportResult result = importParts({"bolt.stp"});
    EXPECT_EQ(result.state, JobSucceeded);
    ASSERT_EQ(result.leftOut.size(), 2u);
    EXPECT_EQ(result.leftOut[0].count, 3u);
    EXPECT_EQ(result.leftOut[1].what, QStringLiteral("saved views of part files"));
    EXPECT_THAT(result.messages,
                testing::Contains(testing::ResultOf([](const QString& text) { return text.toStdString(); },
                                                    testing::EndsWith("saved views of part files are left out: 1"))));
}

TEST_F(PlmxmlImportTest, PartFilesThatNobodyWantsAreNotMissing)
{
    set("import.PLMXML.referencedFiles", QStringLiteral("off"));
    writePart(QStringLiteral("bolt.stp"), {"head"});
    const zn::ImportResult result = importParts({"bolt.stp", "none.stp"});
    EXPECT_EQ(result.state, JobSucceeded);
    EXPECT_THAT(result.missing, IsEmpty());
    EXPECT_THAT(m_counts, IsEmpty());
    EXPECT_EQ(referenceOf(partOf(result, 0)->getChild(0))->getState(), 0u);
}

TEST_F(PlmxmlImportTest, ADocumentThatIsNotThereFailsOnce)
{
    int ends = 0;
    QObject::connect(&m_importer, &zn::Importer::finished, [&ends] { ++ends; });
    const QString file = path(QStringLiteral("none.plmxml"));
    const zn::ImportResult result = import(file);
    EXPECT_EQ(result.state, JobFailed);
    EXPECT_FALSE(result.node);
    EXPECT_EQ(result.error, file + QStringLiteral(": there is no such file"));
    drainEvents();
    EXPECT_EQ(ends, 1);
}

TEST_F(PlmxmlImportTest, AnUnreadableDocumentFailsWithLineAndColumn)
{
    const QString file = write(QStringLiteral("car.plmxml"), "<PLMXML>\n  <ProductDef>\n </Product>\n</PLMXML>\n");
    const zn::ImportResult result = import(file);
    EXPECT_EQ(result.state, JobFailed);
    EXPECT_FALSE(result.node);
    EXPECT_TRUE(result.error.startsWith(file + QStringLiteral(":3:"))) << result.error.toStdString();
    EXPECT_EQ(m_session.sceneRoot()->getNChildren(), 0u);
}

TEST_F(PlmxmlImportTest, ADocumentWhoseAssemblyHasNoEndFailsWithTheElement)
{
    const QString file =
        write(QStringLiteral("car.plmxml"), "<PLMXML><ProductDef><InstanceGraph rootRefs='i'><Instance id='i' "
                                            "partRef='p'/></InstanceGraph><Part id='p' name='P' instanceRefs='i'>"
                                            "<Representation format='JT' location='a.jt'/></Part></ProductDef>"
                                            "</PLMXML>");
    const zn::ImportResult result = import(file);
    EXPECT_EQ(result.state, JobFailed);
    EXPECT_EQ(result.error.toStdString(), (file + QStringLiteral(": the structure contains itself: Instance \"i\" in "
                                                                 "line 1 leads back to a part that is around it"))
                                              .toStdString());
}

TEST_F(PlmxmlImportTest, AnExceptionOfTheDocumentIsTheReason)
{
    // The tree that was being built has nobody who could hold it.
    leavesOnPurpose({"Node car", "Name", "Transform", "Node", "Transform", "Node I0", "Name", "Transform", "Node P0",
                     "Name", "Transform"});
    const zn::ImportResult result = importParts({"."});
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
    // Once: a cancel that comes again while the tree is optimised leaves nothing.
    QObject::connect(&watch, &QTimer::timeout, [&] {
        if (!has(QStringLiteral("runs")))
            return;
        watch.stop();
        m_importer.cancel();
    });
    watch.start(1);
    const zn::ImportResult result = importParts(locations);
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
    QObject::connect(&m_importer, &zn::Importer::progressChanged, [this](unsigned, const QString& text) {
        if (text == QStringLiteral("Reading document"))
            m_importer.cancel();
    });
    const zn::ImportResult result = importParts({"slow.stp"});
    EXPECT_TRUE(result.cancelled);
    EXPECT_EQ(result.state, JobPartial);
    EXPECT_EQ(result.missing.size(), 1u);
}

TEST_F(PlmxmlImportTest, ACancelBeforeTheDocumentIsReadLeavesNothing)
{
    const QString file = documentOf({"none.stp"});
    for (const char* reading : {"child", "process"}) {
        set("files.reading", QString::fromLatin1(reading));
        QTimer::singleShot(0, [this] { m_importer.cancel(); });
        const zn::ImportResult result = import(file);
        EXPECT_TRUE(result.cancelled);
        EXPECT_EQ(result.state, JobFailed);
        EXPECT_EQ(result.error, QString());
        EXPECT_THAT(result.missing, IsEmpty());
        EXPECT_FALSE(result.node);
    }
}

TEST_F(PlmxmlImportTest, NodesOfAnExportBearItsAttributesNamesAndSwitches)
{
    writeTriangle(QStringLiteral("plate.obj"));
    const auto occurrence = [](const char* id, const char* more) {
        return QByteArray("<Occurrence id='") + id + "' name='" + id + "' instancedRef='#r' " + more + "/>";
    };
    const QString file = write(
        QStringLiteral("car.xml"),
        "<PLMXML><ProductView rootRefs='car'><Occurrence id='car' name='car' occurrenceRefs='off mixed' "
        "visible='true'/>" +
            occurrence("off", "occurrenceRefs='a' visible='false'") + occurrence("a", "") +
            occurrence("mixed", "occurrenceRefs='b c' visible='false'") + occurrence("b", "visible='true'") +
            "<Occurrence id='c' name='c' instancedRef='#r'><UserData><UserValue title='Pos' value='30'/></UserData>"
            "</Occurrence></ProductView><ProductRevision id='r' name='Plate' revision='B'><AssociatedDataSet "
            "dataSetRef='#d'/></ProductRevision><DataSet id='d' memberRefs='#f'/><ExternalFile id='f' "
            "locationRef='PLATE.OBJ'/></PLMXML>");
    const zn::ImportResult result = import(file);
    EXPECT_EQ(result.state, JobSucceeded) << result.error.toStdString();
    ASSERT_TRUE(result.node);
    EXPECT_EQ(nameOf(result.node), "car");
    EXPECT_EQ(referenceOf(result.node)->getSourceFile()->getPath(), file.toStdString());
    const osg::NodePtr car = result.node->getChild(0)->getChild(0)->getChild(0);
    const osg::NodePtr off = car->getChild(0);
    const osg::NodePtr mixed = car->getChild(1);
    EXPECT_FALSE(off->isActive());
    EXPECT_TRUE(off->getChild(0)->getChild(0)->isActive()) << "its top is enough";
    EXPECT_TRUE(mixed->isActive());
    const osg::NodePtr c = mixed->getChild(0)->getChild(1);
    EXPECT_TRUE(mixed->getChild(0)->getChild(0)->isActive());
    EXPECT_FALSE(c->isActive());
    EXPECT_THAT(attributeTexts(c, osg::AttributeOwner::Occurrence), ElementsAre("Pos=30"));
    EXPECT_THAT(attributeTexts(c->getChild(0), osg::AttributeOwner::Product), testing::Contains("revision=B"));
    EXPECT_EQ(c->getChild(0)->getChild(0)->getNChildren(), 1u);
}

/// An occurrence's material is stronger than its part's, and that than its instance's; user data stands on them.
TEST_F(PlmxmlImportTest, MaterialsOfPartsInstancesAndOccurrencesComeOverThePartFiles)
{
    writeTriangle(QStringLiteral("plate.obj"));
    const auto material = [](const char* id) {
        return QByteArray("<Material id='") + id + "' name='" + id +
               "' diffuse='1 0 0'><UserData><UserValue title='Paint' value='" + id +
               " 3000'/><UserValue title='Coats' type='int' value='2'/></UserData></Material>";
    };
    const QByteArray shapes = "<Part id='p' name='P' type='solid' materialRef='part'><Representation format='OBJ' "
                              "location='plate.obj'/></Part><Part id='q' name='Q' type='solid'><Representation "
                              "format='OBJ' location='plate.obj'/></Part>";
    const QByteArray graph =
        write(QStringLiteral("graph.plmxml"),
              "<PLMXML><ProductDef><InstanceGraph rootRefs='a b c d'><Instance id='a' name='A' partRef='#p'/>"
              "<Instance id='b' name='B' partRef='#p' materialRef='instance'/><Instance id='c' name='C' partRef='#q' "
              "materialRef='instance'/><Instance id='d' name='D' partRef='#p'/></InstanceGraph>" +
                  shapes + material("part") + material("instance") + material("occurrence") +
                  "<Occurrence instanceRefs='d' materialRef='occurrence'/></ProductDef></PLMXML>")
            .toUtf8();
    const QByteArray tree =
        write(QStringLiteral("tree.plmxml"),
              "<PLMXML><ProductView rootRefs='o'><Occurrence id='o' occurrenceRefs='oa ob oc od'/>"
              "<Occurrence id='oa' partRef='#p'/><Occurrence id='ob' instanceRefs='#b'/><Occurrence id='oc' "
              "instanceRefs='#c'/><Occurrence id='od' partRef='#p' materialRef='occurrence'/></ProductView>"
              "<ProductDef><InstanceGraph><Instance id='b' partRef='#p' materialRef='instance'/><Instance id='c' "
              "partRef='#q' materialRef='instance'/></InstanceGraph></ProductDef>" +
                  shapes + material("part") + material("instance") + material("occurrence") + "</PLMXML>")
            .toUtf8();
    for (const QByteArray& file : {graph, tree}) {
        SCOPED_TRACE(file.toStdString());
        const zn::ImportResult result = import(QString::fromUtf8(file));
        EXPECT_EQ(result.state, JobSucceeded) << result.error.toStdString();
        ASSERT_TRUE(result.node);
        std::vector<std::string> drawn;
        osg::traverse(result.node, [&](const osg::NodePtr& node) {
            const auto group = osg::fcCast<osg::MaterialGroup>(node->getCore());
            if (!group || node->getNChildren() == 0)
                return osg::Action::Continue;
            drawn.push_back(nameOf(node));
            const osg::AttributeList expected = {{"Paint", nameOf(node) + " 3000"}, {"Coats", std::int64_t(2)}};
            EXPECT_EQ(osg::attributesOf(group->getMaterial(), osg::AttributeOwner::Product), expected);
            EXPECT_TRUE(osg::fcCast<osg::Geometry>(node->getChild(0)->getChild(0)->getCore()));
            return osg::Action::Continue;
        });
        EXPECT_THAT(drawn, ElementsAre("part", "part", "instance", "occurrence"));
    }
}

TEST_F(PlmxmlImportTest, WhatAnExportMissesIsNamedAsItIsWritten)
{
    const QString file = write(QStringLiteral("car.xml"), "<PLMXML>\n<Part id='p' name='P'><Representation format='JT' "
                                                          "location='C:\\lib\\none.jt'/></Part></PLMXML>");
    const zn::ImportResult result = import(file);
    EXPECT_EQ(result.state, JobPartial);
    EXPECT_EQ(missingTexts(result),
              texts({"none.jt: there is no such file; line 2 names it \"C:\\lib\\none.jt\" [P/P]"}));
}

TEST_F(PlmxmlImportTest, AnExportThatContainsItselfFailsByItsOwnName)
{
    const QString file =
        write(QStringLiteral("car.xml"), "<PLMXML><InstanceGraph rootRefs='i'><Instance id='i' "
                                         "partRef='#p'/></InstanceGraph><Part id='p' instanceRefs='i'/>"
                                         "</PLMXML>");
    const zn::ImportResult result = import(file);
    EXPECT_EQ(result.state, JobFailed);
    EXPECT_EQ(result.error.toStdString(), (file + QStringLiteral(": the structure contains itself: Instance \"i\" in "
                                                                 "line 1 leads back to a part that is around it"))
                                              .toStdString());
}

TEST_F(PlmxmlImportTest, AFolderIsNoDocument)
{
    EXPECT_TRUE(QDir().mkpath(path(QStringLiteral("folder.plmxml"))));
    const QString file = path(QStringLiteral("folder.plmxml"));
    EXPECT_EQ(import(file).error, file + QStringLiteral(": this is no file"));
}

} // namespace
