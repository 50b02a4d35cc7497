// Whole imports of product structures that a child process reads, and that this one reads.

#include "tests/roads/PlmxmlDialects.h"
#include "tests/roads/PlmxmlImport.h"
#include "tests/standalone/reading/SameTree.h"

#include <QDirIterator>

#include <iostream>

namespace
{

using namespace dialects;
using testing::HasSubstr;

class PlmxmlReadingTest : public PlmxmlImport
{
protected:
    PlmxmlReadingTest()
    {
        for (int i = 0; i < PartFiles; ++i)
            write(QStringLiteral("part%1.obj").arg(i), "v 0 0 0\nv 100 0 0\nv 0 200 0\nf 1 3 2\n");
    }

    /// Imports `file` in both ways and compares what comes of it.
    void expectSame(const QString& file)
    {
        SCOPED_TRACE(file.toStdString());
        set("files.reading", QStringLiteral("process"));
        const zn::ImportResult here = import(file);
        const osg::RefPtr<osg::NodePtr> hereRoot(here.node);
        set("files.reading", QStringLiteral("child"));
        const zn::ImportResult there = import(file);
        const osg::RefPtr<osg::NodePtr> thereRoot(there.node);
        EXPECT_EQ(here.state, there.state);
        EXPECT_EQ(here.error, there.error);
        EXPECT_EQ(here.messages, there.messages);
        EXPECT_EQ(missingTexts(here), missingTexts(there));
        ASSERT_EQ(bool(here.node), bool(there.node));
        if (here.node)
            m_nodes += SameTree().compare(here.node, there.node);
    }

    std::size_t m_nodes = 0;
};

TEST_F(PlmxmlReadingTest, EachDialectGivesTheSameTree)
{
    for (const Dialect dialect :
         {Dialect::Pdm, Dialect::Session, Dialect::CadSystem, Dialect::Automotive, Dialect::Graph, Dialect::Flat})
        for (unsigned seed = 0; seed < 4; ++seed)
            expectSame(write(QStringLiteral("%1-%2.xml").arg(int(dialect)).arg(seed),
                             QByteArray::fromStdString(makeDocument(dialect, seed, 10))));
    EXPECT_GT(m_nodes, 500u);
}

TEST_F(PlmxmlReadingTest, NestedDocumentsElementsAndWhatIsMissingGiveTheSameTree)
{
    const auto tree = [](const QByteArray& content) {
        return "<PLMXML><ProductView rootRefs='o'><Occurrence id='o' name='O' occurrenceRefs='a b c'/>" + content +
               "</ProductView></PLMXML>";
    };
    const auto leaf = [](const char* id, const char* more) {
        return QByteArray("<Occurrence id='") + id + "' name='" + id + "'" + more + "/>";
    };
    write(QStringLiteral("inner.plmxml"),
          tree(leaf("a", " visible='false'") +
               "<Occurrence id='b' name='B'><UserData><UserValue title='mass' value='3'/></UserData>"
               "<Representation format='OBJ' location='part0.obj'/></Occurrence>" +
               leaf("c", " partRef='#none'")));
    expectSame(write(QStringLiteral("outer.xml"),
                     tree(leaf("a", " instancedRef='inner.plmxml#b'") +
                          "<Occurrence id='b' name='B'><Representation format='PLMXML' location='INNER.plmxml'/>"
                          "</Occurrence><Occurrence id='c'><Representation format='JT' location='gone.jt'/>"
                          "</Occurrence>")));
    EXPECT_GT(m_nodes, 8u);
}

TEST_F(PlmxmlReadingTest, DocumentsThatCannotBeImportedGiveTheSameErrors)
{
    expectSame(write(QStringLiteral("none.plmxml"), "<PLMXML/>"));
    expectSame(write(QStringLiteral("cut.plmxml"), "<PLMXML><ProductDef>"));
    expectSame(path(QStringLiteral("missing.plmxml")));
    EXPECT_EQ(m_nodes, 0u);
}

/// As when the process that read the document was taken over: what it names is held against the rules once more.
TEST_F(PlmxmlReadingTest, ARefusedPartThatComesThroughAllTheSameIsNotConverted)
{
    writePart(QStringLiteral("part.stp"), {"head"}, line("append", QStringLiteral("runs"), "run") + "wait 40000\n");
    QObject::connect(&m_importer, &zn::Importer::progressChanged, [this](unsigned, const QString& text) {
        if (text == QStringLiteral("Reading document"))
            set("files.references", QStringLiteral("none"));
    });
    m_longestImport = 20000;
    const zn::ImportResult result = importParts({"part.stp"});
    EXPECT_FALSE(result.cancelled);
    EXPECT_EQ(result.state, znCADFileTypes::JobPartial);
    EXPECT_EQ(result.missing.size(), 1u);
    EXPECT_THAT(result.messages.join(QLatin1Char(' ')).toStdString(), HasSubstr("no references are followed"));
}

TEST_F(PlmxmlReadingTest, RealDocumentsGiveTheSameTrees)
{
    const QString corpus = qEnvironmentVariable("ZN_CORPUS");
    if (corpus.isEmpty())
        GTEST_SKIP() << "ZN_CORPUS is not set";
    set("import.PLMXML.referencedFiles", QStringLiteral("off"));
    int count = 0;
    for (const char* folder : {"/plmxml", "/plmxml-real"}) {
        QDirIterator step(corpus + QString::fromLatin1(folder), {QStringLiteral("*.plmxml"), QStringLiteral("*.xml")},
                          QDir::Files, QDirIterator::Subdirectories);
        for (; step.hasNext() && !HasFailure(); ++count)
            expectSame(step.next());
    }
    std::cout << count << " documents, " << m_nodes << " nodes\n";
    EXPECT_GT(count, 0);
}

} // namespace
