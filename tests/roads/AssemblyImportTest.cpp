#include "files/scenefile/ConvertedTree.h"
#include "host/OSGSystem/Group.h"
#include "importer/Importer.h"
#include "tests/loader/LoaderTest.h"

#include <QEventLoop>
#include <QTimer>

using namespace znCADFileTypes;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

/// Imports of assemblies; the content of each CAD file is the script of its conversion.
class AssemblyImportTest : public LoaderTest
{
protected:
    AssemblyImportTest()
    {
        set("files.temporaryFolder", outputFolder());
        set("optimize.sourceReferences", QStringLiteral("keep"));
        QObject::connect(&m_importer, &zn::Importer::partsChanged,
                         [this](const zn::PartCounts& counts, const QString& text) {
                             m_counts.push_back(counts);
                             m_texts << text;
                         });
    }

    /// Imports the assembly as it is now, after its converter has done what `script` says.
    zn::ImportResult import(const QByteArray& script = {})
    {
        writeScene(QStringLiteral("made/engine.stp"), assembly());
        write(QStringLiteral("engine.stp"), script + "\n" + line("output-from", QStringLiteral("made/engine.stp")));
        QEventLoop loop;
        zn::ImportResult result;
        QObject::connect(&m_importer, &zn::Importer::finished, &loop, [&](const zn::ImportResult& end) {
            result = end;
            loop.quit();
        });
        QTimer::singleShot(60000, &loop, &QEventLoop::quit);
        m_importer.import({originalFile()});
        loop.exec();
        EXPECT_EQ(result.file, originalFile());
        return result;
    }

    static QStringList missingTexts(const zn::ImportResult& result)
    {
        QStringList texts;
        for (const zn::MissingPart& part : result.missing)
            texts << QFileInfo(part.file).fileName() + QStringLiteral(": ") + part.reason;
        texts.sort();
        return texts;
    }

    zn::Importer m_importer{m_session};
    std::vector<zn::PartCounts> m_counts;
    QStringList m_texts;
};

TEST_F(AssemblyImportTest, AllPartsComeInAndNoConvertedFileStays)
{
    refer("bolt", writePart(QStringLiteral("bolt.stp"), {"head"}));
    refer("nut", writePart(QStringLiteral("nut.stp"), {"ring"}));
    const zn::ImportResult result = import();
    EXPECT_EQ(result.state, JobSucceeded);
    EXPECT_EQ(result.error, QString());
    EXPECT_THAT(result.missing, IsEmpty());
    ASSERT_TRUE(result.node);
    EXPECT_TRUE(result.node->getParent() == m_session.sceneRoot());
    EXPECT_THAT(childNames(result.node->getChild(0)), ElementsAre("head"));
    EXPECT_THAT(childNames(result.node->getChild(1)), ElementsAre("ring"));
    drainEvents();
    EXPECT_EQ(outputs(), QStringList());
}

TEST_F(AssemblyImportTest, TheConverterIsAskedToKeepPartsApart)
{
    import(line("arguments", QStringLiteral("words")));
    EXPECT_TRUE(readLines(QStringLiteral("words")).contains(QStringLiteral("--external-parts")));
}

TEST_F(AssemblyImportTest, AFileWithoutPartsOfItsOwnIsConvertedWhole)
{
    addGroup(assembly(), "body");
    const zn::ImportResult result = import("if-external-parts exit 5");
    EXPECT_EQ(result.state, JobSucceeded);
    ASSERT_TRUE(result.node);
    EXPECT_THAT(childNames(result.node.get()), ElementsAre("body"));
}

TEST_F(AssemblyImportTest, PartsAreCountedAsTheyGoOn)
{
    refer("bolt", writePart(QStringLiteral("bolt.stp"), {"head"}));
    refer("nut", writePart(QStringLiteral("nut.stp"), {"ring"}));
    refer("pin", write(QStringLiteral("pin.stp"), "exit 7"));
    import();
    ASSERT_EQ(m_counts.size(), 6u);
    EXPECT_EQ(m_counts.front(), (zn::PartCounts{3, 1, 0, 0}));
    EXPECT_EQ(m_counts.back(), (zn::PartCounts{3, 0, 2, 1}));
    EXPECT_EQ(m_texts.first(), QStringLiteral("0 of 3 parts done, 1 running, 0 failed"));
    EXPECT_EQ(m_texts.last(), QStringLiteral("2 of 3 parts done, 0 running, 1 failed"));
    EXPECT_EQ(m_counts.back().percent(), 100u);
    for (const zn::PartCounts& counts : m_counts)
        EXPECT_LE(counts.running, 2u);
}

TEST_F(AssemblyImportTest, WhatIsMissingIsNamedWithItsReason)
{
    refer("bolt", writePart(QStringLiteral("bolt.stp"), {"head"}));
    refer("nut", write(QStringLiteral("nut.stp"), "log \"Error: the moon is full\"\nexit 7"));
    refer("pin", write(QStringLiteral("pin.stp"), "exit 0"));
    refer("cap", write(QStringLiteral("cap.stp"), "exit 21"));
    refer("key", write(QStringLiteral("key.stp"), "output no scene"));
    const zn::ImportResult result = import();
    EXPECT_EQ(result.state, JobPartial);
    ASSERT_TRUE(result.node);
    const QStringList missing = missingTexts(result);
    ASSERT_EQ(missing.size(), 4);
    EXPECT_EQ(missing[0], QStringLiteral("cap.stp: the conversion failed"));
    EXPECT_TRUE(missing[1].startsWith(QStringLiteral("key.stp: "))) << missing[1].toStdString();
    EXPECT_TRUE(missing[1].contains(QStringLiteral(".osb"))) << missing[1].toStdString();
    EXPECT_TRUE(missing[2].startsWith(QStringLiteral("nut.stp: The file is damaged. the moon is full")))
        << missing[2].toStdString();
    EXPECT_EQ(missing[3], QStringLiteral("pin.stp: the converter ended well but wrote no scene file"));
}

TEST_F(AssemblyImportTest, PartsThatTheConvertersLeftOutMakeAnImportPartial)
{
    const Root part(makeReference("part root", path(QStringLiteral("bolt.stp"))));
    const std::string ring = osg::scenefile::converted::missingTag({"/cad/o'ring.stp", "the file is not there"});
    osg::setTags(addGroup(part.get(), "ring place"), {"ptx::layer=7", ring});
    writeScene(QStringLiteral("made/bolt.stp"), part.get());
    const QString bolt = write(QStringLiteral("bolt.stp"), line("output-from", QStringLiteral("made/bolt.stp")));
    refer("left bolt", bolt);
    refer("right bolt", bolt);
    const osg::NodePtr circle = refer("itself", QString());
    osg::setTags(circle, {osg::scenefile::converted::missingTag({"/cad/engine.stp", "it leads round in a circle"})});
    const zn::ImportResult result = import();
    EXPECT_EQ(result.state, JobPartial);
    ASSERT_TRUE(result.node);
    EXPECT_EQ(missingTexts(result),
              texts({"engine.stp: it leads round in a circle", "o'ring.stp: the file is not there"}));
}

TEST_F(AssemblyImportTest, ViewsOfAPartFileStayBehindWithAWord)
{
    const Root part(makeReference("part root", path(QStringLiteral("bolt.stp"))));
    addGroup(part.get(), "head");
    osg::setTags(addGroup(part.get(), "view of the bolt"), {"stylar::bookmark"});
    writeScene(QStringLiteral("made/bolt.stp"), part.get());
    refer("bolt", write(QStringLiteral("bolt.stp"), line("output-from", QStringLiteral("made/bolt.stp"))));
    const zn::ImportResult result = import();
    EXPECT_EQ(result.state, JobSucceeded);
    ASSERT_TRUE(result.node);
    EXPECT_THAT(result.messages,
                Contains(originalFile() + QStringLiteral(": saved views of part files are left out: 1")));
    ASSERT_EQ(result.leftOut.size(), 1u);
    EXPECT_EQ(result.leftOut[0].what, QStringLiteral("saved views of part files"));
    EXPECT_EQ(result.leftOut[0].count, 1u);
    bool isHeadThere = false;
    osg::traverse(result.node, [&](const osg::NodePtr& node) {
        const char* name = osg::getName(node);
        EXPECT_STRNE(name ? name : "", "view of the bolt");
        isHeadThere = isHeadThere || std::string(name ? name : "") == "head";
        return osg::Action::Continue;
    });
    EXPECT_TRUE(isHeadThere);
}

TEST_F(AssemblyImportTest, WhatTheConvertersDoNotBringInIsToldAndNotMissing)
{
    const Root part(makeReference("part root", path(QStringLiteral("bolt.stp"))));
    osg::setTags(addGroup(part.get(), "head"), {"ptx::left-out=3 segments of PMI\n/cad/bolt.stp"});
    writeScene(QStringLiteral("made/bolt.stp"), part.get());
    const QString bolt = write(QStringLiteral("bolt.stp"), line("output-from", QStringLiteral("made/bolt.stp")));
    refer("left bolt", bolt);
    refer("right bolt", bolt);
    osg::setTags(refer("engine", QString()), {"ptx::left-out=2 segments of PMI\n/cad/engine.stp"});
    const zn::ImportResult result = import();
    EXPECT_EQ(result.state, JobSucceeded);
    EXPECT_THAT(result.missing, IsEmpty());
    EXPECT_THAT(result.messages,
                Contains(originalFile() + QStringLiteral(": segments of PMI are left out: 5, in 2 files")));
    ASSERT_EQ(result.leftOut.size(), 1u);
    EXPECT_EQ(result.leftOut[0].count, 5u);
    EXPECT_EQ(result.leftOut[0].files, 2u);
}

TEST_F(AssemblyImportTest, ReferencesThatNobodyWantsAreNotMissing)
{
    refer("bolt", path(QStringLiteral("nowhere.stp")));
    set("import.Step.referencedFiles", QStringLiteral("off"));
    const zn::ImportResult result = import();
    EXPECT_EQ(result.state, JobSucceeded);
    EXPECT_THAT(result.missing, IsEmpty());
    EXPECT_THAT(m_counts, IsEmpty());
}

TEST_F(AssemblyImportTest, CancelAmongTheParts)
{
    for (int i = 0; i < 5; ++i)
        refer("slow", writePart(QStringLiteral("slow %1.stp").arg(i), {"head"},
                                line("append", QStringLiteral("runs"), "run") + "progress 5 Merge\nwait 600000\n"));
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        if (has(QStringLiteral("runs")))
            m_importer.cancel();
    });
    watch.start(1);
    const zn::ImportResult result = import();
    EXPECT_TRUE(result.cancelled);
    EXPECT_EQ(result.state, JobFailed);
    EXPECT_FALSE(result.node);
    EXPECT_THAT(result.missing, IsEmpty());
    EXPECT_EQ(m_session.sceneRoot()->getNChildren(), 0u);
    drainEvents();
    EXPECT_EQ(outputs(), QStringList());
}

} // namespace
